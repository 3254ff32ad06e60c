// Statements that differ only in their values share what is prepared, and still mean what each of them says.
#include "tests/database/SmallCompany.h"

#include "sandbox/database/StatementShape.h"

namespace {

using namespace database_test;

TEST(Shape, IsTheSameWhereOnlyPlainValuesDiffer) {
    struct Case {
        const char* one;
        const char* other;
        bool same;
    };
    const Case cases[] = {
        {"select * from aitem where itemid=100", "select * from aitem  where itemid = 7 -- seven", true},
        {"select * from aitem where itemcode='A-100'", "select * from aitem where itemcode='it''s'", true},
        {"select 'a'", "select N'a'", false},
        {"select 'a'", "select 1", false},
        {"select 999999999", "select 1", true},
        {"select 9999999999", "select 1", false},
        {"select 1.5", "select 2.5", false},
        {"select 1.5", "select 15", false},
        {"select a1 from t", "select a2 from t", false},
        {"select itemid from aitem", "select itemcode from aitem", false},
        {"select 1, 2", "select 12", false},
        {"select 'a' 'b'", "select 'ab'", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(sandbox::shapeOf(c.one).key == sandbox::shapeOf(c.other).key, c.same) << c.one << " / " << c.other;
}

TEST(Shape, EachStatementGivesItsOwnRowsWhateverRanBefore) {
    // Values that choose a position or a count, beside those that are only compared or stored.
    const std::vector<std::vector<const char*>> families = {
        {"select top 1 shopid from aShops order by shopid", "select top 3 shopid from aShops order by shopid"},
        {"select 1 + 2", "select 4 + 5", "select 2147483647 + 1"},
        {"select substring('abc', 1, 2)", "select substring('abc', 2, 1)"},
        {"select -5", "select -6"},
        {"select case 2 when 1 then 'one' when 2 then 'two' end",
         "select case 1 when 1 then 'one' when 2 then 'two' end"},
        {"select itemid from aitem where itemcode like 'A%'", "select itemid from aitem where itemcode like '%z'"},
        {"select count(*) from aitem where itemid in (100, 101)",
         "select count(*) from aitem where itemid in (1, 101)"},
        {"select isnull(null, 3), isnull(null, 'x')", "select isnull(null, 4), isnull(null, 'y')"},
        {"spSellingPriceFetch 1,1,0,100,1,1,1", "spSellingPriceFetch 1,2,0,101,1,1,1"},
    };
    for (const auto& family : families) {
        auto shared = smallCompany();
        for (const char* statement : family) {
            auto fresh = smallCompany();
            std::string wanted, given;
            const Failure expected = failureOf([&] { wanted = rows(*fresh, statement); });
            const Failure found = failureOf([&] { given = rows(*shared, statement); });
            EXPECT_EQ(given, wanted) << statement;
            EXPECT_EQ(found.number, expected.number) << statement;
            EXPECT_EQ(found.text, expected.text) << statement;
        }
    }
}

TEST(Shape, InsertedValuesAreConvertedAndCheckedEachTime) {
    auto connection = smallCompany();
    const auto insert = [&](const std::string& values) {
        return failureOf(
            [&] { connection->call("Execute", "insert into mesRequesttoShopDetail values (" + values + ")"); });
    };
    EXPECT_EQ(insert("900,1,'7',2,'1.5','0',0").text, "no error");
    EXPECT_EQ(insert("900,1,' 8 ',2,'-1234.5678','0',0").text, "no error");
    EXPECT_EQ(insert("900,1,'x',2,'1','0',0").number, sandbox::kConversionError);
    EXPECT_EQ(insert("900,1,'99999999999',2,'1','0',0").number, sandbox::kDataOverflow);
    EXPECT_EQ(insert("900,1,'9',2,'" + std::string(30, '9') + "','0',0").number, sandbox::kDataOverflow);
    EXPECT_EQ(insert("900,1,'7',2,'1','0',0").number, sandbox::kConstraintViolated);
    EXPECT_EQ(insert("900,1,null,2,'1','0',0").number, sandbox::kConstraintViolated);
    EXPECT_EQ(rows(*connection, "select srditemid, srdgoodqty from mesRequesttoShopDetail where srdrequestid = 900"),
              "7,decimal 1.500|8,decimal -1234.568");

    const auto city = [&](const std::string& name) {
        return failureOf([&] { connection->call("Execute", "insert into aUnit values (77, '" + name + "', 'x')"); });
    };
    EXPECT_EQ(city(std::string(500, 'x')).text, "String or binary data would be truncated.");
    EXPECT_EQ(city("ok" + std::string(500, ' ')).text, "no error");
}

} // namespace
