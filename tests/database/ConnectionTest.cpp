// Connections: transactions, two users of one file, dead lines, and the trace.
#include "tests/database/SmallCompany.h"

#include <chrono>
#include <filesystem>

namespace {

using namespace database_test;

const char* const kCount = "select count(*) from acity";
const char* const kInsert = "insert into acity values (2, 'Lakeside', 1)";

TEST(Connection, ExecutesAndSaysWhatHappened) {
    auto connection = smallCompany();
    Value affected;
    Value result = connection->call("Execute", kInsert, Value::byReference(affected));
    EXPECT_EQ(shown(affected), "1");
    EXPECT_EQ(shown(result.object().get("State")), "0") << "a statement without rows gives a closed record set";
    automation::ObjectPtr records = connection->call("Execute", kCount).objectPtr();
    EXPECT_EQ(shown(records->call("Fields", std::int32_t(0)).object().get("")), "2");
    EXPECT_EQ(failureOf([&] { connection->call("Execute", "select nothing"); }).number, sandbox::kSyntaxError);
    EXPECT_EQ(failureOf([&] { connection->call("Execute"); }).number, automation::kWrongNumberOfArguments);
}

TEST(Connection, OpensByConnectionStringAndCloses) {
    const std::string path = freshPath("shop.db");
    smallCompany(path)->call("Close");
    sandbox::Connection connection;
    EXPECT_EQ(failureOf([&] { connection.call("Execute", kCount); }).number, sandbox::kObjectClosed);
    EXPECT_EQ(failureOf([&] { connection.call("Open", path + ".no"); }).number, sandbox::kServerFailure);
    EXPECT_FALSE(std::filesystem::exists(path + ".no")) << "opening must not make a file";
    connection.call("Open", "Provider=Sandbox; data source = " + path + ";User ID=sa");
    EXPECT_EQ(shown(connection.get("State")), "1");
    EXPECT_EQ(failureOf([&] { connection.call("Open", path); }).number, sandbox::kObjectOpen);
    connection.call("Close");
    connection.call("Open");
    EXPECT_EQ(shown(connection.get("State")), "1");
    EXPECT_EQ(failureOf([&] { sandbox::createCompany(path, schemaText()); }).number, sandbox::kServerFailure)
        << "an existing company is never overwritten";
}

TEST(Connection, OneTransactionAtATime) {
    auto connection = smallCompany();
    EXPECT_EQ(failureOf([&] { connection->call("CommitTrans"); }).number, sandbox::kNoTransaction);
    EXPECT_EQ(failureOf([&] { connection->call("RollbackTrans"); }).number, sandbox::kNoTransaction);
    connection->call("BeginTrans");
    const Failure nested = failureOf([&] { connection->call("BeginTrans"); });
    EXPECT_EQ(nested.number, -2147168237);
    EXPECT_EQ(nested.text, "Cannot start more transactions on this session.");
    connection->call("Execute", kInsert);
    EXPECT_EQ(failureOf([&] { connection->call("Close"); }).number, sandbox::kInTransaction);
    connection->call("RollbackTrans");
    EXPECT_EQ(rows(*connection, kCount), "1");
    connection->call("BeginTrans");
    connection->call("Execute", kInsert);
    EXPECT_NE(failureOf([&] { connection->call("Execute", kInsert); }).number, 0);
    connection->call("CommitTrans");
    EXPECT_EQ(rows(*connection, kCount), "2") << "a refused statement leaves the others of its transaction";
}

TEST(Connection, IsOccupiedUntilAForwardOnlyResultIsReadOrClosed) {
    auto connection = smallCompany();
    const auto begins = [&] { return failureOf([&] { connection->call("BeginTrans"); }).text; };
    const auto asks = [&] { return failureOf([&] { connection->call("Execute", kCount); }).text; };
    const auto reads = [&] { return opened(connection, "select shopid from aShops", 0, 1); };
    RecordsetPtr shops = reads();
    EXPECT_EQ(begins(), "Cannot start transaction while in firehose mode.");
    EXPECT_EQ(asks(), "no error");
    EXPECT_EQ(connection->moreConnections(), 1);
    while (!basic::cBool(shops->get("EOF"))) shops->call("MoveNext");
    EXPECT_EQ(begins(), "no error");
    const std::vector<std::function<void()>> waysToEnd{
        [&] { shops->call("Close"); }, [&] { shops->call("GetString", 2, -1, ",", ";", ""); }, [&] { shops.reset(); }};
    for (const auto& ends : waysToEnd) {
        shops = reads();
        EXPECT_EQ(asks(), "Cannot create new connection because in manual or distributed transaction mode.");
        ends();
        EXPECT_EQ(asks(), "no error");
    }
    EXPECT_EQ(connection->moreConnections(), 1);
}

class TwoUsers : public testing::Test {
protected:
    void SetUp() override {
        const std::string path = freshPath("shared.db");
        first = smallCompany(path);
        second = sandbox::openConnection(path);
    }
    ConnectionPtr first, second;
};

TEST_F(TwoUsers, SeeOneAnothersWorkOnlyWhenItIsCommitted) {
    first->call("BeginTrans");
    first->call("Execute", kInsert);
    EXPECT_EQ(rows(*first, kCount), "2");
    EXPECT_EQ(rows(*second, kCount), "1");
    first->call("CommitTrans");
    EXPECT_EQ(rows(*second, kCount), "2");
    first->call("BeginTrans");
    first->call("Execute", "delete acity");
    first.reset();
    EXPECT_EQ(rows(*second, kCount), "2") << "a connection that ends rolls back";
}

TEST_F(TwoUsers, AnOpenTransactionThatOnlyReadBlocksNobody) {
    first->call("BeginTrans");
    EXPECT_EQ(rows(*first, kCount), "1");
    second->call("BeginTrans");
    second->call("Execute", kInsert);
    second->call("CommitTrans");
    EXPECT_EQ(rows(*first, kCount), "2") << "what others commit is seen inside a transaction too";
    first->call("Execute", "insert into acity values (3, 'Hill', 1)");
    first->call("CommitTrans");
    EXPECT_EQ(rows(*second, kCount), "3");
}

TEST_F(TwoUsers, AStatementSentAgainIsAnsweredAnew) {
    const std::string insert = "insert into mesRequesttoShopDetail values (900,1,' 7 ',2,'1.5','0',0)";
    const std::string remove = "delete mesRequesttoShopDetail where srdrequestid = 900";
    const std::string select = "select srdgoodqty from mesRequesttoShopDetail where srdrequestid = 900";
    const auto sends = [](const ConnectionPtr& who, const std::string& statement) {
        return failureOf([&] { who->call("Execute", statement); });
    };
    EXPECT_EQ(rows(*first, select), "");
    EXPECT_EQ(sends(second, insert).text, "no error");
    EXPECT_EQ(rows(*first, select), "decimal 1.500");
    EXPECT_EQ(sends(second, insert).number, sandbox::kConstraintViolated);
    EXPECT_EQ(sends(first, remove).text, "no error");
    EXPECT_EQ(sends(second, insert).text, "no error") << "the value is converted as it was the first time";
    EXPECT_EQ(rows(*second, select), "decimal 1.500");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(sends(first, "insert into mesRequesttoShopDetail values (901,1,'x',2,'1','0',0)").number,
                  sandbox::kConversionError);
    EXPECT_EQ(rows(*first, select), "decimal 1.500");
}

TEST_F(TwoUsers, WaitingForAnothersWriteEndsWithAClearError) {
    first->call("BeginTrans");
    first->call("Execute", kInsert);
    const auto start = std::chrono::steady_clock::now();
    const Failure failure = failureOf([&] { second->call("Execute", "update acity set CityName = 'x'"); });
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(failure.number, sandbox::kServerFailure);
    EXPECT_EQ(failure.text, "Lock request time out period exceeded.");
    EXPECT_GT(waited, std::chrono::milliseconds(1500));
    EXPECT_LT(waited, std::chrono::seconds(10));
    first->call("RollbackTrans");
    second->call("Execute", "update acity set CityName = 'x'");
}

TEST(Connection, ADeadLineFailsEveryCallAndLosesWhatWasOpen) {
    const std::string path = freshPath("shop.db");
    auto connection = smallCompany(path);
    auto records = opened(connection, "select * from acity");
    connection->call("BeginTrans");
    connection->call("Execute", kInsert);
    connection->kill();
    setField(records, "CityName", "x");
    for (auto& call : std::vector<std::function<void()>>{
             [&] { connection->call("Execute", kCount); },
             [&] { connection->call("CommitTrans"); },
             [&] { connection->call("RollbackTrans"); },
             [&] { connection->call("BeginTrans"); },
             [&] { opened(connection, kCount); },
             [&] { records->call("Update"); },
         })
        EXPECT_EQ(failureOf(call).number, -2147467259);
    EXPECT_EQ(rows(*sandbox::openConnection(path), kCount), "1");
}

TEST(Connection, TheTraceHoldsEveryStatementAsSentOnePerLine) {
    const std::string path = freshPath("trace.sql");
    auto connection = smallCompany();
    connection->traceTo(path);
    connection->call("BeginTrans");
    connection->call("Execute", "update acity\r\nset CityName =\n 'a' where  cityid=1");
    connection->call("RollbackTrans");
    failureOf([&] { connection->call("Execute", "wrong one"); });
    EXPECT_EQ(sandbox::readTextFile(path),
              "BEGIN TRANSACTION\nupdate acity set CityName =  'a' where  cityid=1\nROLLBACK "
              "TRANSACTION\nwrong one\n");
}

TEST(Script, AFailedStatementUndoesTheWholeScript) {
    auto connection = smallCompany();
    const Failure failure = failureOf([&] {
        sandbox::runScript(*connection, "insert into acity values (5, 'a;b', 1); -- ; no end\ninsert into acity values "
                                        "(6, 'x', 1)\ngo\ninsert into acity values (6, 'again', 1)");
    });
    EXPECT_EQ(failure.number, sandbox::kConstraintViolated);
    EXPECT_NE(failure.text.find("'again'"), std::string::npos) << failure.text;
    EXPECT_EQ(rows(*connection, kCount), "1");
    sandbox::runScript(*connection, "insert into acity values (5, 'a;b', 1);\r\nGO\r\n;;\ninsert into acity values (6, "
                                    "'GO', 1)\n  go  ");
    EXPECT_EQ(rows(*connection, "select CityName from acity order by cityid"), "'Harbour'|'a;b'|'GO'");
}

TEST(Script, ASchemaThatIsNotUnderstoodIsRefused) {
    for (const char* schema : {"create table t (a int,)", "create table t (a geography)", "create trigger t on x",
                               "create table t (a int) GO", "create table t (a int, primary key (b))",
                               "create view v as select x from t", "create table t (a int)\ngo\ncreate table T (b int)",
                               "create procedure p @a int as select @b", "drop table t"})
        EXPECT_EQ(failureOf([&] { sandbox::createCompany(":memory:", schema); }).number, sandbox::kSyntaxError)
            << schema;
}

} // namespace
