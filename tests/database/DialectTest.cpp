// What the server's dialect means, statement by statement.
#include "tests/database/SmallCompany.h"

namespace {

using namespace database_test;

struct Case {
    const char* statement;
    const char* expected;
};

TEST(Dialect, ValuesFollowTheServer) {
    const Case kCases[] = {
        // Text: case and blanks at the end do not count when comparing.
        {"select case when 'abc' = 'ABC  ' then 1 else 0 end", "1"},
        {"select case when 'a' < 'B' then 1 else 0 end", "1"},
        {"select case when '  a' = 'a' then 1 else 0 end", "0"},
        {"select case when N'\xC3\xA4rger' = N'\xC3\x84RGER' then 1 else 0 end", "1"},
        {"select case when 'abc' in ('x', 'ABC ') then 'in' end", "'in'"},
        {"select case when 'abc' like 'A%' then 1 else 0 end", "1"},
        {"select case when 'abc' like '_b[a-d]' then 1 else 0 end", "1"},
        {"select case when 'abc' like '_b[^a-d]' then 1 else 0 end", "0"},
        {"select case when 'a%c' like 'a[%]c' then 1 else 0 end", "1"},
        {"select case when 'aXbXc' like '%x%X%' then 1 else 0 end", "1"},
        {"select case when 'abc' not like 'b%' then 1 else 0 end", "1"},
        {"select len('ab  ')", "2"},
        {"select len('  ab')", "4"},
        {"select len(N'\xC3\xA4\xE2\x82\xAC')", "2"},
        {"select len(12345)", "5"},
        {"select right('abc', 2), right('abc', 9)", "'bc','abc'"},
        {"select substring('abcdef', 2, 3), substring('abc', 0, 2), substring('abc', 3, 9), substring('abc', 9, 1)",
         "'bcd','a','c',''"},
        {"select upper('a\xC3\xA4'), ltrim('  a '), rtrim(' a  ')", "'A\xC3\x84','a ',' a'"},
        {"select replace('To Shop, shop', 'SHOP', 'Branch'), replace('aaa', 'a', ''), replace('abc', '', 'x')",
         "'To Branch, Branch','','abc'"},
        {"select 'it''s', N'fine'", "'it's','fine'"},
        // isnumeric is wider than convert.
        {"select isnumeric('12'), isnumeric(' 12 '), isnumeric('-1.5'), isnumeric('1e3'), isnumeric('1,000')",
         "1,1,1,1,1"},
        {"select isnumeric('-'), isnumeric('$'), isnumeric('.'), isnumeric('+$1.5')", "1,1,1,1"},
        {"select isnumeric(''), isnumeric(' '), isnumeric('12a'), isnumeric('e3'), isnumeric('1.2.3'), isnumeric(NULL)",
         "0,0,0,0,0,0"},
        {"select isnumeric(5)", "1"},
        // Conversions.
        {"select convert(int, '12'), convert(int, ' -7 '), convert(int, ''), convert(int, '+5')", "12,-7,0,5"},
        {"select convert(int, 2.9), convert(int, -2.9), convert(int, itemrate) from aitem", "2,-2,1|2,-2,2"},
        {"select itemid from aitem where itemid = 1e2", "100"},
        // Numbers.
        {"select 1 + 2 - 5, 1.10, NULL + 1", "-2,decimal 1.1,NULL"},
        {"select 99999999999", "decimal 99999999999"},
        {"select case when 0.10 = .1 then 1 else 0 end, case when 9.5 < 10 then 1 else 0 end", "1,1"},
        {"select - -3, -(1.5)", "3,decimal -1.5"},
        // NULL.
        {"select isnull(NULL, 3), isnull(NULL, 'x')", "3,'x'"},
        {"select case when NULL = NULL then 1 else 0 end, case when NULL is null then 1 else 0 end", "0,1"},
        {"select case 2 when 1 then 'one' when 2 then 'two' end, case 3 when 1 then 'one' end", "'two',NULL"},
        // Dates.
        {"select srhrequestid from mesRequesttoShopHeader where srhrequestdate = '2024-03-10'", "1"},
        // Groups and sets.
        {"select count(*), max(itemrate), min(itemcode) from aitem", "2,money 20000,'A-100'"},
        {"select sum(srdgoodqty) from mesRequesttoShopDetail", "decimal 123456789012345680.125"},
        {"select sum(itemid), min(itemid) from aitem where itemid < 0", "NULL,NULL"},
        {"select shopid, count(*) n from ashopitemdetail group by shopid order by n", "2,1|1,2"},
        {"select itemcategoryid from ashopitemcategory where shopid=1 intersect select itemcategoryid from "
         "ashopitemcategory where shopid=2",
         "10"},
        {"select top 2 shopid from aShops order by shopname", "3|4"},
        {"select x.n + 1 from (select max(itemid) n from aitem) x", "102"},
        {"select s.shopid, d.itemid from aShops s inner join ashopitemdetail d on d.shopid = s.shopid where s.shopid > 1",
         "2,100"},
        {"select shopid from aShops s where (select count(*) from ashopitemdetail d where d.shopid = s.shopid) > 0 "
         "and shopid not in (2)",
         "1"},
        {"select shopid as id from aShops s where s.shopname = 'harbour' -- a remark\n", "1"},
    };
    auto connection = smallCompany();
    for (const Case& one : kCases) {
        SCOPED_TRACE(one.statement);
        std::string given;
        EXPECT_NO_THROW(given = rows(*connection, one.statement));
        EXPECT_EQ(given, one.expected);
    }
}

TEST(Dialect, WhatTheServerRefusesIsRefusedInItsWords) {
    struct Refusal {
        const char* statement;
        long number;
        const char* text;
    };
    using namespace sandbox;
    using namespace std::string_literals;
    const Refusal kCases[] = {
        {"selct 1", kSyntaxError, "Could not find stored procedure 'selct'."},
        {"select 1 fom aitem x", kSyntaxError, "Incorrect syntax near 'aitem'."},
        {"select", kSyntaxError, "Incorrect syntax: the statement ends too early."},
        {"", kSyntaxError, "Incorrect syntax: the statement ends too early."},
        {"select 'abc", kSyntaxError, "Unclosed quotation mark before the character string 'abc'."},
        {"select itemcode from aitem where itemcode='O'Neil'", kSyntaxError,
         "Unclosed quotation mark before the character string ''."},
        {"select 1 ! 2", kSyntaxError, "Incorrect syntax near '!'."},
        // What no statement uses is not known here.
        {"select 2 * 3", kSyntaxError, "Incorrect syntax near '*'."},
        {"select [itemid] from aitem", kSyntaxError, "Incorrect syntax near '['."},
        {"select 1 union select 2", kSyntaxError, "Incorrect syntax near 'union'."},
        {"select a.itemid from aitem a left join aUnit u on 1 = 1", kSyntaxError, "Incorrect syntax near 'left'."},
        {"select shopid from aShops group by shopid having 1 = 1", kSyntaxError, "Incorrect syntax near 'having'."},
        {"select shopid from aShops where shopid between 1 and 2", kSyntaxError, "Incorrect syntax near 'between'."},
        {"select itemid from aitem order by 1", kSyntaxError, "A position in ORDER BY is not known here."},
        {"select itemid from aitem order by itemid desc", kSyntaxError, "Incorrect syntax near 'desc'."},
        {"select convert(varchar(9), 1)", kSyntaxError, "Incorrect syntax near 'varchar'."},
        {"select convert(int, '1', 103)", kSyntaxError, "Incorrect syntax near ','."},
        {"select count(itemid) from aitem", kSyntaxError, "Of count, only count(*) is known here."},
        {"select count(distinct itemid) from aitem", kSyntaxError, "Incorrect syntax near 'itemid'."},
        {"select 'a' + 'b'", kSyntaxError, "Operator + is not known here for varchar."},
        {"select 1.5 + 1", kSyntaxError, "Operator + is not known here for numeric."},
        {"delete from aitem", kSyntaxError, "Incorrect syntax near 'from'."},
        {"insert acity values (1)", kSyntaxError, "Incorrect syntax near 'acity'."},
        {"select len(getdate())", kConversionError, "A datetime is not converted to text here."},
        {"select getdate() + 1", kSyntaxError, "Operator + is not known here for datetime."},
        {"select a from nowhere", kSyntaxError, "Invalid object name 'nowhere'."},
        {"select nothing from aitem", kSyntaxError, "Invalid column name 'nothing'."},
        {"select x.itemid from aitem", kSyntaxError,
         "The column prefix 'x' does not match with a table name or alias name used in the query."},
        {"select itemid from aitem, ashopitemdetail", kSyntaxError, "Ambiguous column name 'itemid'."},
        {"select 1 from aitem, aItem", kSyntaxError,
         "Tables or functions 'aitem' and 'aItem' have the same exposed names. Use correlation names to distinguish "
         "them."},
        {"select soundex('a')", kSyntaxError, "'soundex' is not a recognized function name."},
        {"select itemcode, max(itemid) from aitem", kSyntaxError,
         "Column 'itemcode' is invalid in the select list because it is not contained in either an aggregate function "
         "or the GROUP BY clause."},
        {"select * from aitem where max(itemid) = 1", kSyntaxError, "An aggregate may not appear in the WHERE clause."},
        {"select (select itemid, itemcode from aitem)", kSyntaxError,
         "Only one expression can be specified in the select list when the subquery is not introduced with EXISTS."},
        {"select itemid from aitem where itemid = (select itemid from aitem)", kServerFailure,
         "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , >, >= or "
         "when the subquery is used as an expression."},
        {"select @x", kSyntaxError, "Must declare the variable '@x'."},
        {"select itemid from aitem where itemid", kSyntaxError, "A value stands where a condition is wanted."},
        {"select 1 = 1", kSyntaxError, "A condition stands where a value is wanted."},
        {"spSellingPriceFetch 1,2", kSyntaxError,
         "Procedure 'spSellingPriceFetch' expects parameter '@PartyID', which was not supplied."},
        {"spSellingPriceFetch 1,2,3,4,5,6,7,8", kSyntaxError,
         "Procedure or function spSellingPriceFetch has too many arguments specified."},
        {"create table t (a int)", kSyntaxError, "Incorrect syntax near 't'."},
        {"drop table aitem", kSyntaxError, "Incorrect syntax near 'aitem'."},
        {"select 1; delete aitem", kSyntaxError, "Incorrect syntax near ';'."},
        {"delete vwItemDescription", kSyntaxError, "View 'vwItemDescription' is not updatable here."},
        {"insert into acity values (1, 'x')", kSyntaxError,
         "There are more or fewer values than columns. The number of values must match the number of columns."},
        {"insert into acity (cityid, town) values (1, 'x')", kSyntaxError, "Invalid column name 'town'."},
        // Conversions that fail.
        {"select convert(int, '1.5')", kConversionError,
         "Syntax error converting the varchar value '1.5' to a column of data type int."},
        {"select convert(int, '1e3')", kConversionError,
         "Syntax error converting the varchar value '1e3' to a column of data type int."},
        {"select convert(int, '$')", kConversionError,
         "Syntax error converting the varchar value '$' to a column of data type int."},
        {"select convert(int, '-')", kConversionError,
         "Syntax error converting the varchar value '-' to a column of data type int."},
        {"select convert(int, '+-1')", kConversionError,
         "Syntax error converting the varchar value '+-1' to a column of data type int."},
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
         "object "
         "'mesRequesttoShopHeader'."},
        {"insert into aUnit (UnitId) values (9)", kConstraintViolated,
         "Cannot insert the value NULL into column 'UnitCode', table 'aUnit'; column does not allow nulls."},
        {"insert into aUnit values (NULL, 'X', 'x')", kConstraintViolated,
         "Cannot insert the value NULL into column 'UnitId', table 'aUnit'; column does not allow nulls."},
    };
    auto connection = smallCompany();
    for (const Refusal& one : kCases) {
        SCOPED_TRACE(one.statement);
        const Failure failure = failureOf([&] { connection->database().execute(one.statement); });
        EXPECT_EQ(failure.number, one.number);
        EXPECT_EQ(failure.text, one.text);
        EXPECT_EQ(failure.source, "Sandbox database");
    }
    const std::string zero("a\0b", 3);
    for (const std::string& statement : {"select 1 " + zero, "select top 1 " + zero})
        EXPECT_EQ(failureOf([&] { connection->database().execute(statement); }).number, kSyntaxError);
    EXPECT_EQ(basic::cStr(connection->database().execute("select '" + zero + "'").rows[0][0]), zero);
    EXPECT_EQ(rows(*connection, "select count(*) from aUnit where UnitCode = 'PCS'"), "1") << "a refusal changed a row";
}

TEST(Dialect, InsertedValuesTakeTheColumnsTypeAndDefaults) {
    auto connection = smallCompany();
    connection->database().execute("insert into mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, "
                                   "srhrequestdate, srhtoShopid) values "
                                   "('9', 1, 'N1   ', '2024/3/5', 2.0)");
    EXPECT_EQ(rows(*connection, "select srhrequestid, srhrequestno, srhrequestdate, srhused, SRHcancelled, "
                                "srhTransfinished, updatetime from mesRequesttoShopHeader where srhrequestid = 9"),
              "9,'N1   ',#2024/03/05 00:00:00#,False,False,small 0,NULL");
    connection->database().execute("insert into aUnit (UnitId, UnitCode, UnitName) values (5, 'TWELVE C    ', 'x')");
    EXPECT_EQ(rows(*connection, "select UnitCode from aUnit where UnitId = 5"), "'TWELVE C  '") << "blanks may be cut";
    connection->database().execute("insert into loUserAuditing (CompanyID, ShopID, UserID, InterfaceID, DocumentID, "
                                   "DocumentNo, ActionType, LoggedTime) values (1,1,7,1507,'1','GR/1','N',getdate())");
    EXPECT_EQ(rows(*connection, "select AuditID, ActionType from loUserAuditing where SavedTime >= LoggedTime"),
              "1,'N'");
}

TEST(Dialect, HeadOfficesPriceExistsOnce) {
    auto connection = smallCompany();
    const Failure failure = failureOf(
        [&] { connection->database().execute("insert into losShopItemShipmentDetail values (100, 1, NULL, 9, 9)"); });
    EXPECT_EQ(failure.number, sandbox::kConstraintViolated) << "the server counts NULL as a value in a unique key";
}

// No column of the company has these types, but what a host joins may.
TEST(Dialect, MoreTypesAreKept) {
    auto connection = sandbox::createCompany(":memory:", "create table t (padded char(4), amount real, huge bigint)");
    connection->database().execute("insert into t values ('ab', '1.5', 9007199254740993)");
    EXPECT_EQ(rows(*connection, "select padded, amount, huge from t where padded = 'ab' and huge > 9007199254740992"),
              "'ab  ',double 1.5,decimal 9007199254740993");
}

TEST(Dialect, DeepNestingIsRefused) {
    auto connection = smallCompany();
    const std::string open(5000, '('), close(5000, ')');
    std::string sum = "select 1";
    for (int i = 0; i < 5000; ++i) sum += "+1";
    std::string negations = "select ";
    for (int i = 0; i < 5000; ++i) negations += "- ";
    for (const std::string& statement :
         {"select " + open + "1" + close, sum, negations + "1", std::string("select ") + "(select " + open})
        EXPECT_EQ(failureOf([&] { connection->call("Execute", statement); }).number, sandbox::kSyntaxError);
}

} // namespace
