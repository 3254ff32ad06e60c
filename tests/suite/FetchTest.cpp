// The item fetch dialog as a clerk uses it.
#include "tests/basic/ExpectError.h"
#include "tests/suite/SampleCopy.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using automation::Array;
using automation::Value;

namespace {

class ItemFetch : public testing::Test {
protected:
    SampleCopy company;
    support::ScriptedDesktop desktop;
    support::User user{desktop};
    automation::ObjectPtr fetch = sandbox::createStandIn("Fetch.clsFetch", {&desktop, ""});
    automation::ObjectPtr records = sandbox::createStandIn("ADODB.Recordset", {&desktop, ""});

    void SetUp() override {
        fetch->putRef("adocon", company.connection);
        fetch->put("strMsgboxTitle", "Retail Back Office");
        fetch->put("lngUserID", std::int32_t{1});
        fetch->put(
            "strQuery",
            "select distinct(a.itemid) itemid,a.itemcode,v.itemdescription, a.brand,a.modelno,"
            "isnull(a.part_code,' ')part_code  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId"
            " Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1"
            " intersect select ItemCategoryId from aShopItemCategory where ShopId=2)");
        fetch->put("setFieldNames", Array{"ItemID", "ItemCode", "ItemDescription", "Brand", "ModelNo", "Part_Code"});
        fetch->put("setFieldCaptions",
                   Array{"Item ID", "Item Code", "Item Description", "Brand", "Model No", "Part Code"});
        fetch->put("setFieldWidths", Array{std::int32_t{0}, std::int32_t{2000}, std::int32_t{4000}, std::int32_t{2000},
                                           std::int32_t{2000}, std::int32_t{2000}});
        fetch->put("setDefaultFetchField", std::int32_t{2});
        fetch->put("setInterfaceCaption", "Item Fetch");
        fetch->put("setShopId", std::int16_t{1});
        fetch->call("setFetchType", "I"); // given as a call, as other callers do
        fetch->call("setLocationType", "S");
        fetch->put("interfaceid", std::int32_t{1507});
        fetch->put("DataIdentifier", "01");
        fetch->put("PreserveData", false);
    }
    void shows() {
        user.starts([this] { fetch->call("Show"); });
        ASSERT_EQ(user.form(), "FetchWindow");
    }
    bool cancelled() { return basic::cBool(fetch->get("getCancelledStatus")); }
    static std::string field(automation::Object& of, const char* name) {
        return basic::concatText(of.call("Fields", name).object().get("Value"));
    }
};

} // namespace

TEST_F(ItemFetch, TypingNarrowsTheListAndEnterPicks) {
    Value byReference = records;
    fetch->call("setRecordset", Value::byReference(byReference));
    shows();
    EXPECT_EQ(user.caption(), "Item Fetch");
    EXPECT_EQ(user.focus(), "txtSearch");
    EXPECT_EQ(user.text("cboColumn"), "Item Description");
    EXPECT_EQ(user.entries("cboColumn"),
              (std::vector<std::string>{"Item Code", "Item Description", "Brand", "Model No", "Part Code"}));
    const std::size_t all = user.list("lvwItems").size();
    EXPECT_EQ(all, static_cast<std::size_t>(company.number(
                       "select count(*) from aitem where active=1 and itemcategoryid in (1,2,3,4,5,6,7,8,11)")));

    user.types("rYe loaf");
    const auto found = user.list("lvwItems");
    ASSERT_EQ(found.size(), 3u);
    for (const auto& line : found) EXPECT_NE(line[2].find("Rye Loaf"), std::string::npos);
    user.presses(forms::kKeyDown);
    user.presses(forms::kKeyDown);
    user.types("\r");
    ASSERT_TRUE(user.ended());
    EXPECT_FALSE(cancelled());
    EXPECT_EQ(field(*records, "itemdescription"), found[1][2]);
    EXPECT_EQ(field(*records, "itemid"), found[1][0]);
    EXPECT_EQ(field(*records, "itemcode"), found[1][1]);
    records->call("MoveNext");
    EXPECT_TRUE(basic::cBool(records->get("EOF"))) << "exactly the chosen row";
}

TEST_F(ItemFetch, EachSearchColumnFindsItsOwn) {
    shows();
    user.types("BK1002");
    EXPECT_TRUE(user.list("lvwItems").empty()) << "no description holds a code";
    EXPECT_FALSE(user.enabled("cmdOk"));
    user.picks("cboColumn", "Item Code");
    ASSERT_EQ(user.list("lvwItems").size(), 1u);
    user.selectsRow("lvwItems", 1);
    user.clicks("cmdOk");
    ASSERT_TRUE(user.ended());
    EXPECT_FALSE(cancelled());
    EXPECT_EQ(field(fetch->get("getRecordset").object(), "itemcode"), "BK1002")
        << "its own record set where none was handed in";
}

TEST_F(ItemFetch, EscapeCancelsAndLeavesTheRecordSetAlone) {
    fetch->put("setRecordset", records);
    shows();
    user.presses(forms::kKeyEscape);
    ASSERT_TRUE(user.ended());
    EXPECT_TRUE(cancelled());
    EXPECT_EQ(basic::cLng(records->get("State")), 0);

    shows();
    user.closesFrame();
    EXPECT_TRUE(cancelled());
}

TEST_F(ItemFetch, AnotherChoiceReplacesTheFirst) {
    fetch->put("setRecordset", records);
    for (const char* code : {"White Loaf 400 g", "White Loaf 600 g"}) {
        shows();
        user.types(code);
        user.selectsRow("lvwItems", 1);
        user.doubleClicks("lvwItems");
        ASSERT_TRUE(user.ended());
        EXPECT_EQ(field(*records, "itemdescription"), code);
    }
}

TEST_F(ItemFetch, TheSearchIsThereAgainWhenItIsToBePreserved) {
    for (const bool preserve : {false, true}) {
        fetch->put("PreserveData", preserve);
        shows();
        user.enters("txtSearch", "Milk");
        user.presses(forms::kKeyEscape);
        shows();
        EXPECT_EQ(user.text("txtSearch"), preserve ? "Milk" : "");
        user.presses(forms::kKeyEscape);
    }
}

TEST_F(ItemFetch, SearchTextWithAnApostropheIsPlainText) {
    shows();
    user.types("O'Neil%");
    EXPECT_TRUE(user.list("lvwItems").empty());
    user.types("\r");
    EXPECT_FALSE(user.ended()) << "there is nothing to pick";
    user.presses(forms::kKeyEscape);
    EXPECT_TRUE(user.ended());
}

TEST_F(ItemFetch, AWrongSetupIsAnErrorAndOpensNoWindow) {
    fetch->put("strQuery", "select nothing from nowhere");
    EXPECT_NE(errorOf([&] { fetch->call("Show"); }), 0);
    const auto fresh = sandbox::createStandIn("Fetch.clsFetch", {&desktop, ""});
    EXPECT_EQ(errorOf([&] { fresh->call("Show"); }), 5);
    EXPECT_EQ(errorOf([&] { fresh->put("setFieldNames", "ItemID"); }), 13);
    EXPECT_TRUE(basic::cBool(fresh->get("getCancelledStatus")));
}
