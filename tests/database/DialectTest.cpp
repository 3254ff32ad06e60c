// What the server's dialect means, statement by statement.
#include "tests/database/SmallCompany.h"

namespace {

using namespace database_test;
using namespace sandbox;

TEST(Dialect, ValuesFollowTheServer) {
    const auto connection = smallCompany();
    const std::pair<const char*, const char*> cases[] = {
        // clang-format off
        {"select len('ab  '), len('  ab'), len(N'\u00e4\u20ac'), len(12345)", "2,4,2,5"},
        {"select right('abc', 2), right('abc', 9), 'it''s', N'fine'", "'bc','abc','it's','fine'"},
        {"select substring('abcdef', 2, 3), substring('abc', 0, 2), substring('abc', 3, 9), substring('abc', 9, 1)",
         "'bcd','a','c',''"},
        {"select upper('a\u00e4'), ltrim('  a '), rtrim(' a  ')", "'A\u00c4','a ',' a'"},
        {"select replace('To Shop, shop', 'SHOP', 'Branch'), replace('aaa', 'a', ''), replace('abc', '', 'x')",
         "'To Branch, Branch','','abc'"},
        {"select case when 'abc' in ('x', 'ABC ') then 'in' end", "'in'"},
        {"select convert(int, '12'), convert(int, ' -7 '), convert(int, ''), convert(int, '+5')", "12,-7,0,5"},
        {"select convert(int, 2.9), convert(int, -2.9), convert(int, itemrate) from aitem", "2,-2,1|2,-2,2"},
        {"select itemid from aitem where itemid = 1e2", "100"},
        {"select 1 + 2 - 5, 1.10, NULL + 1, 99999999999", "-2,decimal 1.1,NULL,decimal 99999999999"},
        {"select - -3, -(1.5)", "3,decimal -1.5"}, {"select isnull(NULL, 3), isnull(NULL, 'x')", "3,'x'"},
        {"select case 2 when 1 then 'one' when 2 then 'two' end, case 3 when 1 then 'one' end", "'two',NULL"},
        {"select srhrequestid from mesRequesttoShopHeader where srhrequestdate = '2024-03-10'", "1"},
        {"select count(*), max(itemrate), min(itemcode) from aitem", "2,money 20000,'A-100'"},
        {"select sum(srdgoodqty) from mesRequesttoShopDetail", "decimal 123456789012345680.125"},
        {"select sum(itemid), min(itemid) from aitem where itemid < 0", "NULL,NULL"},
        {"select shopid, count(*) n from ashopitemdetail group by shopid order by n", "2,1|1,2"},
        {"select itemcategoryid from ashopitemcategory where shopid=1 intersect "
         "select itemcategoryid from ashopitemcategory where shopid=2", "10"},
        {"select top 2 shopid from aShops order by shopname", "3|4"},
        {"select x.n + 1 from (select max(itemid) n from aitem) x", "102"},
        {"select s.shopid, d.itemid from aShops s inner join ashopitemdetail d on d.shopid = s.shopid "
         "where s.shopid > 1", "2,100"},
        {"select shopid from aShops s where (select count(*) from ashopitemdetail d where d.shopid = s.shopid) > 0 "
         "and shopid not in (2)", "1"},
        {"select shopid as id from aShops s where s.shopname = 'harbour' -- a remark\n", "1"},
        // clang-format on
    };
    for (const auto& [statement, expected] : cases) {
        SCOPED_TRACE(statement);
        std::string given;
        EXPECT_NO_THROW(given = rows(*connection, statement));
        EXPECT_EQ(given, expected);
    }
    const auto holds = [&](const std::string& condition) {
        return rows(*connection, "select case when " + condition + " then 1 else 0 end");
    };
    // Case and blanks at the end do not count when comparing.
    for (const char* yes :
         {"'abc' = 'ABC  '", "'a' < 'B'", "N'\u00e4rger' = N'\u00c4RGER'", "'abc' like 'A%'", "'abc' like '_b[a-d]'",
          "'a%c' like 'a[%]c'", "'aXbXc' like '%x%X%'", "'abc' not like 'b%'", "0.10 = .1", "9.5 < 10", "NULL is null"})
        EXPECT_EQ(holds(yes), "1") << yes;
    for (const char* no : {"'  a' = 'a'", "'abc' like '_b[^a-d]'", "NULL = NULL"}) EXPECT_EQ(holds(no), "0") << no;
    // Numeric is more than what converts.
    for (const char* yes : {"'12'", "' 12 '", "'-1.5'", "'1e3'", "'1,000'", "'-'", "'$'", "'.'", "'+$1.5'", "5"})
        EXPECT_EQ(holds("isnumeric(" + std::string(yes) + ") = 1"), "1") << yes;
    for (const char* no : {"''", "' '", "'12a'", "'e3'", "'1.2.3'", "NULL"})
        EXPECT_EQ(holds("isnumeric(" + std::string(no) + ") = 0"), "1") << no;
}

TEST(Dialect, WhatTheServerRefusesIsRefusedInItsWords) {
    const auto connection = smallCompany();
    const auto expectRefusal = [&](const std::string& statement, long number, const std::string& text) {
        SCOPED_TRACE(statement);
        const Failure failure = failureOf([&] { connection->database().execute(statement); });
        EXPECT_EQ(failure.number, number);
        EXPECT_EQ(failure.text, text);
        EXPECT_EQ(failure.source, "Sandbox database");
    };
    // What no statement uses is not known here.
    const std::pair<const char*, const char*> unexpected[] = {
        // clang-format off
        {"select 1 fom aitem x", "aitem"}, {"select 1 ! 2", "!"}, {"select 2 * 3", "*"},
        {"select [itemid] from aitem", "["}, {"select 1 union select 2", "union"},
        {"select a.itemid from aitem a left join aUnit u on 1 = 1", "left"},
        {"select shopid from aShops group by shopid having 1 = 1", "having"},
        {"select shopid from aShops where shopid between 1 and 2", "between"},
        {"select itemid from aitem order by itemid desc", "desc"}, {"select convert(varchar(9), 1)", "varchar"},
        {"select convert(int, '1', 103)", ","}, {"select count(distinct itemid) from aitem", "itemid"},
        {"delete from aitem", "from"}, {"insert acity values (1)", "acity"}, {"create table t (a int)", "t"},
        {"drop table aitem", "aitem"}, {"select 1; delete aitem", ";"},
        // clang-format on
    };
    for (const auto& [statement, word] : unexpected)
        expectRefusal(statement, kSyntaxError, "Incorrect syntax near '" + std::string(word) + "'.");
    const std::pair<const char*, const char*> wrong[] = {
        // clang-format off
        {"selct 1", "Could not find stored procedure 'selct'."},
        {"select", "Incorrect syntax: the statement ends too early."},
        {"", "Incorrect syntax: the statement ends too early."},
        {"select 'abc", "Unclosed quotation mark before the character string 'abc'."},
        {"select itemcode from aitem where itemcode='O'Neil'",
         "Unclosed quotation mark before the character string ''."},
        {"select itemid from aitem order by 1", "A position in ORDER BY is not known here."},
        {"select count(itemid) from aitem", "Of count, only count(*) is known here."},
        {"select 'a' + 'b'", "Operator + is not known here for varchar."},
        {"select 1.5 + 1", "Operator + is not known here for numeric."},
        {"select getdate() + 1", "Operator + is not known here for datetime."},
        {"select a from nowhere", "Invalid object name 'nowhere'."},
        {"select nothing from aitem", "Invalid column name 'nothing'."},
        {"select x.itemid from aitem",
         "The column prefix 'x' does not match with a table name or alias name used in the query."},
        {"select itemid from aitem, ashopitemdetail", "Ambiguous column name 'itemid'."},
        {"select 1 from aitem, aItem", "Tables or functions 'aitem' and 'aItem' have the same exposed names. "
                                       "Use correlation names to distinguish them."},
        {"select soundex('a')", "'soundex' is not a recognized function name."},
        {"select itemcode, max(itemid) from aitem", "Column 'itemcode' is invalid in the select list because it is "
                                                    "not contained in either an aggregate function or the GROUP BY "
                                                    "clause."},
        {"select * from aitem where max(itemid) = 1", "An aggregate may not appear in the WHERE clause."},
        {"select (select itemid, itemcode from aitem)", "Only one expression can be specified in the select list when "
                                                        "the subquery is not introduced with EXISTS."},
        {"select @x", "Must declare the variable '@x'."},
        {"select itemid from aitem where itemid", "A value stands where a condition is wanted."},
        {"select 1 = 1", "A condition stands where a value is wanted."},
        {"spSellingPriceFetch 1,2",
         "Procedure 'spSellingPriceFetch' expects parameter '@PartyID', which was not supplied."},
        {"spSellingPriceFetch 1,2,3,4,5,6,7,8",
         "Procedure or function spSellingPriceFetch has too many arguments specified."},
        {"delete vwItemDescription", "View 'vwItemDescription' is not updatable here."},
        {"insert into acity values (1, 'x')", "There are more or fewer values than columns. The number of values must "
                                              "match the number of columns."},
        {"insert into acity (cityid, town) values (1, 'x')", "Invalid column name 'town'."},
        // clang-format on
    };
    for (const auto& [statement, text] : wrong) expectRefusal(statement, kSyntaxError, text);
    for (const std::string text : {"1.5", "1e3", "$", "-", "+-1"})
        expectRefusal("select convert(int, '" + text + "')", kConversionError,
                      "Syntax error converting the varchar value '" + text + "' to a column of data type int.");
    const std::tuple<const char*, long, const char*> failing[] = {
        // clang-format off
        {"select len(getdate())", kConversionError, "A datetime is not converted to text here."},
        {"select itemid from aitem where itemid = (select itemid from aitem)", kServerFailure,
         "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , >, >= or "
         "when the subquery is used as an expression."},
        {"select convert(int, '99999999999')", kDataOverflow,
         "The conversion of the varchar value '99999999999' overflowed an int column."},
        {"select itemid from aitem where itemid = 'abc'", kConversionError,
         "Syntax error converting the varchar value 'abc' to a column of data type int."},
        {"select srhrequestid from mesRequesttoShopHeader where srhrequestdate > '20240231'", kConversionError,
         "Syntax error converting datetime from character string."},
        {"update mesRequesttoShopDetail set srdgoodqty = '9999999999999999999'", kDataOverflow,
         "Arithmetic overflow error converting varchar to data type numeric."},
        {"select 2147483647 + 1", kDataOverflow, "Arithmetic overflow error converting expression to data type int."},
        {"select right('abc', -1)", kServerFailure, "Invalid length parameter passed to the right function."},
        // Rows that a table does not take.
        {"insert into aUnit values (5, 'ELEVEN CHARS', 'x')", kDataOverflow,
         "String or binary data would be truncated."},
        {"update aUnit set UnitCode = 'ELEVEN CHARS'", kDataOverflow, "String or binary data would be truncated."},
        {"insert into aUnit values (1, 'X', 'x')", kConstraintViolated,
         "Violation of PRIMARY KEY constraint 'PK_aUnit'. Cannot insert duplicate key in object 'aUnit'."},
        {"update mesRequesttoShopHeader set srhrequestno = 'gr/9 ' where srhrequestid = 2", kConstraintViolated,
         "Violation of UNIQUE KEY constraint 'UQ_mesRequesttoShopHeader_requestno'. Cannot insert duplicate key in "
         "object 'mesRequesttoShopHeader'."},
        {"insert into aUnit (UnitId) values (9)", kConstraintViolated,
         "Cannot insert the value NULL into column 'UnitCode', table 'aUnit'; column does not allow nulls."},
        {"insert into aUnit values (NULL, 'X', 'x')", kConstraintViolated,
         "Cannot insert the value NULL into column 'UnitId', table 'aUnit'; column does not allow nulls."},
        // clang-format on
    };
    for (const auto& [statement, number, text] : failing) expectRefusal(statement, number, text);
    const auto refused = [&](const std::string& statement) {
        return failureOf([&] { connection->database().execute(statement); }).number;
    };
    EXPECT_EQ(refused("insert into losShopItemShipmentDetail values (100, 1, NULL, 9, 9)"), kConstraintViolated)
        << "the server counts NULL as a value in a unique key";
    const std::string zero("a\0b", 3), open(5000, '('), close(5000, ')');
    std::string sum = "select 1", negations = "select ";
    for (int i = 0; i < 5000; ++i) {
        sum += "+1";
        negations += "- ";
    }
    for (const std::string& statement : {"select 1 " + zero, "select top 1 " + zero, "select " + open + "1" + close,
                                         sum, negations + "1", "select (select " + open})
        EXPECT_EQ(refused(statement), kSyntaxError) << statement.substr(0, 30);
    EXPECT_EQ(basic::cStr(connection->database().execute("select '" + zero + "'").rows[0][0]), zero);
    EXPECT_EQ(rows(*connection, "select count(*) from aUnit where UnitCode = 'PCS'"), "1") << "a refusal changed a row";
}

TEST(Dialect, InsertedValuesTakeTheColumnsTypeAndDefaults) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        // clang-format off
        {"insert into mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid) "
         "values ('9', 1, 'N1   ', '2024/3/5', 2.0)",
         "select srhrequestid, srhrequestno, srhrequestdate, srhused, SRHcancelled, srhTransfinished, updatetime from "
         "mesRequesttoShopHeader where srhrequestid = 9",
         "9,'N1   ',#2024/03/05 00:00:00#,False,False,small 0,NULL"},
        {"insert into aUnit (UnitId, UnitCode, UnitName) values (5, 'TWELVE C    ', 'x')", // blanks may be cut
         "select UnitCode from aUnit where UnitId = 5", "'TWELVE C  '"},
        {"insert into loUserAuditing (CompanyID, ShopID, UserID, InterfaceID, DocumentID, DocumentNo, ActionType, "
         "LoggedTime) values (1,1,7,1507,'1','GR/1','N',getdate())",
         "select AuditID, ActionType from loUserAuditing where SavedTime >= LoggedTime", "1,'N'"},
        // No column of the company has these types, but what a host joins may.
        {"insert into t values ('ab', '1.5', 9007199254740993)",
         "select padded, amount, huge from t where padded = 'ab' and huge > 9007199254740992",
         "'ab  ',double 1.5,decimal 9007199254740993"},
        // clang-format on
    };
    const auto connection =
        createCompany(":memory:", schemaText() + "\ngo\ncreate table t (padded char(4), amount real, huge bigint)");
    for (const auto& [insert, query, expected] : cases) {
        connection->database().execute(insert);
        EXPECT_EQ(rows(*connection, query), expected);
    }
}

} // namespace
