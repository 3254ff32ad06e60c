// The database helper's stand-in on the sample company.
#include "sandbox/data/SampleCompany.h"
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/suite/SampleCopy.h"
#include "tests/support/ScriptedDesktop.h"

#include <gtest/gtest.h>

using automation::Value;

namespace {

class DatabaseHelper : public testing::Test {
protected:
    SampleCopy company;
    support::ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    automation::ObjectPtr helper = sandbox::createStandIn("CommonModule.clsCommonDB", {&desktop, ""});

    void SetUp() override {
        form->ensureLoaded();
        helper->putRef("adocon", company.connection);
    }
    automation::Object& on(const std::string& table) {
        helper->put("strTableName", table);
        return *helper;
    }
    /// A line of the list: its text, then its sub-items.
    void addLine(const std::vector<std::string>& cells) {
        forms::ListItem& line = form->lvwLines.add(cells.front());
        for (std::size_t i = 1; i < cells.size(); ++i) line.setSubItem(static_cast<int>(i), cells[i]);
    }
};

} // namespace

TEST_F(DatabaseHelper, LooksUpTheFirstRowThatMeetsTheCriterion) {
    const auto text = [](const Value& value) {
        return value.isNull() || value.isEmpty() ? "none" : basic::cStr(value);
    };
    EXPECT_EQ(text(on("ashops").call("fnReturnField", "shopname", "shopid=1")), "Brackenway High Street");
    EXPECT_EQ(text(on("ashops").call("fnReturnField", "substring(futurevarchar,1,1)", "ShopID=6")), "B");
    EXPECT_EQ(text(on("LOUSERS where userid=1 and shopid = 1").call("fnReturnField", "username")), "Margaret Ellis");
    EXPECT_EQ(text(on("lousers where userid=1").call("fnReturnField", "username", "shopid = 3")), "Margaret Ellis")
        << "a criterion joins a where-condition that is there already";
    EXPECT_EQ(text(on("lousers\nWHERE userid=2").call("fnReturnField", "username", " shopid = 3")), "Tom Barker");
    EXPECT_EQ(text(on("aItem i, aUnit u").call("fnReturnField", "u.UnitCode", "i.UnitsId = u.UnitId AND i.ItemId = 3")),
              "PCS");
    EXPECT_EQ(text(on("ashops").call("fnReturnField", "shopname", "shopid=99")), "none");
    EXPECT_EQ(text(on("aitem").call("fnReturnField", "part_code", "itemid=1")), "none") << "a null field";
    EXPECT_EQ(text(on("ashops").call("fnReturnField", "shopname", "shopname='where'")), "none")
        << "the word in quotes is no condition";
    EXPECT_NE(errorOf([&] { on("nosuchtable").call("fnReturnField", "x"); }), 0);
}

TEST_F(DatabaseHelper, WithoutAConnectionItSaysSo) {
    const auto fresh = sandbox::createStandIn("CommonModule.clsCommonDB", {&desktop, ""});
    fresh->put("strTableName", "ashops");
    EXPECT_EQ(errorOf([&] { fresh->call("fnReturnField", "shopname"); }), 91);
    EXPECT_EQ(errorOf([&] { fresh->put("adocon", "no connection"); }), 13);
}

TEST_F(DatabaseHelper, GivesTheNextNumberOfAShop) {
    const int highest = company.number("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid=1");
    const auto next = [&](int shop) {
        return basic::cLng(on("mesRequesttoShopHeader where srhshopid=" + std::to_string(shop))
                               .call("fnGetNextMaxNo", "srhrequestid"));
    };
    EXPECT_EQ(next(1), highest + 1);
    EXPECT_EQ(next(sandbox::kGardenShop), 1) << "a shop without requests";
}

TEST_F(DatabaseHelper, FillsABoxAfreshWithEachRowOnce) {
    forms::ComboBox& box = form->cboShop;
    box.addItem("left over", 5);
    on("aShops s, ashopitemcategory ic")
        .call("populateComboorList", box.self(), "distinct s.shopid", "s.shopname",
              " ic.shopid = s.shopid  and ic.itemcategoryid in (select itemcategoryid from ashopitemcategory where "
              "shopid=1)"
              " and s.shopid<>1 and s.ActiveShop=1");
    std::vector<std::string> entries;
    for (const auto& entry : box.entries()) entries.push_back(std::to_string(entry.itemData) + " " + entry.text);
    EXPECT_EQ(entries,
              (std::vector<std::string>{"5 Brackenway Harbour", "4 Brackenway Market Square", "3 Brackenway Riverside",
                                        "2 Brackenway Station Road", "6 Brackenway Trade Counter"}));
    EXPECT_EQ(box.listIndex(), -1);
}

TEST_F(DatabaseHelper, WritesARowForEachLineByTheTablesColumns) {
    addLine({"1", "BK1001", "White Loaf", "999999999999999999.999", "0.000", "1", "1.250"});
    addLine({"2", "BK1002", "Wholemeal Loaf", "2.500", "1.000", "2", "0.000"});
    on("mesRequesttoShopDetail")
        .call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{30000}, "V", std::int16_t{1}, "C",
              std::int16_t{5}, "V", std::int32_t{2}, "C", std::int16_t{3}, "C", std::int16_t{4}, "C", std::int16_t{6});
    EXPECT_EQ(
        company.rows("select srditemid,srdtoshopid,srdgoodqty,srdbadQty,srdSellingprice from mesRequesttoShopDetail "
                     "where srdrequestid=30000 and srdshopid=1 order by srditemid"),
        (RowTexts{{"1", "2", "999999999999999999.999", "0", "1.25"}, {"2", "2", "2.5", "1", "0"}}));

    form->lvwLines.clear();
    on("mesRequesttoShopDetail").call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{30001});
    EXPECT_EQ(company.value("select count(*) from mesRequesttoShopDetail where srdrequestid=30001"), "0");
}

TEST_F(DatabaseHelper, FixedValuesKeepTheirKind) {
    addLine({"O'Neil's"});
    on("losShopItemStock")
        .call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{8}, "v", std::int32_t{1}, "V", 0.125);
    EXPECT_EQ(company.value("select stock from losShopItemStock where shopid=8 and itemid=1"), "0.125");
    on("aalias").call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{7}, "C", std::int16_t{0});
    on("aalias").call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{8}, "V", "D'Arcy");
    EXPECT_EQ(company.rows("select Alias from aalias where aliasid > 1 order by aliasid"),
              (RowTexts{{"O'Neil's"}, {"D'Arcy"}}));
}

TEST_F(DatabaseHelper, RefusesPairsThatAreNone) {
    addLine({"1"});
    on("aalias");
    EXPECT_EQ(errorOf([&] { helper->call("fnUpdateListViewDetails", form->lvwLines.self(), "X", std::int32_t{1}); }),
              5);
    EXPECT_EQ(
        errorOf([&] { helper->call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{1}, "V"); }),
        450);
}

TEST_F(DatabaseHelper, ReturnsAnOpenRecordSet) {
    Value sql = "select itemid,itemcode from aitem where itemid=2";
    const automation::ObjectPtr records = helper->call("fnReturnRecords", Value::byReference(sql)).objectPtr();
    EXPECT_EQ(basic::cStr(records->call("Fields", "itemcode").object().get("Value")), "BK1002");
}
