-- What the server's dialect means, on the small company: a statement, and below it what it answers, which is its rows,
-- parted by "|", or the kind of its error and what that says.

-- Case and blanks at the end do not count when comparing.
select case when 'abc' = 'ABC  ' then 1 else 0 end, case when 'a' < 'B' then 1 else 0 end, case when N'ärger' = N'ÄRGER' then 1 else 0 end
--> 1,1,1
select case when 'abc' like 'A%' then 1 else 0 end, case when 'abc' like '_b[a-d]' then 1 else 0 end, case when 'a%c' like 'a[%]c' then 1 else 0 end
--> 1,1,1
select case when 'aXbXc' like '%x%X%' then 1 else 0 end, case when 'abc' not like 'b%' then 1 else 0 end
--> 1,1
select case when 0.10 = .1 then 1 else 0 end, case when 9.5 < 10 then 1 else 0 end, case when NULL is null then 1 else 0 end
--> 1,1,1
select case when '  a' = 'a' then 1 else 0 end, case when 'abc' like '_b[^a-d]' then 1 else 0 end, case when NULL = NULL then 1 else 0 end
--> 0,0,0

-- Numeric is more than what converts.
select isnumeric('12'), isnumeric(' 12 '), isnumeric('-1.5'), isnumeric('1e3'), isnumeric('1,000')
--> 1,1,1,1,1
select isnumeric('-'), isnumeric('$'), isnumeric('.'), isnumeric('+$1.5'), isnumeric(5)
--> 1,1,1,1,1
select isnumeric(''), isnumeric(' '), isnumeric('12a'), isnumeric('e3'), isnumeric('1.2.3'), isnumeric(NULL)
--> 0,0,0,0,0,0

-- Texts, numbers, dates, groups and sets.
select len('ab  '), len('  ab'), len(N'ä€'), len(12345)
--> 2,4,2,5
select right('abc', 2), right('abc', 9), 'it''s', N'fine'
--> 'bc','abc','it's','fine'
select substring('abcdef', 2, 3), substring('abc', 0, 2), substring('abc', 3, 9), substring('abc', 9, 1)
--> 'bcd','a','c',''
select upper('aä'), ltrim('  a '), rtrim(' a  ')
--> 'AÄ','a ',' a'
select replace('To Shop, shop', 'SHOP', 'Branch'), replace('aaa', 'a', ''), replace('abc', '', 'x')
--> 'To Branch, Branch','','abc'
select case when 'abc' in ('x', 'ABC ') then 'in' end
--> 'in'
select convert(int, '12'), convert(int, ' -7 '), convert(int, ''), convert(int, '+5')
--> 12,-7,0,5
select convert(int, 2.9), convert(int, -2.9), convert(int, itemrate) from aitem
--> 2,-2,1|2,-2,2
select itemid from aitem where itemid = 1e2
--> 100
select 1 + 2 - 5, 1.10, NULL + 1, 99999999999
--> -2,decimal 1.1,NULL,decimal 99999999999
select - -3, -(1.5)
--> 3,decimal -1.5
select isnull(NULL, 3), isnull(NULL, 'x')
--> 3,'x'
select case 2 when 1 then 'one' when 2 then 'two' end, case 3 when 1 then 'one' end
--> 'two',NULL
select srhrequestid from mesRequesttoShopHeader where srhrequestdate = '2024-03-10'
--> 1
select count(*), max(itemrate), min(itemcode) from aitem
--> 2,money 20000,'A-100'
select sum(srdgoodqty) from mesRequesttoShopDetail
--> decimal 123456789012345680.125
select sum(itemid), min(itemid) from aitem where itemid < 0
--> NULL,NULL
select shopid, count(*) n from ashopitemdetail group by shopid order by n
--> 2,1|1,2
select itemcategoryid from ashopitemcategory where shopid=1 intersect select itemcategoryid from ashopitemcategory where shopid=2
--> 10
select top 2 shopid from aShops order by shopname
--> 3|4
select x.n + 1 from (select max(itemid) n from aitem) x
--> 102
select s.shopid, d.itemid from aShops s inner join ashopitemdetail d on d.shopid = s.shopid where s.shopid > 1
--> 2,100
select shopid from aShops s where (select count(*) from ashopitemdetail d where d.shopid = s.shopid) > 0 and shopid not in (2)
--> 1
select shopid as id from aShops s where s.shopname = 'harbour' -- a remark
--> 1

-- What no statement uses is not known here.
select 1 fom aitem x
--> syntax: Incorrect syntax near 'aitem'.
select 1 ! 2
--> syntax: Incorrect syntax near '!'.
select 2 * 3
--> syntax: Incorrect syntax near '*'.
select [itemid] from aitem
--> syntax: Incorrect syntax near '['.
select 1 union select 2
--> syntax: Incorrect syntax near 'union'.
select a.itemid from aitem a left join aUnit u on 1 = 1
--> syntax: Incorrect syntax near 'left'.
select shopid from aShops group by shopid having 1 = 1
--> syntax: Incorrect syntax near 'having'.
select shopid from aShops where shopid between 1 and 2
--> syntax: Incorrect syntax near 'between'.
select itemid from aitem order by itemid desc
--> syntax: Incorrect syntax near 'desc'.
select convert(varchar(9), 1)
--> syntax: Incorrect syntax near 'varchar'.
select convert(int, '1', 103)
--> syntax: Incorrect syntax near ','.
select count(distinct itemid) from aitem
--> syntax: Incorrect syntax near 'itemid'.
delete from aitem
--> syntax: Incorrect syntax near 'from'.
insert acity values (1)
--> syntax: Incorrect syntax near 'acity'.
create table t (a int)
--> syntax: Incorrect syntax near 't'.
drop table aitem
--> syntax: Incorrect syntax near 'aitem'.
select 1; delete aitem
--> syntax: Incorrect syntax near ';'.

-- Other refusals, in the words of the server.
selct 1
--> syntax: Could not find stored procedure 'selct'.
select
--> syntax: Incorrect syntax: the statement ends too early.
select 'abc
--> syntax: Unclosed quotation mark before the character string 'abc'.
select itemcode from aitem where itemcode='O'Neil'
--> syntax: Unclosed quotation mark before the character string ''.
select itemid from aitem order by 1
--> syntax: A position in ORDER BY is not known here.
select count(itemid) from aitem
--> syntax: Of count, only count(*) is known here.
select 'a' + 'b'
--> syntax: Operator + is not known here for varchar.
select 1.5 + 1
--> syntax: Operator + is not known here for numeric.
select getdate() + 1
--> syntax: Operator + is not known here for datetime.
select a from nowhere
--> syntax: Invalid object name 'nowhere'.
select nothing from aitem
--> syntax: Invalid column name 'nothing'.
select x.itemid from aitem
--> syntax: The column prefix 'x' does not match with a table name or alias name used in the query.
select itemid from aitem, ashopitemdetail
--> syntax: Ambiguous column name 'itemid'.
select 1 from aitem, aItem
--> syntax: Tables or functions 'aitem' and 'aItem' have the same exposed names. Use correlation names to distinguish them.
select soundex('a')
--> syntax: 'soundex' is not a recognized function name.
select itemcode, max(itemid) from aitem
--> syntax: Column 'itemcode' is invalid in the select list because it is not contained in either an aggregate function or the GROUP BY clause.
select * from aitem where max(itemid) = 1
--> syntax: An aggregate may not appear in the WHERE clause.
select (select itemid, itemcode from aitem)
--> syntax: Only one expression can be specified in the select list when the subquery is not introduced with EXISTS.
select @x
--> syntax: Must declare the variable '@x'.
select itemid from aitem where itemid
--> syntax: A value stands where a condition is wanted.
select 1 = 1
--> syntax: A condition stands where a value is wanted.
spSellingPriceFetch 1,2
--> syntax: Procedure 'spSellingPriceFetch' expects parameter '@PartyID', which was not supplied.
spSellingPriceFetch 1,2,3,4,5,6,7,8
--> syntax: Procedure or function spSellingPriceFetch has too many arguments specified.
delete vwItemDescription
--> syntax: View 'vwItemDescription' is not updatable here.
insert into acity values (1, 'x')
--> syntax: There are more or fewer values than columns. The number of values must match the number of columns.
insert into acity (cityid, town) values (1, 'x')
--> syntax: Invalid column name 'town'.

-- Conversions that fail.
select convert(int, '1.5')
--> conversion: Syntax error converting the varchar value '1.5' to a column of data type int.
select convert(int, '1e3')
--> conversion: Syntax error converting the varchar value '1e3' to a column of data type int.
select convert(int, '$')
--> conversion: Syntax error converting the varchar value '$' to a column of data type int.
select convert(int, '-')
--> conversion: Syntax error converting the varchar value '-' to a column of data type int.
select convert(int, '+-1')
--> conversion: Syntax error converting the varchar value '+-1' to a column of data type int.
select len(getdate())
--> conversion: A datetime is not converted to text here.
select itemid from aitem where itemid = (select itemid from aitem)
--> failure: Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , >, >= or when the subquery is used as an expression.
select convert(int, '99999999999')
--> overflow: The conversion of the varchar value '99999999999' overflowed an int column.
select itemid from aitem where itemid = 'abc'
--> conversion: Syntax error converting the varchar value 'abc' to a column of data type int.
select srhrequestid from mesRequesttoShopHeader where srhrequestdate > '20240231'
--> conversion: Syntax error converting datetime from character string.
update mesRequesttoShopDetail set srdgoodqty = '9999999999999999999'
--> overflow: Arithmetic overflow error converting varchar to data type numeric.
select 2147483647 + 1
--> overflow: Arithmetic overflow error converting expression to data type int.
select right('abc', -1)
--> failure: Invalid length parameter passed to the right function.

-- Rows that a table does not take; it counts NULL as a value in a unique key.
insert into aUnit values (5, 'ELEVEN CHARS', 'x')
--> overflow: String or binary data would be truncated.
update aUnit set UnitCode = 'ELEVEN CHARS'
--> overflow: String or binary data would be truncated.
insert into aUnit values (1, 'X', 'x')
--> constraint: Violation of PRIMARY KEY constraint 'PK_aUnit'. Cannot insert duplicate key in object 'aUnit'.
update mesRequesttoShopHeader set srhrequestno = 'gr/9 ' where srhrequestid = 2
--> constraint: Violation of UNIQUE KEY constraint 'UQ_mesRequesttoShopHeader_requestno'. Cannot insert duplicate key in object 'mesRequesttoShopHeader'.
insert into aUnit (UnitId) values (9)
--> constraint: Cannot insert the value NULL into column 'UnitCode', table 'aUnit'; column does not allow nulls.
insert into aUnit values (NULL, 'X', 'x')
--> constraint: Cannot insert the value NULL into column 'UnitId', table 'aUnit'; column does not allow nulls.
insert into losShopItemShipmentDetail values (100, 1, NULL, 9, 9)
--> constraint: Violation of UNIQUE KEY constraint 'UQ_losShopItemShipmentDetail'. Cannot insert duplicate key in object 'losShopItemShipmentDetail'.
select count(*) from aUnit where UnitCode = 'PCS'
--> 1

-- Inserted values take the column's type and defaults; blanks may be cut.
insert into mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid) values ('9', 1, 'N1   ', '2024/3/5', 2.0)
-->
select srhrequestid, srhrequestno, srhrequestdate, srhused, SRHcancelled, srhTransfinished, updatetime from mesRequesttoShopHeader where srhrequestid = 9
--> 9,'N1   ',#2024/03/05 00:00:00#,False,False,small 0,NULL
insert into aUnit (UnitId, UnitCode, UnitName) values (5, 'TWELVE C    ', 'x')
-->
select UnitCode from aUnit where UnitId = 5
--> 'TWELVE C  '
insert into loUserAuditing (CompanyID, ShopID, UserID, InterfaceID, DocumentID, DocumentNo, ActionType, LoggedTime) values (1,1,7,1507,'1','GR/1','N',getdate())
-->
select AuditID, ActionType from loUserAuditing where SavedTime >= LoggedTime
--> 1,'N'

-- Statements that differ only in their values share what is prepared, and still mean what each of them says.
select top 1 shopid from aShops order by shopid
--> 1
select top 3 shopid from aShops order by shopid
--> 1|2|3
select 1 + 2
--> 3
select 4 + 5
--> 9
select substring('abc', 1, 2)
--> 'ab'
select substring('abc', 2, 1)
--> 'b'
select -5
--> -5
select -6
--> -6
select case 2 when 1 then 'one' when 2 then 'two' end
--> 'two'
select case 1 when 1 then 'one' when 2 then 'two' end
--> 'one'
select itemid from aitem where itemcode like 'A%'
--> 100|101
select itemid from aitem where itemcode like '%z'
-->
select count(*) from aitem where itemid in (100, 101)
--> 2
select count(*) from aitem where itemid in (1, 101)
--> 1
select isnull(null, 4), isnull(null, 'y')
--> 4,'y'
spSellingPriceFetch 1,1,0,100,1,1,1
--> money 25000,money 22500
spSellingPriceFetch 1,2,0,101,1,1,1
--> money 41250,NULL
insert into mesRequesttoShopDetail values (900,1,'7',2,'1.5','0',0)
-->
insert into mesRequesttoShopDetail values (900,1,' 8 ',2,'-1234.5678','0',0)
-->
insert into mesRequesttoShopDetail values (900,1,'x',2,'1','0',0)
--> conversion: Syntax error converting the varchar value 'x' to a column of data type int.
insert into mesRequesttoShopDetail values (900,1,'99999999999',2,'1','0',0)
--> overflow: The conversion of the varchar value '99999999999' overflowed an int column.
insert into mesRequesttoShopDetail values (900,1,'9',2,'999999999999999999999999999999','0',0)
--> overflow: Arithmetic overflow error converting varchar to data type numeric.
insert into mesRequesttoShopDetail values (900,1,'7',2,'1','0',0)
--> constraint: Violation of PRIMARY KEY constraint 'PK_mesRequesttoShopDetail'. Cannot insert duplicate key in object 'mesRequesttoShopDetail'.
insert into mesRequesttoShopDetail values (900,1,null,2,'1','0',0)
--> constraint: Cannot insert the value NULL into column 'srditemid', table 'mesRequesttoShopDetail'; column does not allow nulls.
select srditemid, srdgoodqty from mesRequesttoShopDetail where srdrequestid = 900
--> 7,decimal 1.500|8,decimal -1234.568
delete mesRequesttoShopDetail where srdrequestid = 900
-->
insert into mesRequesttoShopDetail values (900,1,'7',2,'1.5','0',0)
-->
insert into mesRequesttoShopDetail values (900,1,'x',2,'1','0',0)
--> conversion: Syntax error converting the varchar value 'x' to a column of data type int.
select srditemid, srdgoodqty from mesRequesttoShopDetail where srdrequestid = 900
--> 7,decimal 1.500
