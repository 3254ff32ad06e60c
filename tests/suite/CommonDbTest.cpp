// The database helper's stand-in on the sample company.
#include "sandbox/data/SampleCompany.h"
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/Shop.h"

#include "basic/Conversion.h"
#include "sandbox/suite/StandIns.h"

#include <gtest/gtest.h>

using automation::Value;

namespace {

class DatabaseHelper : public testing::Test {
protected:
    support::CompanyFile company;
    support::ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    automation::ObjectPtr helper = sandbox::createStandIn("CommonModule.clsCommonDB", {&desktop, ""});

    void SetUp() override {
        form->ensureLoaded();
        helper->putRef("adocon", sandbox::openConnection(company.path()));
    }
    automation::Object& on(const std::string& table) {
        helper->put("strTableName", table);
        return *helper;
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
    const int highest =
        std::stoi(company.value("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid=1"));
    const auto next = [&](int shop) {
        return basic::cLng(on("mesRequesttoShopHeader where srhshopid=" + std::to_string(shop))
                               .call("fnGetNextMaxNo", "srhrequestid"));
    };
    EXPECT_EQ(next(1), highest + 1);
    EXPECT_EQ(next(sandbox::kGardenShop), 1) << "a shop without requests";
}

TEST_F(DatabaseHelper, FixedValuesKeepTheirKind) {
    form->lvwLines.add("O'Neil's");
    on("losShopItemStock")
        .call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{8}, "v", std::int32_t{1}, "V", 0.125);
    EXPECT_EQ(company.value("select stock from losShopItemStock where shopid=8 and itemid=1"), "0.125");
    on("aalias").call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{7}, "C", std::int16_t{0});
    on("aalias").call("fnUpdateListViewDetails", form->lvwLines.self(), "V", std::int32_t{8}, "V", "D'Arcy");
    EXPECT_EQ(company.rows("select Alias from aalias where aliasid > 1 order by aliasid"),
              (support::Rows{{"O'Neil's"}, {"D'Arcy"}}));
}

TEST_F(DatabaseHelper, RefusesPairsThatAreNone) {
    form->lvwLines.add("1");
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
