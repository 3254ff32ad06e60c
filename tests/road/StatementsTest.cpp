// What goes out of the module on a working day: other programs of the suite, and triggers and traces at the sites, know
// the statements by their text, and components know the members and their arguments, so each blank counts.
#include "basic/Text.h"
#include "screens/request/frmRequest.h"
#include "tests/support/Golden.h"
#include "tests/support/Till.h"

#include <gtest/gtest.h>

namespace {

using support::CompanyFile;
using support::SampleItem;
using support::Till;

constexpr const char* kSettings = PROJECT_DIR "/sandbox/data\\ShopSetting.txt";

/// No number stands for two things: company 9, shop 4, supplier 5, user 3, department 7, currency 2, packing 31. The
/// other shops have requests of the same ids, and their users other names.
constexpr const char* kNumbers =
    "update acompanymaster set CompanyID = 9; update aShops set CompanyID = 9, departmentid = 7;"
    "update aDepartmentMaster set CompanyID = 9, departmentID = 7, DepCurrencyID = 2 where departmentID = 1;"
    "update apackingtype set packingtypeid = 31 where packingtypeid = 1;"
    "update apackingtypecapacitydetail set packingtypeid = 31 where packingtypeid = 1;"
    "update aitempackingdetail set packingtypeid = 31 where packingtypeid = 1;"
    "update losShopItemShipmentDetail set PackingTypeId = 31 where PackingTypeId = 1;"
    "insert into louserrights values (3, 1507, 9, 'NEDP');"
    "update aShops set PreserveItemDetails = 1 where shopid = 4;"
    "update loUsers set UserName = 'Somebody' where shopid <> 4;"
    "update mesRequesttoShopHeader set srhTransfinished = 1, srhused = 1 where srhshopid <> 4;"
    "delete losShopItemStock; update ashopitemdetail set ItemReorderLevel = 0;"
    "update aitem set PriceFixedAtHq = 1 where itemid = ";

/// A record of what goes out of the module, act by act.
class Record {
public:
    explicit Record(Till& till) : till_(till) {}
    /// What was sent to the database since the last act, and what the suite's components were told, each once. Rows
    /// that are written hold the time of day: of them the table is kept.
    void after(const char* act) {
        text_ += std::string("-- ") + act + "\n";
        std::string part = "\n";
        for (const std::string& statement : later(till_.statements(), statements_))
            add(part, basic::startsWithNoCase(statement, "insert into ")
                          ? statement.substr(0, statement.find_first_of(" (", 12))
                          : statement);
        for (const std::string& call : later(till_.calls(), calls_))
            if (call.starts_with("cls") || call.starts_with("Recordset."))
                add(part, call); // the report engine is told of the machine's folders
        text_ += part.substr(1);
        till_.desktop.time.days += 1 / 24.0; // an hour for each act
    }
    const std::string& text() const { return text_; }

private:
    static std::vector<std::string> later(const std::vector<std::string>& all, std::size_t& seen) {
        const std::size_t from = std::exchange(seen, all.size());
        return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
    }
    static void add(std::string& part, const std::string& line) {
        if (part.find("\n" + line + "\n") == part.npos) part += line + "\n";
    }

    Till& till_;
    std::string text_;
    std::size_t statements_ = 0, calls_ = 0;
};

TEST(Statements, AreSentLetterForLetter) {
    const CompanyFile company;
    const std::vector<SampleItem> items = support::requestableItems(company, 4, 5, 3);
    company.change(kNumbers + items[0].id);
    Till till(company, {.userId = 3, .shopId = 4});
    till.component.intCompanyID = 9;
    auto& user = till.user;
    Record record(till);
    const auto after = [&](const char* act) { record.after(act); };
    till.opens();
    after("Register");
    user.clicks("cmdnew");
    till.picksShop(5);
    after("New");
    user.focuses("lvwrequest").types("\r");
    for (const std::string& code : {items[0].barcode, items[1].code, items[2].shortcut}) {
        user.types(code + "\r4\r\r\r");
        after("Line entry");
    }
    user.presses(forms::kKeyF3).presses(forms::kKeyEscape);
    after("Search");
    sandbox::openOverLineEntry(till.module, "scan");
    for (const std::string& code : {items[0].barcode, items[1].code, items[2].shortcut}) {
        user.presses(forms::kKeyF11).types(code + "\r");
        after("Scan");
    }
    sandbox::openOverLineEntry(till.module, "fetch");
    user.presses(forms::kKeyF11).picks("cboColNames", "ItemCode,ItemDescription").enters("txtFetch", "O'Neil\r");
    user.presses(forms::kKeyEscape);
    after("Item fetch dialog");
    user.presses(forms::kKeyEscape).happens([&] {
        till.module.request().PresentInCurrentShop(std::stoi(items[0].id), false);
        till.module.request().FillReorderSuggestions();
    });
    after("For other screens");
    user.clicks("cmdOk");
    after("Save");
    user.clicks("CmdEdit");
    after("Edit");
    user.clicks("cmdOk");
    after("Save what was changed");
    user.clicks("cmdPrev").clicks("cmdOK").clicks("cmdClose");
    after("Report");
    till.system.files[kSettings] =
        basic::replaceAll(till.system.readFile(kSettings), "showspintransrep :=0", "showspintransrep :=1");
    user.clicks("optScreen").clicks("cmdOK");
    after("Slip");
    user.rightClicks("flexMaster").choosesMenu("mnurefresh");
    after("Refresh");
    user.clicks("CmdDelete").answers(forms::Answer::yes).types("wrong\r\r");
    after("Delete");
    EXPECT_EQ(user.form(), "frmMaster");
    EXPECT_EQ(till.errors(), std::vector<std::string>{});

    company.change("update aPAckageSettings set alias = 1; update aShops set PreserveItemDetails = 0");
    Till sales(company, {.screenId = 1611, .userId = 3, .shopId = 4});
    sales.component.intCompanyID = 9;
    Record ofSales(sales);
    sales.opens();
    ofSales.after("Register of inter-division sales, with a word for a shop");
    sales.user.clicks("cmdnew");
    sales.picksShop(5);
    sales.user.focuses("lvwrequest").types("\r").presses(forms::kKeyF3).presses(forms::kKeyEscape);
    ofSales.after("Search in a shop that keeps nothing of it");
    support::expectGolden(PROJECT_DIR "/tests/road/statements.txt", record.text() + ofSales.text());
}

} // namespace
