#include "common/SuiteServices.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "forms/Form.h"

namespace goodsreq {

using automation::Value;

namespace {

// The limits that go with every call of the numeric key filter: digits in all, and after the decimal point.
constexpr std::int16_t kDigits = 18;
constexpr std::int16_t kDecimals = 3;

} // namespace

automation::ObjectPtr ServiceFace::object() const {
    if (!object_) automation::raise(automation::kObjectNotSet);
    return object_;
}

void CommonGen::SelectComboItemByValue(forms::ComboBox& box, std::int32_t value) const {
    Value wanted = value;
    object()->call("SelectComboItemByValue", box.self(), Value::byReference(wanted));
}

void CommonGen::SelectComboItemByname(forms::ComboBox& box, const std::string& text) const {
    Value wanted = text;
    object()->call("SelectComboItemByname", box.self(), Value::byReference(wanted));
}

void CommonGen::TextValidateNum(forms::TextBox& box, std::int16_t& character) const {
    Value key = character;
    object()->call("TextValidateNum", box.self(), Value::byReference(key), kDigits, kDecimals);
    character = basic::cInt(key);
}

void FormColour::Applyformcolor(forms::Form& form) const {
    object()->call("Applyformcolor", automation::ObjectPtr(form.shared_from_this()));
}

void UserAuditing::OpenObject(const automation::ObjectPtr& connection, std::int32_t companyId, std::int16_t shopId,
                              std::int32_t userId, std::int32_t screenId, automation::Date now) const {
    object()->call("OpenObject", connection, companyId, shopId, userId, screenId, now);
}

void UserAuditing::setLoggedTime(automation::Date now) const { object()->put("LoggedTime", now); }

void UserAuditing::SaveUserAuditingInfo(const std::string& documentId, const std::string& documentNo,
                                        const std::string& action, forms::Form* form) const {
    if (form)
        object()->call("SaveUserAuditingInfo", documentId, documentNo, true, action,
                       automation::ObjectPtr(form->shared_from_this()));
    else
        object()->call("SaveUserAuditingInfo", documentId, documentNo, true, action);
}

void UserAuditing::SaveInToTag(forms::Form& form) const {
    object()->call("SaveInToTag", automation::ObjectPtr(form.shared_from_this()));
}

bool UserAuditing::DataChanged(forms::Form& form) const {
    return basic::cBool(object()->call("DataChanged", automation::ObjectPtr(form.shared_from_this())));
}

void GridSettings::fnGridSettings(std::int32_t userId, std::int32_t companyId, forms::Grid& grid,
                                  const automation::ObjectPtr& connection) const {
    object()->call("fnGridSettings", userId, companyId, grid.self(), connection);
}

} // namespace goodsreq
