// From a code, or the search, to the item of a line: what is found, what is refused, and what then stands in the boxes.
#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "common/Fetch.h"
#include "sandbox/suite/StandIns.h"
#include "screens/lines/frmRequestDetail.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using Names = std::vector<std::string>;

constexpr const char* kScan = "Scan valid barcode";
constexpr const char* kNotHere = "Given item does not exist in this shop.   ";
constexpr const char* kNotCarried = "Not carried by\r\nthe other shop";

/// A dialog of another make: it takes lists by reference only, and puts a record set of its own in the given one's
/// place.
class OtherFetch : public automation::Object {
public:
    automation::ObjectPtr chosen;
    automation::Value invoke(automation::Access, std::string_view member, automation::Arguments arguments) override {
        if (member == "getCancelledStatus") return false;
        if (arguments.empty()) return {};
        const automation::Value& given = arguments.back();
        if (given.is<automation::Array>() && !given.isReference()) automation::raise(automation::kTypeMismatch);
        if (member == "setRecordset") const_cast<automation::Value&>(given.resolved()) = chosen;
        return {};
    }
    bool has(std::string_view) const override { return true; }
    std::string className() const override { return "clsFetch"; }
};

class Item : public testing::Test {
protected:
    CompanyFile company;
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 4);
    const SampleItem& item = items[0];
    const SampleItem& other = items[1];

    /// What a code gives: the item shown, the message or the note, and where the focus is then.
    struct Found {
        std::string description, message, focus, code;
        bool operator==(const Found&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Found& f) {
            return out << "{" << f.description << " | " << f.message << " | " << f.focus << " | " << f.code << "}";
        }
    };
    static Found scans(Till& till, const std::string& code) {
        till.user.enters("txtBarcode", code + "\r");
        Found found;
        if (till.user.message()) {
            found.message = till.user.message()->text;
            EXPECT_EQ(till.user.message()->icon, forms::MessageIcon::information);
            till.user.answers(Answer::ok);
        }
        found.message += till.user.text("lblNotCarried");
        found.description = till.user.text("cboItem");
        found.focus = till.user.focus();
        found.code = till.user.text("txtBarcode");
        return found;
    }
    static void reachesLines(Till& till) {
        till.newRequest();
        till.addsLines();
    }
};

TEST_F(Item, IsFoundByBarcodeShortcutOrCode) {
    const std::string of = " where itemid = " + item.id;
    const std::string shortcut = "update ashopitemdetail set shortcutno = 8765" + of + " and shopid = ";
    const std::string shared = "update aPAckageSettings set AllowItemCodeDuplication = 1";
    const std::string gone = "delete ashopitemdetail" + of + " and shopid = 2";
    const std::string trade = "update aShops set futurevarchar = 'b9' where shopid = 1";
    const std::string tradeItem = "update aitem set itemtype = 'B'" + of;
    const std::string oldPacking = "update aitempackingdetail set Active = 0" + of;
    const auto found = [&](const std::string& code) { return Found{item.description, "", "txtQuantity", code}; };
    const auto refused = [](const std::string& code) { return Found{"", kScan, "txtBarcode", code}; };
    struct Case {
        const char* what;
        std::string change, code;
        Found found;
    };
    // clang-format off
    for (const Case& c : {
             Case{"barcode", "", item.barcode, found(item.barcode)},
             {"barcode between blanks", "", " " + item.barcode + " ", found(" " + item.barcode + " ")},
             {"shortcut number", "", item.shortcut, found(item.shortcut)},
             {"shortcut number, first four digits", shortcut + "1", "87654321", found("87654321")},
             {"another shop's shortcut number", shortcut + "3", "8765", refused("8765")},
             {"item code", "", item.code, found(item.code)},
             {"code like a large number", "update aitem set itemcode = '1E40'" + of, "1E40", found("1E40")},
             {"no such code", "", "NOPE-1", refused("NOPE-1")},
             {"nothing", "", "", {"", "", "cmdbarcode", ""}},
             {"inactive packing", oldPacking, item.barcode, refused(item.barcode)},
             {"inactive packing, barcode is also the code",
              oldPacking + ";update aitem set itemcode = '" + item.barcode + "'" + of, item.barcode, found(item.barcode)},
             {"inactive item", "update aitem set Active = 0" + of, item.code, refused(item.code)},
             {"codes may be shared", shared, item.code, refused(item.code)},
             {"codes may be shared, barcode", shared, item.barcode, found(item.barcode)},
             {"nothing says whether they may", "delete aPAckageSettings", item.code, refused(item.code)},
             {"not in the supplying shop, by barcode", gone, item.barcode, {"", kNotCarried, "cmdbarcode", ""}},
             {"not in the supplying shop, by code", gone, item.code, {"", kNotHere, "txtBarcode", ""}},
             {"not in the supplying shop, by shortcut", gone, item.shortcut, {"", kNotCarried, "txtBarcode", ""}},
             {"category not in the supplying shop",
              "delete ashopitemcategory where shopid = 2 and itemcategoryid = (select itemcategoryid from aitem" + of + ")",
              item.code, {"", kNotHere, "txtBarcode", ""}},
             {"of the trade's type", tradeItem, item.barcode, refused(item.barcode)},
             {"trade shop, other goods", trade, item.barcode, refused(item.barcode)},
             {"trade shop, its goods", trade + ";" + tradeItem, item.barcode, found(item.barcode)},
         }) {
        // clang-format on
        SCOPED_TRACE(c.what);
        CompanyFile file;
        if (!c.change.empty()) file.change(c.change);
        Till till(file);
        reachesLines(till);
        EXPECT_EQ(scans(till, c.code), c.found);
        EXPECT_EQ(till.user.entries("cboItem").size(), c.found.description.empty() ? 0u : 1u);
    }
}

TEST_F(Item, NoApostropheEntersTheBarcodeBox) {
    Till till(company);
    reachesLines(till);
    till.user.types("1'2''3");
    EXPECT_EQ(till.user.text("txtBarcode"), "123");
    till.user.pastes("'; delete aitem --'x");
    EXPECT_EQ(till.user.text("txtBarcode"), "123; delete aitem --x");
    till.user.pastes("\u02BC; \uFF07x"); // which a server's code page makes apostrophes
    EXPECT_EQ(till.user.text("txtBarcode"), "123; delete aitem --x; x");
    till.user.types("\r");
    till.user.answers(kScan, Answer::ok);
    till.user.types("7"); // over the code that was refused
    EXPECT_EQ(till.user.text("txtBarcode"), "7");
    till.user.focuses("cmdbarcode");
    till.user.types("'\u00E91"); // on Search a code begins as well
    EXPECT_EQ(till.user.text("txtBarcode"), "\u00E91");
    till.user.focuses("txtQuantity");
    till.user.focuses("txtBarcode");
    till.user.types("8");
    EXPECT_EQ(till.user.text("txtBarcode"), "8");
    EXPECT_EQ(till.errors(), Names{});
}

TEST_F(Item, TheShopsReorderQuantityIsProposed) {
    for (const auto& [stored, shown] :
         std::vector<std::pair<std::string, std::string>>{{"12", "12"}, {"2.5", "2.5"}, {"0", "0"}}) {
        company.change("update ashopitemdetail set ReorderQuantity = " + stored +
                       " where shopid = 1 and itemid = " + item.id);
        Till till(company);
        reachesLines(till);
        scans(till, item.barcode);
        EXPECT_EQ(till.user.text("txtQuantity"), shown);
        till.user.types("7"); // takes its place
        EXPECT_EQ(till.user.text("txtQuantity"), "7");
    }
    // Without a supplying shop nothing is proposed, and nothing is carried by both.
    Till till(company);
    till.newRequest(0);
    till.addsLines();
    for (const char* key : {"\b", "\t"}) {
        EXPECT_EQ(scans(till, item.barcode), (Found{"", "Choose the\r\nother shop first", "cmdbarcode", ""}));
        till.user.types(key);
        EXPECT_EQ(till.user.text("lblNotCarried"), "");
    }
}

TEST_F(Item, IsSearchedAndChosenInTheSearchWindow) {
    Till till(company);
    reachesLines(till);
    till.user.presses(forms::kKeyF3);
    ASSERT_EQ(till.user.form(), "FetchWindow");
    till.user.types(items[1].description);
    const auto listed = till.user.list("lvwItems");
    ASSERT_FALSE(listed.empty());
    till.user.types("\r"); // such as a scanner sends
    EXPECT_EQ(till.user.form(), "FetchWindow") << "nothing was chosen";
    till.user.presses(forms::kKeyDown);
    till.user.types("\r");
    ASSERT_EQ(till.user.form(), "frmRequestDetail");
    EXPECT_EQ(till.user.text("cboItem"), listed[0][2]);
    EXPECT_EQ(till.user.focus(), "txtQuantity");
    EXPECT_FALSE(till.user.list("lvwpacktype").empty());
    till.user.enters("txtQuantity", "3");
    till.user.clicks("cmdOk");
    till.user.focuses("cmdbarcode");
    till.user.types(" "); // no code begins so
    till.user.presses(forms::kKeyEscape);
    ASSERT_EQ(till.user.form(), "frmRequestDetail");
    EXPECT_EQ(till.user.text("cboItem"), "");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.column(1), (Names{listed[0][1]}));
}

TEST_F(Item, TheShopsSettingChoosesTheColumnToSearchIn) {
    for (const auto& [setting, shown] :
         std::vector<std::pair<std::string, std::string>>{{"'ItemCode'", "Item Code"},
                                                          {"'Part_Code'", "Part Code"},
                                                          {"'ItemID'", "Item Description"},
                                                          {"'Colour'", "Item Description"},
                                                          {"null", "Item Description"}}) {
        company.change("update LOsSettings set defaultfetch = " + setting + " where ShopID = 1");
        Till till(company);
        reachesLines(till);
        till.user.clicks("cmdbarcode");
        ASSERT_EQ(till.user.form(), "FetchWindow");
        EXPECT_EQ(till.user.text("cboColumn"), shown) << setting;
        till.user.presses(forms::kKeyEscape);
    }
}

TEST_F(Item, PackingsAreListedAndCountedInFractions) {
    const std::string of = " where itemid = " + item.id;
    company.change("delete aitempackingdetail" + of +
                   ";delete apackingtypecapacitydetail where packingtypeid in (91, 92, 93);"
                   "insert into apackingtype values (91, 'Dozen');insert into apackingtype values (92, 'Pallet');"
                   "insert into apackingtype values (93, 'Loose');"
                   "insert into apackingtypecapacitydetail values (91, (select UnitsId from aitem" +
                   of + "), 12), (92, (select UnitsId from aitem" + of +
                   "), 40);insert into aitempackingdetail values (" + item.id +
                   ", 91, '2991', 1, 1)"
                   ";insert into aitempackingdetail values (" +
                   item.id +
                   ", 92, '2992', 0, 0)"
                   ";insert into aitempackingdetail values (" +
                   item.id + ", 93, '2993', 0, 1)");
    Till till(company);
    reachesLines(till);
    scans(till, "2991");
    EXPECT_EQ(till.user.list("lvwpacktype"), (Rows{{"91", "Dozen", ""}})); // 92 is inactive, 93 has no capacity
    till.user.types("30\r");
    EXPECT_EQ(till.user.list("lvwpacktype"), (Rows{{"91", "Dozen", "2.50"}}));
    EXPECT_EQ(till.user.focus(), "txtBadQuantity");
    till.user.focuses("cboItem");
    for (const char* next : {"lvwpacktype", "txtBarcode"}) {
        till.user.types("\r");
        EXPECT_EQ(till.user.focus(), next);
    }
    till.user.enters("txtQuantity", "0\r");
    EXPECT_EQ(till.user.focus(), "txtQuantity");

    company.change("update apackingtypecapacitydetail set quantity = 0 where packingtypeid = 91");
    till.user.enters("txtQuantity", "5\r");
    const std::string report = till.readsReport();
    EXPECT_NE(report.find("Error 11: Division by zero"), std::string::npos);
    EXPECT_NE(report.find("basGRtoShop , FillPackingQuantities"), std::string::npos) << report;
    EXPECT_EQ(till.user.text("txtQuantity"), "5");
    EXPECT_EQ(till.user.focus(), "txtBadQuantity") << "the next key of a scanner belongs there";
    till.user.clicks("cmdOk");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.column(3), (Names{"5.000"}));
}

TEST_F(Item, PricesComeFromTheProcedureAndKeepTwoDecimals) {
    const std::string of = " where ItemId = " + item.id;
    struct Case {
        const char* what;
        std::int32_t screen;
        std::string rows; ///< of "ItemId, PackingTypeId, ShopId, SellingPrice, WholesalePrice"
        const char* price;
    };
    const std::string packing = company.value("select packingtypeid from vwitemretailpacking" + of);
    const std::string row = "insert into losShopItemShipmentDetail values (" + item.id + "," + packing;
    for (const Case& c : {Case{"selling price", 1507, row + ",1,12.347,9.993)", "12.35"},
                          {"wholesale price", 1611, row + ",1,12.347,9.993)", "9.99"},
                          {"head office's", 1611, row + ",null,5,4.125)", "4.13"},
                          {"the shop's before head office's", 1611, row + ",null,5,4);" + row + ",1,6,3)", "3"},
                          {"another shop's", 1611, row + ",2,5,4)", "0"},
                          {"a price that is null", 1611, row + ",1,5,null)", "0"},
                          {"no row", 1611, "", "0"}}) {
        SCOPED_TRACE(c.what);
        company.change("delete losShopItemShipmentDetail" + of + (c.rows.empty() ? "" : ";" + c.rows));
        Till till(company, {.screenId = c.screen});
        reachesLines(till);
        scans(till, item.barcode);
        EXPECT_EQ(till.user.control<forms::TextBox>("txtsellingprice")->text(), c.price);
    }
}

TEST_F(Item, WithoutDepartmentAndRetailPackingThePriceIsAskedForZeroOfBoth) {
    Till till(company);
    reachesLines(till);
    scans(till, other.barcode); // the department's currency is known
    company.change("delete aDepartmentMaster; update aitempackingdetail set RetailPacking = 0");
    scans(till, item.barcode);
    EXPECT_EQ(till.statements("spSellingPriceFetch").back(), "spSellingPriceFetch 1,1,0," + item.id + ",0,1,0");
}

TEST_F(Item, LookUpsThatFailAreReportedOnceAndLeaveNothingOfTheItemBefore) {
    struct Case {
        const char* statement;
        const char* routine;
        bool keepsItem; ///< chosen all the same, it stands with all that could be read of it
    };
    // clang-format off
    for (const Case& c : {Case{"spSellingPriceFetch", "basGRtoShop , fnGetSellingPrice", true},
                          {"select a.departmentID", "frmRequestDetail , fnGetDeptCurrID", true},
                          {"select reorderquantity", "frmRequestDetail , cboItem_Click", true},
                          {"select ad.packingtypeid", "basGRtoShop , FillPackingTypes", true},
                          {"select a.itemid, v.itemdescription", "frmRequestDetail , txtBarcode_KeyPress", false},
                          {"select apd.itemid", "frmRequestDetail , txtBarcode_KeyPress", false}}) {
        // clang-format on
        SCOPED_TRACE(c.statement);
        Till till(company, {.screenId = 1611});
        reachesLines(till);
        scans(till, item.barcode);
        till.user.enters("txtQuantity", "7");
        till.connection->failOn([&](std::string_view statement) { return statement.starts_with(c.statement); });
        till.user.enters("txtBarcode", other.barcode + "\r");
        EXPECT_NE(till.readsReport().find(c.routine), std::string::npos);
        till.connection->failOn(nullptr);
        EXPECT_EQ(till.user.text("cboItem"), c.keepsItem ? other.description : "");
        EXPECT_EQ(till.module.requestDetail().strItemCode, c.keepsItem ? other.code : "");
        EXPECT_NE(till.user.text("txtQuantity"), "7");
        const std::string failed = c.statement;
        EXPECT_EQ(till.user.text("txtsellingprice").empty(), failed == "select reorderquantity" || !c.keepsItem);
        EXPECT_EQ(till.user.text("txtsellingprice") == "0", failed == "spSellingPriceFetch");
        EXPECT_EQ(till.user.list("lvwpacktype").empty(), failed == "select ad.packingtypeid" || !c.keepsItem);
        if (c.keepsItem) continue;
        till.user.types(item.barcode + "\r"); // takes the failed scan's place
        EXPECT_EQ(till.user.text("cboItem"), item.description);
    }
}

TEST_F(Item, FetchMayTakeListsByReferenceAndAnswerWithItsOwnRecordSet) {
    const auto dialog = std::make_shared<OtherFetch>();
    dialog->chosen = sandbox::createStandIn("ADODB.Recordset", {});
    const auto given = sandbox::createStandIn("ADODB.Recordset", {});
    EXPECT_EQ(goodsreq::Fetch(dialog).show({}, given).object(), dialog->chosen);
}

} // namespace
