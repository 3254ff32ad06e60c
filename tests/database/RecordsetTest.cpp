// Record sets as a caller of the data access interface meets them.
#include "tests/database/SmallCompany.h"

namespace {

using namespace database_test;
using namespace sandbox;

const char* const kHeader = "select * from mesRequesttoShopHeader where srhrequestid=1";

class Records : public testing::Test {
protected:
    const ConnectionPtr connection = smallCompany();

    void puts(const RecordsetPtr& records, std::initializer_list<std::pair<const char*, Value>> values) {
        for (const auto& [name, value] : values) setField(records, name, value);
    }
    /// Of the first request.
    std::string stored(const std::string& columns) {
        return rows(*connection, "select " + columns + " from mesRequesttoShopHeader where srhrequestid=1");
    }
};

TEST_F(Records, WalkForwardOverTheirRows) {
    const auto records = opened(connection, "select shopid, shopname from aShops order by shopid", 0, 1);
    EXPECT_EQ(shown(records->get("State")), "1");
    EXPECT_EQ(shown(records->get("RecordCount")), "-1");
    std::string names;
    for (; !*records->get("EOF").as<bool>(); records->call("MoveNext")) names += shown(field(records, "SHOPNAME"));
    EXPECT_EQ(names, "'Harbour''Station''Airport''Closed'");
    EXPECT_EQ(errorOfCall(records, "MoveNext"), kNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { field(records, "shopid"); }), kNoCurrentRecord);
    for (const std::int32_t cursor : {1, 3}) // keyset and static ones count
        EXPECT_EQ(shown(opened(connection, "select shopid from aShops", cursor, 1)->get("RecordCount")), "4");
    const auto empty = opened(connection, "select shopid from aShops where shopid = 99");
    EXPECT_EQ(shown(empty->get("EOF")) + shown(empty->get("RecordCount")), "True0");
}

TEST_F(Records, FieldsAreReachedByNameAndPositionAndFollowTheRow) {
    const auto records =
        opened(connection, "select shopid, futurevarchar, ActiveShop, '' as qty from aShops order by shopid");
    const automation::ObjectPtr fields = records->get("Fields").objectPtr();
    EXPECT_EQ(shown(fields->get("Count")), "4");
    const automation::ObjectPtr name = fields->call("Item", 1).objectPtr();
    EXPECT_EQ(shown(name->get("DefinedSize")), "20");
    EXPECT_EQ(shown(name->get("")), "'A1'");
    records->call("MoveNext");
    EXPECT_EQ(shown(name->get("Value")), "'bX'");
    EXPECT_EQ(shown(field(records, "QTY")), "''");
    EXPECT_EQ(errorOfCall(records, "Fields", "price"), kItemNotFound);
    EXPECT_EQ(errorOfCall(fields, "Item", 4), kItemNotFound);
    EXPECT_EQ(*records->call("GetString", 2, -1, ";", "\n", "(none)").as<std::string>(),
              "2;bX;True;\n3;(none);True;\n4;A;False;\n");
    EXPECT_EQ(shown(records->get("EOF")), "True");
    EXPECT_EQ(errorOfCall(records, "GetString", 2, -1, ";", "\n", ""), kNoCurrentRecord);
}

TEST_F(Records, ClosedAndWronglyUsedOnesSaySo) {
    const auto records = std::make_shared<Recordset>();
    EXPECT_EQ(shown(records->get("State")), "0");
    for (const char* member : {"EOF", "Close"}) EXPECT_EQ(errorOfCall(records, member), kObjectClosed) << member;
    const auto opens = [&](const Value& on, int cursor, int lock) {
        return errorOfCall(records, "Open", "select 1 n", on, cursor, lock);
    };
    EXPECT_EQ(opens(automation::Missing{}, 0, 1), kWrongArguments);
    EXPECT_EQ(opens(connection, 5, 1), kWrongArguments);
    EXPECT_EQ(opens(connection, 0, 9), kWrongArguments);
    EXPECT_EQ(errorOfCall(records, "NoSuch"), automation::kNoSuchMember);
    EXPECT_EQ(opens(connection, 0, 1), 0);
    EXPECT_EQ(shown(field(records, "n")), "1");
    EXPECT_EQ(opens(connection, 0, 1), kObjectOpen);
    records->call("Close");
    Value byReference(connection);
    EXPECT_EQ(opens(Value::byReference(byReference), 0, 1), 0);
}

TEST_F(Records, ANewOneHasTheServersDefaultsAndAnEditWritesWhatWasPut) {
    connection->database().execute("delete mesRequesttoShopHeader where srhrequestid=1");
    const auto records = opened(connection, kHeader);
    std::string sent;
    connection->trace([&](std::string_view statement) { sent = statement; });
    records->call("AddNew");
    puts(records, {{"srhrequestid", std::int16_t(1)}, {"srhshopid", 1}, {"srhtoShopid", 2}, {"srhrequestno", "GR/1"}});
    puts(records, {{"srhrequestdate", "2024/03/31"}, {"SRHremarks", "it's \u20ac"}});
    records->call("Update");
    EXPECT_EQ(sent, "INSERT INTO mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, "
                    "srhtoShopid, SRHremarks) VALUES (1, 1, 'GR/1', '20240331 00:00:00.000', 2, N'it''s \u20ac')");
    EXPECT_EQ(shown(field(records, "srhused")), "False");
    EXPECT_EQ(stored("srhrequestdate, SRHremarks, srhused, srhrecmoduser"),
              "#2024/03/31 00:00:00#,'it's \u20ac',False,NULL");
    puts(records, {{"SRHcancelled", 1}, {"srhcancelledRemarks", "Ada:wrong"}, {"srhrequestno", "GR/1"}});
    EXPECT_EQ(shown(field(records, "SRHcancelled")), "True");
    records->call("Update");
    EXPECT_EQ(sent, "UPDATE mesRequesttoShopHeader SET srhrequestno = 'GR/1', SRHcancelled = 1, "
                    "srhcancelledRemarks = N'Ada:wrong' WHERE srhrequestid = 1 AND srhshopid = 1");
    setField(records, "SRHremarks", automation::Null{});
    records->call("Update");
    EXPECT_EQ(stored("SRHcancelled, srhcancelledRemarks, SRHremarks"), "True,'Ada:wrong',NULL");
    setField(records, "SRHremarks", "kept by moving on");
    records->call("MoveNext");
    EXPECT_EQ(stored("SRHremarks"), "'kept by moving on'");
}

TEST_F(Records, WhatCannotBeWrittenIsRefused) {
    const auto errorOfField = [](const RecordsetPtr& records, const char* name, const Value& value) {
        return errorOfPut(records->call("Fields", name).objectPtr(), "Value", value);
    };
    const auto readOnly = opened(connection, kHeader, 1, 1);
    EXPECT_EQ(errorOfField(readOnly, "SRHremarks", "x"), kReadOnly);
    EXPECT_EQ(errorOfCall(readOnly, "AddNew"), kReadOnly);
    for (const char* source : {"select distinct shopname from aShops", "select max(shopid) n from aShops",
                               "select s.shopname from aShops s, acity c", "select * from vwItemDescription"})
        EXPECT_EQ(errorOfCall(opened(connection, source), "AddNew"), kReadOnly) << source;
    const auto records = opened(connection, kHeader);
    EXPECT_EQ(errorOfField(records, "srhNoofDetails", "many"), kWrongValueType);
    EXPECT_EQ(errorOfField(records, "srhrequestdate", "soon"), kWrongValueType);
    EXPECT_EQ(errorOfField(records, "srhTransfinished", 40000), kMultipleStepErrors);
    EXPECT_EQ(errorOfField(records, "SRHremarks", std::string(256, 'x')), kMultipleStepErrors);
    setField(records, "SRHremarks", std::string(255, 'x'));
    records->call("Update");
    const auto keyless = opened(connection, "select shopname from aShops where shopid=1");
    setField(keyless, "shopname", "Pier");
    EXPECT_EQ(errorOfCall(keyless, "Update"), kServerFailure);
}

TEST_F(Records, ARowThatAnotherUserChangedOrRemovedIsNotOverwritten) {
    for (const auto& [change, left] :
         {std::pair("update mesRequesttoShopHeader set SRHremarks = 'theirs' where srhrequestid=1", "'theirs'"),
          {"delete mesRequesttoShopHeader where srhrequestid=1", ""}}) {
        const auto records = opened(connection, kHeader);
        setField(records, "SRHremarks", "mine");
        connection->database().execute(change);
        EXPECT_EQ(errorOfCall(records, "Update"), kRowChanged);
        EXPECT_EQ(stored("SRHremarks"), left);
    }
}

} // namespace
