// The suite's search window: what it gives back, and what it keeps.
#include "basic/Conversion.h"
#include "tests/suite/Suite.h"

namespace {

using automation::Array;

class ItemFetch : public suite::StandInTest {
protected:
    automation::ObjectPtr fetch = standIn("Fetch.clsFetch");
    automation::ObjectPtr records = standIn("ADODB.Recordset");

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
    support::User& shows() {
        user.starts([this] { fetch->call("Show"); });
        EXPECT_EQ(user.form(), "FetchWindow");
        return user;
    }
    bool cancelled() { return basic::cBool(fetch->get("getCancelledStatus")); }
    static std::string field(automation::Object& of, const char* name) {
        return basic::concatText(of.call("Fields", name).object().get("Value"));
    }
};

TEST_F(ItemFetch, EachSearchColumnFindsItsOwn) {
    EXPECT_TRUE(shows().types("BK1002").rows("lvwItems").empty()) << "no description holds a code";
    EXPECT_FALSE(user.enabled("cmdOk"));
    EXPECT_FALSE(user.types("\r").ended()) << "there is nothing to pick";
    EXPECT_EQ(user.picks("cboColumn", "Item Code").rows("lvwItems").size(), 1u);
    EXPECT_TRUE(user.selectsRow("lvwItems", 1).clicks("cmdOk").ended());
    EXPECT_FALSE(cancelled());
    EXPECT_EQ(field(fetch->get("getRecordset").object(), "itemcode"), "BK1002")
        << "its own record set where none was handed in";
}

TEST_F(ItemFetch, FillsTheRecordSetHandedInUnlessItIsCancelled) {
    fetch->put("setRecordset", records);
    EXPECT_TRUE(shows().presses(forms::kKeyEscape).ended());
    EXPECT_TRUE(cancelled());
    EXPECT_EQ(basic::cLng(records->get("State")), 0);
    for (const char* chosen : {"White Loaf 400 g", "White Loaf 600 g"}) {
        EXPECT_TRUE(shows().types(chosen).selectsRow("lvwItems", 1).doubleClicks("lvwItems").ended());
        EXPECT_EQ(field(*records, "itemdescription"), chosen);
    }
}

TEST_F(ItemFetch, TheSearchIsThereAgainWhenItIsToBePreserved) {
    for (const bool preserve : {false, true}) {
        fetch->put("PreserveData", preserve);
        shows().enters("txtSearch", "Milk").presses(forms::kKeyEscape);
        EXPECT_EQ(shows().text("txtSearch"), preserve ? "Milk" : "");
        user.presses(forms::kKeyEscape);
    }
}

TEST_F(ItemFetch, AWrongSetupIsAnErrorAndOpensNoWindow) {
    fetch->put("strQuery", "select nothing from nowhere");
    EXPECT_NE(errorOf([&] { fetch->call("Show"); }), 0);
    const auto fresh = standIn("Fetch.clsFetch");
    EXPECT_EQ(errorOf([&] { fresh->call("Show"); }), 5);
    EXPECT_EQ(errorOf([&] { fresh->put("setFieldNames", "ItemID"); }), 13);
    EXPECT_TRUE(basic::cBool(fresh->get("getCancelledStatus")));
}

} // namespace
