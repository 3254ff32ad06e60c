// What the server's dialect means, statement by statement.
#include "sandbox/database/StatementShape.h"
#include "tests/database/SmallCompany.h"

#include <fstream>
#include <map>

namespace {

using namespace database_test;
using namespace sandbox;

TEST(Dialect, IsAnsweredAsTheServerDoes) {
    const std::map<long, std::string> kinds = {{kSyntaxError, "syntax: "},
                                               {kConversionError, "conversion: "},
                                               {kDataOverflow, "overflow: "},
                                               {kConstraintViolated, "constraint: "},
                                               {kServerFailure, "failure: "}};
    const auto connection = smallCompany();
    std::ifstream file(PROJECT_DIR "/tests/database/dialect.sql");
    std::size_t statements = 0;
    for (std::string statement, answer; std::getline(file, statement);) {
        if (statement.empty() || statement.starts_with("--")) continue;
        SCOPED_TRACE(statement);
        ASSERT_TRUE(std::getline(file, answer) && answer.starts_with("-->"));
        std::string given;
        const Failure failure = failureOf([&] { given = rows(*connection, statement); });
        if (failure.number != 0) {
            EXPECT_EQ(failure.source, "Sandbox database");
            given = kinds.at(failure.number) + failure.text;
        }
        EXPECT_EQ(given.empty() ? "-->" : "--> " + given, answer);
        ++statements;
    }
    EXPECT_GT(statements, 100u);
}

TEST(Dialect, StatementsHaveOneShapeWhereOnlyPlainValuesDiffer) {
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

// No column of the company has these types, but what a host joins may.
TEST(Dialect, MoreTypesAreKept) {
    const auto connection = createCompany(":memory:", "create table t (padded char(4), amount real, huge bigint)");
    connection->database().execute("insert into t values ('ab', '1.5', 9007199254740993)");
    EXPECT_EQ(rows(*connection, "select padded, amount, huge from t where padded = 'ab' and huge > 9007199254740992"),
              "'ab  ',double 1.5,decimal 9007199254740993");
}

TEST(Dialect, ZerosAndDeepNestingAreRefused) {
    const auto connection = smallCompany();
    const std::string zero("a\0b", 3), open(5000, '('), close(5000, ')');
    std::string sum = "select 1", negations = "select ";
    for (int i = 0; i < 5000; ++i) {
        sum += "+1";
        negations += "- ";
    }
    for (const std::string& statement :
         {std::string(), "select 1 " + zero, "select top 1 " + zero, "select " + open + "1" + close, sum,
          negations + "1", "select (select " + open})
        EXPECT_EQ(errorOfCall(connection, "Execute", statement), kSyntaxError) << statement.substr(0, 30);
    EXPECT_EQ(basic::cStr(connection->database().execute("select '" + zero + "'").rows[0][0]), zero);
}

} // namespace
