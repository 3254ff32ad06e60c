#include "tests/support/Shop.h"

#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "sandbox/data/SampleCompany.h"
#include "sandbox/suite/StandIns.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <unistd.h>

namespace support {
namespace {

std::string freshPath() {
    static std::atomic<int> count{0};
    return (std::filesystem::temp_directory_path() /
            ("goodsreq-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".db"))
        .string();
}

constexpr const char* kProjectKey = "KOVA/XB/TRAM/842";

} // namespace

CompanyFile::CompanyFile() : path_(freshPath()) {
    std::filesystem::copy_file(SAMPLE_COMPANY, path_, std::filesystem::copy_options::overwrite_existing);
}

CompanyFile::~CompanyFile() {
    std::error_code ignored;
    for (const char* ending : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(path_ + ending, ignored);
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

Shop::Shop(const CompanyFile& company, Seat seat)
    : connection(sandbox::openConnection(company.path())),
      module(desktop, system, sandbox::standInFactory({&desktop, "", &reportCalls}), goodsreq::formMakers(), PROJECT_DIR "/sandbox/data"),
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

Shop::~Shop() { EXPECT_EQ(connection->moreConnections(), 0) << "statements sent while another one was being read"; }

void Shop::opens() {
    user.starts([this] { component.show(); });
}

std::vector<std::string> Shop::statements(std::string_view beginning) const {
    std::vector<std::string> found;
    for (const std::string& statement : statements_)
        if (std::string_view(statement).substr(0, beginning.size()) == beginning) found.push_back(statement);
    return found;
}

std::vector<std::string> Shop::errors() const {
    std::vector<std::string> found;
    for (const forms::Message& message : desktop.messages)
        if (message.icon == forms::MessageIcon::critical && message.buttons == forms::MessageButtons::ok)
            found.push_back(message.text);
    return found;
}

void Shop::picksShop(int shopId) {
    auto* box = user.control<forms::ComboBox>("cboShop");
    ASSERT_TRUE(box);
    for (const forms::ComboBox::Entry& entry : box->entries())
        if (entry.itemData == shopId) return user.picks("cboShop", entry.text);
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
