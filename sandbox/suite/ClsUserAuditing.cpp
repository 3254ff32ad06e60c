#include "sandbox/suite/ClsUserAuditing.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/suite/FormControls.h"
#include "sandbox/suite/Query.h"

namespace sandbox {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

/// Parts the text that a form itself keeps in a tag from the value remembered after it.
constexpr char kSeparator = '\x1f';
constexpr int kRemarksLength = 255;

std::string ownTag(const std::string& tag) { return tag.substr(0, tag.find(kSeparator)); }

std::pair<std::string, std::string> placeOf(Object& form, Object& control) {
    return {basic::cStr(form.get("Name")), basic::cStr(control.get("Name"))};
}

} // namespace

const automation::Members<ClsUserAuditing>& ClsUserAuditing::members() {
    static const auto table = [] {
        automation::Members<ClsUserAuditing> m;
        m.method("OpenObject", 6, 6, [](ClsUserAuditing& self, Arguments a) {
            self.OpenObject(a);
            return Value();
        });
        m.property(
            "LoggedTime", [](ClsUserAuditing& self) { return Value(self.loggedTime_); },
            [](ClsUserAuditing& self, const Value& value) { self.loggedTime_ = basic::cDate(value); });
        m.method("SaveUserAuditingInfo", 4, 5, [](ClsUserAuditing& self, Arguments a) {
            const bool hasForm = a.size() > 4 && a[4].isObject();
            self.SaveUserAuditingInfo(basic::cStr(a[0]), basic::cStr(a[1]), basic::cStr(a[3]),
                                      hasForm ? &a[4].object() : nullptr);
            return Value(true);
        });
        m.method("SaveInToTag", 1, 1, [](ClsUserAuditing& self, Arguments a) {
            self.SaveInToTag(a[0].object());
            return Value();
        });
        m.method("DataChanged", 1, 1,
                 [](ClsUserAuditing& self, Arguments a) { return Value(self.DataChanged(a[0].object())); });
        return m;
    }();
    return table;
}

void ClsUserAuditing::OpenObject(Arguments arguments) {
    connection_ = arguments[0].objectPtr();
    company_ = basic::cLng(arguments[1]);
    shop_ = basic::cLng(arguments[2]);
    user_ = basic::cLng(arguments[3]);
    screen_ = basic::cLng(arguments[4]);
    loggedTime_ = basic::cDate(arguments[5]);
}

void ClsUserAuditing::SaveUserAuditingInfo(const std::string& documentId, const std::string& documentNo,
                                           const std::string& action, Object* form) {
    const std::string changed = form ? basic::left(changedControls(*form), kRemarksLength) : "";
    execute(connection_,
            "insert into loUserAuditing "
            "(CompanyID,ShopID,UserID,InterfaceID,DocumentID,DocumentNo,ActionType,LoggedTime,Remarks) values (" +
                std::to_string(company_) + "," + std::to_string(shop_) + "," + std::to_string(user_) + "," +
                std::to_string(screen_) + "," + quoted(documentId) + "," + quoted(documentNo) + "," + quoted(action) +
                "," + literal(loggedTime_) + "," + (changed.empty() ? "null" : quoted(changed)) + ")");
}

void ClsUserAuditing::SaveInToTag(Object& form) {
    for (const automation::ObjectPtr& control : controlsOf(form)) {
        if (!isInput(*control)) continue;
        const std::string value = inputText(*control);
        control->put("Tag", ownTag(basic::cStr(control->get("Tag"))) + kSeparator + value);
        memory_[placeOf(form, *control)] = value;
    }
}

std::string ClsUserAuditing::remembered(Object& form, Object& control) const {
    const std::string tag = basic::cStr(control.get("Tag"));
    const std::size_t separator = tag.find(kSeparator);
    if (separator != std::string::npos) return tag.substr(separator + 1);
    const auto found = memory_.find(placeOf(form, control));
    return found == memory_.end() ? inputText(control) : found->second;
}

std::string ClsUserAuditing::changedControls(Object& form) const {
    std::string names;
    for (const automation::ObjectPtr& control : controlsOf(form)) {
        if (!isInput(*control) || inputText(*control) == remembered(form, *control)) continue;
        names += (names.empty() ? "" : ", ") + basic::cStr(control->get("Name"));
    }
    return names;
}

bool ClsUserAuditing::DataChanged(Object& form) const { return !changedControls(form).empty(); }

} // namespace sandbox
