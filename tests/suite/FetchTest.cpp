// The suite's search window: what it gives back, and what it keeps.
#include "tests/basic/ExpectError.h"
#include "tests/support/Shop.h"

#include "basic/Conversion.h"
#include "sandbox/suite/StandIns.h"

#include <gtest/gtest.h>

using automation::Array;
using automation::Value;

namespace {

class ItemFetch : public testing::Test {
protected:
    support::CompanyFile company;
    support::ScriptedDesktop desktop;
    support::User user{desktop};
    automation::ObjectPtr fetch = sandbox::createStandIn("Fetch.clsFetch", {&desktop, ""});
    automation::ObjectPtr records = sandbox::createStandIn("ADODB.Recordset", {&desktop, ""});

    void SetUp() override {
        fetch->putRef("adocon", sandbox::openConnection(company.path()));
        fetch->put("strQuery",
                   "select a.itemid,a.itemcode,v.itemdescription from aitem a inner join vwItemDescription v"
                   " on a.ItemId=v.ItemId order by a.itemid");
        fetch->put("setFieldNames", Array{"ItemID", "ItemCode", "ItemDescription"});
        fetch->put("setFieldCaptions", Array{"Item ID", "Item Code", "Item Description"});
        fetch->put("setFieldWidths", Array{std::int32_t{0}, std::int32_t{2000}, std::int32_t{4000}});
        fetch->put("setDefaultFetchField", std::int32_t{2});
        fetch->call("setFetchType", "I"); // given as a call, as other callers do
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

TEST_F(ItemFetch, EachSearchColumnFindsItsOwn) {
    shows();
    user.types("BK1002");
    EXPECT_TRUE(user.list("lvwItems").empty()) << "no description holds a code";
    EXPECT_FALSE(user.enabled("cmdOk"));
    user.types("\r");
    EXPECT_FALSE(user.ended()) << "there is nothing to pick";
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

TEST_F(ItemFetch, AWrongSetupIsAnErrorAndOpensNoWindow) {
    fetch->put("strQuery", "select nothing from nowhere");
    EXPECT_NE(errorOf([&] { fetch->call("Show"); }), 0);
    const auto fresh = sandbox::createStandIn("Fetch.clsFetch", {&desktop, ""});
    EXPECT_EQ(errorOf([&] { fresh->call("Show"); }), 5);
    EXPECT_EQ(errorOf([&] { fresh->put("setFieldNames", "ItemID"); }), 13);
    EXPECT_TRUE(basic::cBool(fresh->get("getCancelledStatus")));
}
