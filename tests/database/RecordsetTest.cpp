// Record sets as a caller of the data access interface meets them.
#include "tests/database/SmallCompany.h"

namespace {

using namespace database_test;

TEST(Recordset, WalksForwardOverItsRows) {
    auto connection = smallCompany();
    auto records = opened(connection, "select shopid, shopname from aShops order by shopid", 0, 1);
    EXPECT_EQ(shown(records->get("State")), "1");
    EXPECT_EQ(shown(records->get("RecordCount")), "-1");
    std::string names;
    for (; !*records->get("EOF").as<bool>(); records->call("MoveNext")) names += shown(field(records, "SHOPNAME"));
    EXPECT_EQ(names, "'Harbour''Station''Airport''Closed'");
    EXPECT_EQ(failureOf([&] { records->call("MoveNext"); }).number, sandbox::kNoCurrentRecord);
    EXPECT_EQ(failureOf([&] { field(records, "shopid"); }).number, sandbox::kNoCurrentRecord);
}

TEST(Recordset, KeysetAndStaticCount) {
    auto connection = smallCompany();
    for (std::int32_t cursor : {1, 3})
        EXPECT_EQ(shown(opened(connection, "select shopid from aShops", cursor, 1)->get("RecordCount")), "4");
    auto empty = opened(connection, "select shopid from aShops where shopid = 99");
    EXPECT_EQ(shown(empty->get("EOF")) + shown(empty->get("RecordCount")), "True0");
}

TEST(Recordset, FieldsAreReachedByNameAndPositionAndFollowTheRow) {
    auto connection = smallCompany();
    auto records = opened(connection, "select shopid, shopname, '' as qty from aShops order by shopid");
    automation::ObjectPtr fields = records->get("Fields").objectPtr();
    EXPECT_EQ(shown(fields->get("Count")), "3");
    automation::ObjectPtr name = fields->call("Item", std::int32_t(1)).objectPtr();
    EXPECT_EQ(shown(name->get("DefinedSize")), "50");
    EXPECT_EQ(shown(name->get("")), "'Harbour'");
    records->call("MoveNext");
    EXPECT_EQ(shown(name->get("Value")), "'Station'");
    EXPECT_EQ(shown(records->call("Fields", "QTY").object().get("")), "''");
    EXPECT_EQ(failureOf([&] { records->call("Fields", "price"); }).number, sandbox::kItemNotFound);
    EXPECT_EQ(failureOf([&] { fields->call("Item", std::int32_t(3)); }).number, sandbox::kItemNotFound);
}

TEST(Recordset, ClosedAndWronglyUsedOnesSaySo) {
    auto connection = smallCompany();
    auto records = std::make_shared<sandbox::Recordset>();
    EXPECT_EQ(shown(records->get("State")), "0");
    EXPECT_EQ(failureOf([&] { records->get("EOF"); }).number, sandbox::kObjectClosed);
    EXPECT_EQ(failureOf([&] { records->call("Close"); }).number, sandbox::kObjectClosed);
    const auto opens = [&](Value on, std::int32_t cursor, std::int32_t lock) {
        return failureOf([&] { records->call("Open", "select 1 n", std::move(on), cursor, lock); }).number;
    };
    EXPECT_EQ(opens(automation::Missing{}, 0, 1), sandbox::kWrongArguments);
    EXPECT_EQ(opens(connection, 5, 1), sandbox::kWrongArguments);
    EXPECT_EQ(opens(connection, 0, 9), sandbox::kWrongArguments);
    EXPECT_EQ(failureOf([&] { records->call("NoSuch"); }).number, automation::kNoSuchMember);
    EXPECT_EQ(opens(connection, 0, 1), 0);
    EXPECT_EQ(shown(field(records, "n")), "1");
    EXPECT_EQ(opens(connection, 0, 1), sandbox::kObjectOpen);
    records->call("Close");
    Value byReference(connection);
    EXPECT_EQ(opens(Value::byReference(byReference), 0, 1), 0);
}

TEST(Recordset, GetStringGivesTheRestAsText) {
    auto connection = smallCompany();
    auto records = opened(connection, "select shopid, futurevarchar, ActiveShop from aShops order by shopid");
    records->call("MoveNext");
    EXPECT_EQ(*records->call("GetString", 2, -1, ";", "\n", "(none)").as<std::string>(),
              "2;bX;True\n3;(none);True\n4;A;False\n");
    EXPECT_EQ(shown(records->get("EOF")), "True");
    EXPECT_EQ(failureOf([&] { records->call("GetString", 2, -1, ";", "\n", ""); }).number, sandbox::kNoCurrentRecord);
}

TEST(Recordset, ANewRecordIsStoredWithTheServersDefaults) {
    auto connection = smallCompany();
    std::vector<std::string> sent;
    connection->trace([&](std::string_view statement) { sent.emplace_back(statement); });
    auto records = opened(connection, "select * from mesRequesttoShopHeader");
    records->call("AddNew");
    setField(records, "srhrequestid", std::int16_t(41));
    setField(records, "srhrequestno", "GR/41");
    setField(records, "srhrequestdate", "2024/03/31");
    setField(records, "SRHrequestTime", automation::Date{45382.5});
    setField(records, "srhshopid", std::int16_t(1));
    setField(records, "srhtoShopid", std::int32_t(2));
    setField(records, "SRHremarks", "it's \xE2\x82\xAC");
    setField(records, "srhTransfinished", std::int16_t(1));
    records->call("Fields", "srhtype").object().put("", "r");
    records->call("Update");
    EXPECT_EQ(shown(field(records, "srhused")), "False");
    records->call("Close");
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[1], "INSERT INTO mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, "
                       "SRHrequestTime, srhtoShopid, SRHremarks, srhTransfinished, srhtype) VALUES (41, 1, 'GR/41', "
                       "'20240331 00:00:00.000', '20240331 12:00:00.000', 2, N'it''s \xE2\x82\xAC', 1, 'r')");
    EXPECT_EQ(rows(*connection,
                   "select srhrequestno, srhrequestdate, SRHrequestTime, SRHremarks, srhused, SRHcancelled, "
                   "srhrecmoduser from mesRequesttoShopHeader where srhrequestid = 41"),
              "'GR/41',#2024/03/31 00:00:00#,#2024/03/31 12:00:00#,'it's \xE2\x82\xAC',False,False,NULL");
}

TEST(Recordset, AnEditWritesTheColumnsThatWerePut) {
    auto connection = smallCompany();
    std::vector<std::string> sent;
    auto records = opened(connection, "select * from  mesRequesttoShopHeader where SRHshopid=1 and sRHrequestID  = 1");
    connection->trace([&](std::string_view statement) { sent.emplace_back(statement); });
    setField(records, "SRHcancelled", std::int32_t(1));
    setField(records, "srhcancelledRemarks", "Ada:wrong");
    setField(records, "srhrequestno", "GR/9");
    EXPECT_EQ(shown(field(records, "SRHcancelled")), "True");
    records->call("Update");
    EXPECT_EQ(sent,
              std::vector<std::string>{"UPDATE mesRequesttoShopHeader SET srhrequestno = 'GR/9', SRHcancelled = 1, "
                                       "srhcancelledRemarks = N'Ada:wrong' WHERE srhrequestid = 1 AND srhshopid = 1"});
    setField(records, "SRHremarks", automation::Null{});
    records->call("Update");
    EXPECT_EQ(rows(*connection,
                   "select SRHcancelled, srhcancelledRemarks, SRHremarks from mesRequesttoShopHeader where "
                   "srhrequestid=1"),
              "True,'Ada:wrong',NULL");
    setField(records, "SRHremarks", "kept by moving on");
    records->call("MoveNext");
    EXPECT_EQ(rows(*connection, "select SRHremarks from mesRequesttoShopHeader where srhrequestid=1"),
              "'kept by moving on'");
}

TEST(Recordset, WhatCannotBeWrittenIsRefused) {
    auto connection = smallCompany();
    const char* header = "select * from mesRequesttoShopHeader where srhrequestid=1";
    auto readOnly = opened(connection, header, 1, 1);
    EXPECT_EQ(failureOf([&] { setField(readOnly, "SRHremarks", "x"); }).number, sandbox::kReadOnly);
    EXPECT_EQ(failureOf([&] { readOnly->call("AddNew"); }).number, sandbox::kReadOnly);
    for (const char* source : {"select distinct shopname from aShops", "select max(shopid) n from aShops",
                               "select s.shopname from aShops s, acity c", "select * from vwItemDescription"})
        EXPECT_EQ(failureOf([&] { opened(connection, source)->call("AddNew"); }).number, sandbox::kReadOnly) << source;

    auto records = opened(connection, header);
    EXPECT_EQ(failureOf([&] { setField(records, "srhNoofDetails", "many"); }).number, sandbox::kWrongValueType);
    EXPECT_EQ(failureOf([&] { setField(records, "srhrequestdate", "soon"); }).number, sandbox::kWrongValueType);
    EXPECT_EQ(failureOf([&] { setField(records, "srhTransfinished", std::int32_t(40000)); }).number,
              sandbox::kMultipleStepErrors);
    EXPECT_EQ(failureOf([&] { setField(records, "SRHremarks", std::string(256, 'x')); }).number,
              sandbox::kMultipleStepErrors);
    setField(records, "SRHremarks", std::string(255, 'x'));
    records->call("Update");

    auto keyless = opened(connection, "select shopname from aShops where shopid=1");
    setField(keyless, "shopname", "Pier");
    EXPECT_EQ(failureOf([&] { keyless->call("Update"); }).number, sandbox::kServerFailure);
}

TEST(Recordset, ARowThatAnotherUserChangedOrRemovedIsNotOverwritten) {
    auto connection = smallCompany();
    auto open = [&] { return opened(connection, "select * from mesRequesttoShopHeader where srhrequestid=1"); };
    auto changed = open();
    setField(changed, "SRHremarks", "mine");
    connection->database().execute("update mesRequesttoShopHeader set SRHremarks = 'theirs' where srhrequestid=1");
    EXPECT_EQ(failureOf([&] { changed->call("Update"); }).number, sandbox::kRowChanged);
    EXPECT_EQ(rows(*connection, "select SRHremarks from mesRequesttoShopHeader where srhrequestid=1"), "'theirs'");
    auto gone = open();
    setField(gone, "SRHremarks", "mine");
    connection->database().execute("delete mesRequesttoShopHeader where srhrequestid=1");
    EXPECT_EQ(failureOf([&] { gone->call("Update"); }).number, sandbox::kRowChanged);
}

} // namespace
