#include "tests/support/Till.h"

#include "automation/Members.h"
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "sandbox/data/SampleCompany.h"
#include "sandbox/host/HostSession.h"
#include "sandbox/suite/StandIns.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace support {
namespace {

constexpr const char* kProjectKey = "KOVA/XB/TRAM/842";

std::vector<std::string> beginningWith(std::string_view beginning, const std::vector<std::string>& texts) {
    std::vector<std::string> found;
    for (const std::string& text : texts)
        if (text.starts_with(beginning)) found.push_back(text);
    return found;
}

/// Numbers carry their kind: "%" 16 bits, "&" 32 bits, "#" a double. "@" goes before what is handed over by reference.
std::string told(const automation::Value& value) {
    std::string text;
    if (value.isReference()) return "@" + told(value.resolved());
    if (const auto* array = value.as<automation::Array>()) {
        for (const automation::Value& element : *array) text += (text.empty() ? "" : ",") + told(element);
        return text;
    }
    if (!value.isObject())
        return basic::concatText(value) + (value.is<std::int16_t>()   ? "%"
                                           : value.is<std::int32_t>() ? "&"
                                           : value.is<double>()       ? "#"
                                                                      : "");
    const automation::ObjectPtr object = value.objectPtr();
    return !object ? "Nothing" : object->has("Name") ? basic::cStr(object->get("Name")) : object->className();
}

} // namespace

/// A component between the module and its stand-in: takes note of what it is told, and breaks.
class Till::Watched : public automation::Object {
public:
    Watched(Till& till, automation::ObjectPtr object, bool inStatements)
        : till_(till), object_(std::move(object)), inStatements_(inStatements) {}
    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override {
        const std::string name = className() + "." + std::string(member);
        std::string list;
        for (const automation::Value& argument : arguments) list += (list.empty() ? "" : "|") + told(argument);
        const char* how = access == automation::Access::put ? "=" : access == automation::Access::putRef ? "=Set" : "";
        const bool plain = list.ends_with("|0&|1&"); // forward only, read only
        if (!inStatements_ || (member == "adocon" && access != automation::Access::putRef) ||
            member == "fnUpdateListViewDetails" || (member == "Open" && !plain))
            till_.calls_.push_back(name + how + "(" + list + ")");
        if (name == till_.broken_) throw automation::RunTimeError(5, "broken");
        automation::Value result = object_->invoke(access, member, arguments);
        if (result.isObject()) till_.made_[name] = result.objectPtr();
        return result;
    }
    bool has(std::string_view member) const override { return object_->has(member); }
    std::string className() const override { return object_->className(); }

private:
    Till& till_;
    automation::ObjectPtr object_;
    bool inStatements_; ///< what it does is seen there, but for a few things
};

CompanyFile::CompanyFile() : CompanyFile(Original{SAMPLE_COMPANY}) {}

CompanyFile::CompanyFile(Original original) : path_(folder_.file("company.db")) {
    std::filesystem::copy_file(original.path, path_);
}

CompanyFile::CompanyFile(std::string_view schema) : path_(folder_.file("company.db")) {
    sandbox::makeSampleCompany(path_, schema);
}

Rows CompanyFile::rows(const std::string& query) const {
    const auto connection = sandbox::openConnection(path_);
    goodsreq::Recordset records(connection->call("Execute", query).objectPtr());
    const auto fields = records.fields();
    Rows result;
    for (; !records.eof(); records.moveNext()) {
        std::vector<std::string>& row = result.emplace_back();
        for (const goodsreq::Field& field : fields) row.push_back(basic::concatText(field.value()));
    }
    return result;
}

std::string CompanyFile::value(const std::string& query) const {
    const Rows found = rows(query);
    return found.empty() ? std::string() : found.front().front();
}

void CompanyFile::change(const std::string& script) const {
    sandbox::runScript(*sandbox::openConnection(path_), script);
}

Till::Till(const CompanyFile& company, Seat seat, const Between& between)
    : inner_(sandbox::standInFactory({&desktop, "", &reportCalls})),
      connection(sandbox::openConnection(company.path())),
      module(
          desktop, system, between ? between(inner_) : [this](std::string_view progId) { return make(progId); },
          goodsreq::formMakers(), PROJECT_DIR "/sandbox/data"),
      component(module), user(desktop) {
    const sandbox::Day day = sandbox::kSampleProcessDate;
    desktop.time = basic::dateOf(day.year, day.month, day.day, 10, 30);
    connection->trace([this](std::string_view statement) { statements_.emplace_back(statement); });
    component.adocon = connection;
    component.strProjectKey = kProjectKey;
    component.strMsgboxCaption = "Retail Back Office";
    component.intCompanyID = sandbox::kSampleCompanyId;
    component.intUserID = seat.userId;
    component.intShopid = seat.shopId;
    component.interfaceid = seat.screenId;
    component.dtProcessDate = basic::dateOf(day.year, day.month, day.day);
}

Till::~Till() { EXPECT_EQ(connection->moreConnections(), 0) << "statements sent while another one was being read"; }

void Till::opens() {
    user.starts([this] { component.show(); });
}

automation::ObjectPtr Till::make(std::string_view progId) {
    if (progId == broken_) automation::raise(automation::kCannotCreateObject);
    automation::ObjectPtr object = inner_(progId);
    const bool inStatements = progId == "ADODB.Recordset" || automation::sameName(progId, "CommonModule.clsCommonDB");
    if (inStatements || !progId.starts_with("ADODB.")) object = std::make_shared<Watched>(*this, object, inStatements);
    made_[std::string(progId)] = object;
    return object;
}

void Till::breaks(const std::string& what) {
    broken_ = what;
    connection->failOn([what](std::string_view s) { return !what.empty() && s.find(what) != s.npos; });
}

std::vector<std::string> Till::statements(std::string_view beginning) const {
    return beginningWith(beginning, statements_);
}

std::vector<std::string> Till::calls(std::string_view beginning) const { return beginningWith(beginning, calls_); }

std::vector<std::string> Till::errors() const {
    std::vector<std::string> found;
    for (const forms::Message& message : desktop.messages)
        if (message.icon == forms::MessageIcon::critical && message.buttons == forms::MessageButtons::ok)
            found.push_back(message.text);
    return found;
}

void Till::picksShop(int shopId) {
    auto* box = user.control<forms::ComboBox>("cboShop");
    ASSERT_TRUE(box);
    for (const forms::ComboBox::Entry& entry : box->entries())
        if (entry.itemData == shopId) return void(user.picks("cboShop", entry.text));
    ADD_FAILURE() << "shop " << shopId << " is not offered";
}

std::vector<SampleItem> requestableItems(const CompanyFile& company, int shop, int otherShop, int count) {
    const std::string here = std::to_string(shop);
    const std::string there = std::to_string(otherShop);
    std::vector<SampleItem> items;
    for (const std::vector<std::string>& row : company.rows(
             "select a.itemid, a.itemcode, v.itemdescription, min(pd.packingbarcode), sd.shortcutno, u.unitcode"
             " from aitem a, vwItemDescription v, aitempackingdetail pd, ashopitemdetail sd, aUnit u"
             " where a.itemid = v.itemid and a.itemid = pd.itemid and a.itemid = sd.itemid and u.unitid = a.unitsid"
             " and a.active = 1 and pd.active = 1 and a.itemtype <> 'B' and sd.shortcutno is not null and sd.shopid "
             "= " +
             here + " and a.itemid in (select itemid from ashopitemdetail where shopid = " + there +
             ") and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = " + here +
             " intersect select itemcategoryid from ashopitemcategory where shopid = " + there +
             ") group by a.itemid, a.itemcode, v.itemdescription, sd.shortcutno, u.unitcode order by a.itemid")) {
        if (static_cast<int>(items.size()) == count) break;
        items.push_back({row[0], row[1], row[2], row[3], row[4], row[5]});
    }
    EXPECT_EQ(static_cast<int>(items.size()), count);
    return items;
}

} // namespace support
