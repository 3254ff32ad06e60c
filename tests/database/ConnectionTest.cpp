// Connections: transactions, two users of one file, dead lines, and the trace.
#include "tests/database/SmallCompany.h"

#include <chrono>

namespace {

using namespace database_test;
using namespace sandbox;

const char* const kCount = "select count(*) from acity";
const char* const kInsert = "insert into acity values (2, 'Lakeside', 1)";

TEST(Connection, ExecutesAndSaysWhatHappened) {
    const auto connection = smallCompany();
    Value affected;
    const Value result = connection->call("Execute", kInsert, Value::byReference(affected));
    EXPECT_EQ(shown(affected), "1");
    EXPECT_EQ(shown(result.object().get("State")), "0") << "a statement without rows gives a closed record set";
    const automation::ObjectPtr records = connection->call("Execute", kCount).objectPtr();
    EXPECT_EQ(shown(records->call("Fields", 0).object().get("")), "2");
    records->call("Close");
    EXPECT_EQ(errorOfCall(connection, "Execute", "select nothing"), kSyntaxError);
    EXPECT_EQ(errorOfCall(connection, "Execute"), automation::kWrongNumberOfArguments);
    // The trace holds every statement as it was sent, one a line.
    const std::string path = support::scratch("trace.sql");
    connection->traceTo(path);
    connection->call("BeginTrans");
    connection->call("Execute", "update acity\r\nset CityName =\n 'a' where  cityid=1");
    connection->call("RollbackTrans");
    EXPECT_EQ(errorOfCall(connection, "Execute", "wrong one"), kSyntaxError);
    EXPECT_EQ(readTextFile(path), "BEGIN TRANSACTION\nupdate acity set CityName =  'a' where  cityid=1\n"
                                  "ROLLBACK TRANSACTION\nwrong one\n");
}

TEST(Connection, OpensByConnectionStringAndCloses) {
    const std::string path = support::scratch("shop.db");
    smallCompany(path)->call("Close");
    const auto connection = std::make_shared<Connection>();
    EXPECT_EQ(errorOfCall(connection, "Execute", kCount), kObjectClosed);
    EXPECT_EQ(errorOfCall(connection, "Open", path + ".no"), kServerFailure);
    EXPECT_FALSE(std::filesystem::exists(path + ".no")) << "opening must not make a file";
    connection->call("Open", "Provider=Sandbox; data source = " + path + ";User ID=sa");
    EXPECT_EQ(shown(connection->get("State")), "1");
    EXPECT_EQ(errorOfCall(connection, "Open", path), kObjectOpen);
    connection->call("Close");
    connection->call("Open");
    EXPECT_EQ(shown(connection->get("State")), "1");
    EXPECT_EQ(errorOf([&] { createCompany(path, schemaText()); }), kServerFailure)
        << "an existing company is never overwritten";
}

TEST(Connection, OneTransactionAtATime) {
    const auto connection = smallCompany();
    for (const char* end : {"CommitTrans", "RollbackTrans"}) EXPECT_EQ(errorOfCall(connection, end), kNoTransaction);
    connection->call("BeginTrans");
    const Failure nested = failureOf([&] { connection->call("BeginTrans"); });
    EXPECT_EQ(nested.number, -2147168237);
    EXPECT_EQ(nested.text, "Cannot start more transactions on this session.");
    connection->call("Execute", kInsert);
    EXPECT_EQ(errorOfCall(connection, "Close"), kInTransaction);
    connection->call("RollbackTrans");
    EXPECT_EQ(rows(*connection, kCount), "1");
    connection->call("BeginTrans");
    connection->call("Execute", kInsert);
    EXPECT_NE(errorOfCall(connection, "Execute", kInsert), 0);
    connection->call("CommitTrans");
    EXPECT_EQ(rows(*connection, kCount), "2") << "a refused statement leaves the others of its transaction";
}

TEST(Connection, IsOccupiedUntilAForwardOnlyResultIsReadOrClosed) {
    const auto connection = smallCompany();
    const auto begins = [&] { return failureOf([&] { connection->call("BeginTrans"); }).text; };
    const auto asks = [&] { return failureOf([&] { connection->call("Execute", kCount); }).text; };
    const auto reads = [&] { return opened(connection, "select shopid from aShops", 0, 1); };
    RecordsetPtr shops = reads();
    EXPECT_EQ(begins(), "Cannot start transaction while in firehose mode.");
    EXPECT_EQ(asks(), "no error");
    EXPECT_EQ(connection->moreConnections(), 1);
    while (!basic::cBool(shops->get("EOF"))) shops->call("MoveNext");
    EXPECT_EQ(begins(), "no error");
    for (const auto& ends : std::initializer_list<std::function<void()>>{
             [&] { shops->call("Close"); }, [&] { shops->call("GetString", 2, -1, ",", ";", ""); },
             [&] { shops.reset(); }}) {
        shops = reads();
        EXPECT_EQ(asks(), "Cannot create new connection because in manual or distributed transaction mode.");
        ends();
        EXPECT_EQ(asks(), "no error");
    }
    EXPECT_EQ(connection->moreConnections(), 1);
}

class TwoUsers : public testing::Test {
protected:
    const support::TestFolder folder;
    ConnectionPtr first = smallCompany(folder.file("shared.db")), second = openConnection(folder.file("shared.db"));
};

TEST_F(TwoUsers, SeeOneAnothersWorkOnlyWhenItIsCommitted) {
    first->call("BeginTrans");
    first->call("Execute", kInsert);
    EXPECT_EQ(rows(*first, kCount), "2");
    EXPECT_EQ(rows(*second, kCount), "1");
    first->call("CommitTrans");
    EXPECT_EQ(rows(*second, kCount), "2");
    first->call("BeginTrans");
    EXPECT_EQ(rows(*first, kCount), "2");
    // An open transaction that only reads blocks nobody, and sees what others commit.
    second->call("BeginTrans");
    second->call("Execute", "insert into acity values (3, 'Hill', 1)");
    second->call("CommitTrans");
    EXPECT_EQ(rows(*first, kCount), "3");
    first->call("Execute", "insert into acity values (4, 'Dale', 1)");
    first->call("CommitTrans");
    EXPECT_EQ(rows(*second, kCount), "4");
    first->call("BeginTrans");
    first->call("Execute", "delete acity");
    first.reset();
    EXPECT_EQ(rows(*second, kCount), "4") << "a connection that ends rolls back";
}

TEST_F(TwoUsers, WaitingForAnothersWriteEndsWithAClearError) {
    const char* const update = "update acity set CityName = 'x'";
    first->call("BeginTrans");
    first->call("Execute", kInsert);
    const auto start = std::chrono::steady_clock::now();
    const Failure failure = failureOf([&] { second->call("Execute", update); });
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(failure.number, kServerFailure);
    EXPECT_EQ(failure.text, "Lock request time out period exceeded.");
    EXPECT_GT(waited, std::chrono::milliseconds(1500));
    EXPECT_LT(waited, std::chrono::seconds(10));
    first->call("RollbackTrans");
    second->call("Execute", update);
}

TEST_F(TwoUsers, ADeadLineFailsEveryCallAndLosesWhatWasOpen) {
    const auto records = opened(first, "select * from acity");
    first->call("BeginTrans");
    first->call("Execute", kInsert);
    first->kill();
    setField(records, "CityName", "x");
    for (const char* member : {"CommitTrans", "RollbackTrans", "BeginTrans"})
        EXPECT_EQ(errorOfCall(first, member), kServerFailure) << member;
    EXPECT_EQ(errorOfCall(first, "Execute", kCount), kServerFailure);
    EXPECT_EQ(errorOfCall(records, "Update"), kServerFailure);
    EXPECT_EQ(errorOf([&] { opened(first, kCount); }), -2147467259);
    EXPECT_EQ(rows(*second, kCount), "1");
}

TEST(Script, AFailedStatementUndoesTheWholeScript) {
    const auto connection = smallCompany();
    const Failure failure = failureOf([&] {
        runScript(*connection, "insert into acity values (5, 'a;b', 1); -- ; no end\n"
                               "insert into acity values (6, 'x', 1)\ngo\ninsert into acity values (6, 'again', 1)");
    });
    EXPECT_EQ(failure.number, kConstraintViolated);
    EXPECT_NE(failure.text.find("'again'"), std::string::npos) << failure.text;
    EXPECT_EQ(rows(*connection, kCount), "1");
    runScript(*connection, "insert into acity values (5, 'a;b', 1);\r\nGO\r\n;;\n"
                           "insert into acity values (6, 'GO', 1)\n  go  ");
    EXPECT_EQ(rows(*connection, "select CityName from acity order by cityid"), "'Harbour'|'a;b'|'GO'");
    for (const char* schema : {"create table t (a int,)", "create table t (a geography)", "create trigger t on x",
                               "create table t (a int) GO", "create table t (a int, primary key (b))",
                               "create view v as select x from t", "create table t (a int)\ngo\ncreate table T (b int)",
                               "create procedure p @a int as select @b", "drop table t"})
        EXPECT_EQ(errorOf([&] { createCompany(":memory:", schema); }), kSyntaxError) << schema;
}

} // namespace
