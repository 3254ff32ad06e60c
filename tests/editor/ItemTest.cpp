// From a code, or the search, to the item of a line: what is found, what is refused, and what then stands in the boxes.
#include "automation/RunTimeError.h"
#include "common/Fetch.h"
#include "sandbox/suite/StandIns.h"
#include "screens/lines/frmRequestDetail.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;

constexpr const char* kScan = "Scan valid barcode";
constexpr const char* kNotHere = "Given item does not exist in this shop.   ";
constexpr const char* kNotCarried = "Not carried by\r\nthe other shop";

/// A dialog of another make: it takes lists by reference only, and puts a record set of its own in the given one's
/// place. Where calls are refused its members are properties.
class OtherFetch : public automation::Object {
public:
    automation::ObjectPtr chosen;
    std::optional<automation::ErrorNumber> refused;
    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override {
        if (member == "getCancelledStatus") return false;
        if (arguments.empty()) return {};
        if (access == automation::Access::get && refused) automation::raise(*refused);
        const automation::Value& given = arguments.back();
        if (given.is<automation::Array>() && !given.isReference()) automation::raise(automation::kTypeMismatch);
        if (member == "setRecordset" && given.isReference()) const_cast<automation::Value&>(given.resolved()) = chosen;
        return {};
    }
    bool has(std::string_view) const override { return true; }
    std::string className() const override { return "clsFetch"; }
};

class Item : public EditorTest<4> {
protected:
    const std::string of = " where itemid = " + item.id;

    /// What a code gives: the item shown, the message or the note, where the focus is then, and what the box holds.
    static Names found(Till& till, const std::string& code) {
        std::string message;
        if (till.scans(code).user.message()) {
            message = till.user.message()->text;
            EXPECT_EQ(till.user.message()->icon, forms::MessageIcon::information);
            till.user.answers(Answer::ok);
        }
        return {till.user.text("cboItem"), message + till.user.text("lblNotCarried"), till.user.focus(),
                till.user.text("txtBarcode")};
    }
};

TEST_F(Item, IsFoundByBarcodeShortcutOrCode) {
    const std::string shortcut = "update ashopitemdetail set shortcutno = 8765" + of + " and shopid = ";
    const std::string shared = "update aPAckageSettings set AllowItemCodeDuplication = 1";
    const std::string gone = "delete ashopitemdetail" + of + " and shopid = 2";
    const std::string trade = "update aShops set futurevarchar = 'b9' where shopid = 1";
    const std::string tradeItem = "update aitem set itemtype = 'B'" + of;
    const auto taken = [&](const std::string& code) { return Names{item.description, "", "txtQuantity", code}; };
    const auto refused = [](const std::string& code) { return Names{"", kScan, "txtBarcode", code}; };
    // clang-format off
    for (const auto& [what, change, code, result] : Table<Text, std::string, std::string, Names>{
             {"barcode", "", item.barcode, taken(item.barcode)},
             {"barcode between blanks", "", " " + item.barcode + " ", taken(" " + item.barcode + " ")},
             {"shortcut number", "", item.shortcut, taken(item.shortcut)},
             {"shortcut number, first four digits", shortcut + "1", "87654321", taken("87654321")},
             {"shortcut number among the first four, blanks with them",
              "update ashopitemdetail set shortcutno = 87" + of + " and shopid = 1", "  8765", taken("  8765")},
             {"item code", "", item.code, taken(item.code)},
             {"code like a large number", "update aitem set itemcode = '1E40'" + of, "1E40", taken("1E40")},
             {"no such code", "", "NOPE-1", refused("NOPE-1")},
             {"nothing", "", "", {"", "", "cmdbarcode", ""}},
             {"barcode is the code",
              "update aitempackingdetail set Active = 0" + of + ";update aitem set itemcode = '" + item.barcode + "'" + of,
              item.barcode, taken(item.barcode)},
             {"codes may be shared", shared, item.code, refused(item.code)},
             {"codes may be shared, barcode", shared, item.barcode, taken(item.barcode)},
             {"nothing says whether they may", "delete aPAckageSettings", item.code, refused(item.code)},
             {"not in the supplying shop, by barcode", gone, item.barcode, {"", kNotCarried, "cmdbarcode", ""}},
             {"not in the supplying shop, by code", gone, item.code, {"", kNotHere, "txtBarcode", ""}},
             {"not in the supplying shop, by shortcut", gone, item.shortcut, {"", kNotCarried, "txtBarcode", ""}},
             {"of the trade's type", tradeItem, item.barcode, refused(item.barcode)},
             {"trade shop, other goods", trade, item.barcode, refused(item.barcode)},
             {"trade shop, its goods", trade + ";" + tradeItem, item.barcode, taken(item.barcode)},
         }) {
        // clang-format on
        SCOPED_TRACE(what);
        CompanyFile file;
        file.change(change);
        Till till(file);
        EXPECT_EQ(found(till.newRequest().addsLines(), code), result);
        EXPECT_EQ(till.user.entries("cboItem").size(), result[0].empty() ? 0u : 1u);
    }
}

TEST_F(Item, NoApostropheEntersTheBarcodeBox) {
    Till till(company);
    const auto code = [&] { return till.user.text("txtBarcode"); };
    till.newRequest().addsLines().user.types("1'2''3");
    EXPECT_EQ(code(), "123");
    till.user.pastes("'; delete aitem --'x").pastes("\u02BC; \uFF07x"); // which a server's code page makes apostrophes
    EXPECT_EQ(code(), "123; delete aitem --x; x");
    till.user.types("\r").answers(kScan, Answer::ok).types("7"); // over the code that was refused
    EXPECT_EQ(code(), "7");
    till.user.focuses("cmdbarcode").types("'\u00E91"); // on Search a code begins as well
    EXPECT_EQ(code(), "\u00E91");
    till.user.focuses("txtQuantity").focuses("txtBarcode").types("8");
    EXPECT_EQ(code(), "8");
}

TEST_F(Item, TheShopsReorderQuantityIsProposed) {
    for (const std::string quantity : {"2.5", "0"}) {
        company.change("update ashopitemdetail set ReorderQuantity = " + quantity + of + " and shopid = 1");
        Till till(company);
        EXPECT_EQ(till.newRequest().addsLines().scans(item.barcode).user.text("txtQuantity"), quantity);
        EXPECT_EQ(till.user.types("7").text("txtQuantity"), "7") << "takes its place";
    }
    // Without a supplying shop nothing is proposed, and nothing is carried by both.
    Till till(company);
    till.newRequest(0).addsLines();
    for (const char* key : {"\b", "\t"}) {
        EXPECT_EQ(found(till, item.barcode), (Names{"", "Choose the\r\nother shop first", "cmdbarcode", ""}));
        EXPECT_EQ(till.user.types(key).text("lblNotCarried"), "");
    }
}

TEST_F(Item, IsSearchedAndChosenInTheSearchWindow) {
    Till till(company);
    till.newRequest().addsLines().user.presses(forms::kKeyF3).types(other.description);
    const auto listed = till.user.rows("lvwItems");
    ASSERT_FALSE(listed.empty());
    EXPECT_EQ(till.user.types("\r").form(), "FetchWindow") << "a scanner's Enter chooses nothing";
    till.user.presses(forms::kKeyDown).types("\r");
    ASSERT_EQ(till.user.form(), "frmRequestDetail");
    EXPECT_EQ(till.user.text("cboItem"), listed[0][2]);
    EXPECT_EQ(till.user.focus(), "txtQuantity");
    EXPECT_FALSE(till.user.rows("lvwpacktype").empty());
    till.user.enters("txtQuantity", "3").clicks("cmdOk");
    till.user.focuses("cmdbarcode").types(" ").presses(forms::kKeyEscape); // no code begins with a blank
    EXPECT_EQ(till.user.text("cboItem"), "");
    EXPECT_EQ(till.user.focus(), "cmdbarcode");
    EXPECT_EQ(till.backToEditor().column(1), Names{listed[0][1]});
}

TEST_F(Item, TheShopsSettingChoosesTheColumnToSearchIn) {
    for (const auto& [setting, shown] : Table<std::string, Text>{{"'ItemCode'", "Item Code"},
                                                                 {"'Part_Code'", "Part Code"},
                                                                 {"'ItemID'", "Item Description"},
                                                                 {"'itemcode'", "Item Description"},
                                                                 {"'Colour'", "Item Description"},
                                                                 {"null", "Item Description"}}) {
        company.change("update LOsSettings set defaultfetch = " + setting + " where ShopID = 1");
        Till till(company);
        EXPECT_EQ(till.newRequest().addsLines().user.clicks("cmdbarcode").text("cboColumn"), shown) << setting;
        till.user.presses(forms::kKeyEscape);
    }
}

TEST_F(Item, PackingsAreListedAndCountedInFractions) {
    const std::string unit = "(select UnitsId from aitem" + of + ")";
    const std::string packing = ";insert into aitempackingdetail values (" + item.id;
    company.change("delete apackingtypecapacitydetail where packingtypeid in (91, 92, 93, 94);"
                   "insert into apackingtype values (91, 'Dozen'), (92, 'Pallet'), (93, 'Loose'), (94, 'Crate');"
                   "insert into apackingtypecapacitydetail values (91, " +
                   unit + ", 12), (94, " + unit + ", 10), (92, " + unit +
                   ", 40);"
                   "delete aitempackingdetail" +
                   of + packing + ", 91, '2991', 1, 1)" + packing + ", 92, '2992', 0, 0)" + packing +
                   ", 93, '2993', 0, 1)" + packing + ", 94, '2994', 0, 1)");
    Till till(company);
    till.newRequest().addsLines().scans("2991");
    // 92 is inactive, 93 has no capacity
    EXPECT_EQ(till.user.rows("lvwpacktype"), (Rows{{"91", "Dozen", ""}, {"94", "Crate", ""}}));
    EXPECT_EQ(till.user.types("30\r").rows("lvwpacktype"), (Rows{{"91", "Dozen", "2.50"}, {"94", "Crate", "3.00"}}));
    EXPECT_EQ(till.user.focus(), "txtBadQuantity");
    till.user.focuses("cboItem");
    for (const char* next : {"lvwpacktype", "txtBarcode"}) EXPECT_EQ(till.user.types("\r").focus(), next);
    for (const char* nothing : {"0", "-3"})
        EXPECT_EQ(till.puts("txtQuantity", nothing).user.focuses("txtQuantity").types("\r").focus(), "txtQuantity");
    company.change("delete apackingtypecapacitydetail where packingtypeid = 91");
    EXPECT_EQ(till.user.enters("txtQuantity", "20\r").column("lvwpacktype", 2), (Names{"", "2.00"}));

    company.change("insert into apackingtypecapacitydetail values (91, " + unit +
                   ", 1);update apackingtypecapacitydetail set quantity = 0 where packingtypeid = 91");
    till.user.enters("txtQuantity", "5\r");
    EXPECT_EQ(till.readsReport("Error 11: Division by zero").user.text("txtQuantity"), "5");
    EXPECT_EQ(till.user.focus(), "txtBadQuantity") << "the next key of a scanner belongs there";
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.backToEditor().column(3), Names{"5.000"});
}

TEST_F(Item, PricesComeFromTheProcedureAndKeepTwoDecimals) {
    const std::string packing = company.value("select packingtypeid from vwitemretailpacking" + of);
    const std::string row = "insert into losShopItemShipmentDetail values (" + item.id + "," + packing;
    // Rows of "ItemId, PackingTypeId, ShopId, SellingPrice, WholesalePrice". Which of several counts is the server's.
    for (const auto& [what, screen, rows, price] :
         Table<Text, std::int32_t, std::string, Text>{{"selling price", 1507, row + ",1,12.347,9.993)", "12.35"},
                                                      {"wholesale price", 1611, row + ",1,12.347,9.993)", "9.99"},
                                                      {"a price that is null", 1611, row + ",1,5,null)", "0"},
                                                      {"no row", 1611, "", "0"}}) {
        SCOPED_TRACE(what);
        company.change("delete losShopItemShipmentDetail" + of + ";" + rows);
        Till till(company, {.screenId = screen});
        till.newRequest().addsLines().scans(item.barcode);
        EXPECT_EQ(till.user.control("txtsellingprice")->text(), price);
    }
    // Without department and retail packing the price is asked for zero of both.
    Till till(company);
    till.newRequest().addsLines().scans(other.barcode); // the department's currency is known
    company.change("delete aDepartmentMaster; update aitempackingdetail set RetailPacking = 0");
    EXPECT_EQ(till.scans(item.barcode).statements("spSellingPriceFetch").back(),
              "spSellingPriceFetch 1,1,0," + item.id + ",0,1,0");
}

TEST_F(Item, LookUpsThatFailAreReportedOnceAndLeaveNothingOfTheItemBefore) {
    // An item that is kept, chosen all the same, stands with all that could be read of it.
    for (const auto& [statement, keepsItem] : Table<std::string, bool>{{"spSellingPriceFetch", true},
                                                                       {"select a.departmentID", true},
                                                                       {"select reorderquantity", true},
                                                                       {"select ad.packingtypeid", true},
                                                                       {"select a.itemid, v.itemdescription", false},
                                                                       {"select apd.itemid", false}}) {
        SCOPED_TRACE(statement);
        Till till(company, {.screenId = 1611});
        till.newRequest().addsLines().scans(item.barcode).user.enters("txtQuantity", "7");
        till.breaks(statement);
        till.scans(other.barcode).readsReport().breaks("");
        EXPECT_EQ(till.user.text("cboItem"), keepsItem ? other.description : "");
        EXPECT_EQ(till.module.requestDetail().strItemCode, keepsItem ? other.code : "");
        EXPECT_NE(till.user.text("txtQuantity"), "7");
        const std::string price = till.user.text("txtsellingprice");
        EXPECT_EQ(price.empty(), statement == "select reorderquantity" || !keepsItem);
        EXPECT_EQ(price == "0", statement == "spSellingPriceFetch");
        EXPECT_EQ(till.user.rows("lvwpacktype").empty(), statement == "select ad.packingtypeid" || !keepsItem);
        if (keepsItem) continue;
        till.user.types(item.barcode + "\r"); // takes the failed scan's place
        EXPECT_EQ(till.user.text("cboItem"), item.description);
    }
}

TEST_F(Item, FetchMayTakeListsByReferenceAndAnswerWithItsOwnRecordSet) {
    const auto dialog = std::make_shared<OtherFetch>();
    dialog->chosen = sandbox::createStandIn("ADODB.Recordset", {});
    const auto given = sandbox::createStandIn("ADODB.Recordset", {});
    const goodsreq::Fetch fetch(dialog);
    EXPECT_EQ(fetch.show({}, given).object(), dialog->chosen);
    for (const auto asProperties : {automation::kNoSuchMember, automation::kWrongNumberOfArguments}) {
        dialog->refused = asProperties;
        EXPECT_EQ(fetch.show({}, given).object(), given);
    }
    dialog->refused = automation::kPathAccess;
    EXPECT_THROW(fetch.show({}, given), automation::RunTimeError);
}

} // namespace
