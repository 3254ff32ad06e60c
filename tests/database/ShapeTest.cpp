// Statements that differ only in their values share what is prepared, and still mean what each of them says.
#include "tests/database/SmallCompany.h"

#include "sandbox/database/StatementShape.h"

namespace {

using namespace database_test;
using namespace sandbox;

TEST(Shape, IsTheSameWhereOnlyPlainValuesDiffer) {
    const std::tuple<const char*, const char*, bool> cases[] = {
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
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(shapeOf(one).key == shapeOf(other).key, same) << one << " / " << other;
}

TEST(Shape, EachStatementGivesItsOwnRowsWhateverRanBefore) {
    // Values that choose a position or a count, beside those that are only compared or stored.
    const std::vector<const char*> families[] = {
        // clang-format off
        {"select top 1 shopid from aShops order by shopid", "select top 3 shopid from aShops order by shopid"},
        {"select 1 + 2", "select 4 + 5", "select 2147483647 + 1"},
        {"select substring('abc', 1, 2)", "select substring('abc', 2, 1)"}, {"select -5", "select -6"},
        {"select case 2 when 1 then 'one' when 2 then 'two' end", "select case 1 when 1 then 'one' when 2 then 'two' end"},
        {"select itemid from aitem where itemcode like 'A%'", "select itemid from aitem where itemcode like '%z'"},
        {"select count(*) from aitem where itemid in (100, 101)", "select count(*) from aitem where itemid in (1, 101)"},
        {"select isnull(null, 3), isnull(null, 'x')", "select isnull(null, 4), isnull(null, 'y')"},
        {"spSellingPriceFetch 1,1,0,100,1,1,1", "spSellingPriceFetch 1,2,0,101,1,1,1"},
        // clang-format on
    };
    const auto answer = [](const ConnectionPtr& connection, const char* statement) {
        std::string given;
        const Failure failure = failureOf([&] { given = rows(*connection, statement); });
        return given + " " + std::to_string(failure.number) + " " + failure.text;
    };
    for (const auto& family : families) {
        const auto shared = smallCompany();
        for (const char* statement : family)
            EXPECT_EQ(answer(shared, statement), answer(smallCompany(), statement)) << statement;
    }
}

TEST(Shape, InsertedValuesAreConvertedAndCheckedEachTime) {
    const std::string path = freshPath("shared.db");
    const auto connection = smallCompany(path), other = openConnection(path);
    const std::pair<std::string, long> cases[] = {
        // clang-format off
        {"'7',2,'1.5'", 0}, {"' 8 ',2,'-1234.5678'", 0}, {"'x',2,'1'", kConversionError},
        {"'99999999999',2,'1'", kDataOverflow}, {"'9',2,'" + std::string(30, '9') + "'", kDataOverflow},
        {"'7',2,'1'", kConstraintViolated}, {"null,2,'1'", kConstraintViolated},
        // clang-format on
    };
    const std::string insert = "insert into mesRequesttoShopDetail values (900,1,";
    const char* const query = "select srditemid, srdgoodqty from mesRequesttoShopDetail where srdrequestid = 900";
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(rows(*other, query), "");
        for (const auto& [values, error] : cases)
            EXPECT_EQ(errorOfCall(connection, "Execute", insert + values + ",'0',0)"), error) << values;
        EXPECT_EQ(rows(*other, query), "7,decimal 1.500|8,decimal -1234.568");
        EXPECT_EQ(errorOfCall(other, "Execute", "delete mesRequesttoShopDetail where srdrequestid = 900"), 0);
    }
    const auto unit = [&](const std::string& code) {
        return errorOfCall(connection, "Execute", "insert into aUnit values (77, '" + code + "', 'x')");
    };
    EXPECT_EQ(unit(std::string(500, 'x')), kDataOverflow);
    EXPECT_EQ(unit("ok" + std::string(500, ' ')), 0);
}

} // namespace
