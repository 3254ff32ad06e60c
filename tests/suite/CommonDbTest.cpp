// The database helper's stand-in on the sample company.
#include "basic/Conversion.h"
#include "tests/suite/Suite.h"

namespace {

using automation::Value;

class DatabaseHelper : public suite::StandInTest {
protected:
    automation::ObjectPtr helper = standIn("CommonModule.clsCommonDB");

    void SetUp() override { helper->putRef("adocon", sandbox::openConnection(company.path())); }
    template <class... Arguments> Value on(const std::string& table, const char* member, Arguments... arguments) {
        helper->put("strTableName", table);
        return helper->call(member, arguments...);
    }
    /// Writes a new company's words for a shop, or stock, from the lines of the form's list.
    template <class... Pairs> Value writes(const std::string& table, Pairs... pairs) {
        return on(table, "fnUpdateListViewDetails", form->lvwLines.self(), pairs...);
    }
};

TEST_F(DatabaseHelper, LooksUpTheFirstRowThatMeetsTheCriterion) {
    // clang-format off
    for (const auto& [table, field, criterion, found] : {
             std::tuple("ashops", "shopname", "shopid=1", "Brackenway High Street"),
             {"ashops", "substring(futurevarchar,1,1)", "ShopID=6", "B"},
             {"LOUSERS where userid=1 and shopid = 1", "username", "", "Margaret Ellis"},
             {"lousers where userid=1", "username", "shopid = 3", "Margaret Ellis"}, // joins the condition there is
             {"lousers\nWHERE userid=2", "username", " shopid = 3", "Tom Barker"},
             {"aItem i, aUnit u", "u.UnitCode", "i.UnitsId = u.UnitId AND i.ItemId = 3", "PCS"},
             {"ashops", "shopname", "shopid=99", "none"},
             {"aitem", "part_code", "itemid=1", "none"},            // a null field
             {"ashops", "shopname", "shopname='where'", "none"}}) { // in quotes the word is no condition
        // clang-format on
        const Value value =
            *criterion ? on(table, "fnReturnField", field, criterion) : on(table, "fnReturnField", field);
        EXPECT_EQ(value.isNull() || value.isEmpty() ? "none" : basic::cStr(value), found) << table << criterion;
    }
    EXPECT_NE(errorOf([&] { on("nosuchtable", "fnReturnField", "x"); }), 0);
    const auto fresh = standIn("CommonModule.clsCommonDB");
    fresh->put("strTableName", "ashops");
    EXPECT_EQ(errorOf([&] { fresh->call("fnReturnField", "shopname"); }), 91);
    EXPECT_EQ(errorOf([&] { fresh->put("adocon", "no connection"); }), 13);
}

TEST_F(DatabaseHelper, FixedValuesKeepTheirKind) {
    form->lvwLines.add("O'Neil's");
    writes("losShopItemStock", "V", std::int32_t{8}, "v", std::int32_t{1}, "V", 0.125);
    EXPECT_EQ(company.value("select stock from losShopItemStock where shopid=8 and itemid=1"), "0.125");
    writes("aalias", "V", std::int32_t{7}, "C", std::int16_t{0});
    writes("aalias", "V", std::int32_t{8}, "V", "D'Arcy");
    EXPECT_EQ(company.rows("select Alias from aalias where aliasid > 1 order by aliasid"),
              (support::Rows{{"O'Neil's"}, {"D'Arcy"}}));
    // Pairs that are none.
    EXPECT_EQ(errorOf([&] { writes("aalias", "X", std::int32_t{1}); }), 5);
    EXPECT_EQ(errorOf([&] { writes("aalias", "V", std::int32_t{1}, "V"); }), 450);
}

} // namespace
