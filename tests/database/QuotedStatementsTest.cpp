// Every statement that the module sends, letter for letter, with what it gives on the small company.
#include "tests/database/Company.h"

namespace {

using namespace database_test;

struct Case {
    const char* what;
    const char* statement;
    const char* expected;
};

const Case kQueries[] = {
    {"the stored column layout of a list",
     "select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader where   "
     "ltrim(rtrim(upper(lvwtransname)))='SHOPTOSHOPTRANSFER' and ltrim(rtrim(upper(lvwname)))='LVWREQUEST' and "
     "ltrim(rtrim(upper(lvwmodulename)))='FRMREQUEST')",
     "1,1,double 800.5,0|1,2,double 1500,1"},
    {"the user's name", "select username from LOUSERS where userid=7 and shopid = 1", "'Ada Field'"},
    {"the register",
     " select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname,  case sRHcancelled when 1 then 'Yes' when 0 then 'No' "
     "end Cancelled,sRHremarks,  srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed, "
     "shopid "
     "from mesRequesttoShopHeader,ashops where mesrequesttoshopheader.srhtoShopid=ashops.shopid and  srhrequestdate "
     ">='20240320' and srhShopid=1 and srhtype ='r' order by sRHrequestID ",
     "2,'GR/10',#2024/03/25 00:00:00#,'Station','No',NULL,False,'No',2"},
    {"one row of the register of the other kind",
     " select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname,  case sRHcancelled when 1 then 'Yes' when 0 then 'No' "
     "end Cancelled,sRHremarks,  srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed, "
     "shopid "
     "from mesRequesttoShopHeader,ashops where mesrequesttoshopheader.srhtoShopid=ashops.shopid and  srhrequestdate "
     ">='20240301' and srhShopid=1 and srhtype ='s'  and  srhrequestid =3",
     "3,'S1',#2024/03/25 00:00:00#,'Airport','No','',False,'No',3"},
    {"headers with the site's word for a shop",
     "select  replace(replace(tc.ColumnHeader, 'shop','Branch'),'godown','Branch'),tc.columnname from atables "
     "t,atablecolumns tc where t.tableid = tc.tableid and tablename ='mesRequesttoShopHeader,ashops'",
     "'Id','srhrequestid'|'Request No','srhrequestno'|'To Branch','shopname'"},
    {"headers",
     "select tc.columnheader,tc.columnname from atables t,atablecolumns tc where t.tableid = tc.tableid and tablename "
     "='mesRequesttoShopHeader,ashops'",
     "'Id','srhrequestid'|'Request No','srhrequestno'|'To Shop','shopname'"},
    {"back days", "select sNoofBackDays from LOsSettings where  shopid=1", "30"},
    {"close date", "select closedate from vwshopCloseDate where  shopid=1", "#2024/03/20 00:00:00#"},
    {"close date of a shop that never closed", "select closedate from vwshopCloseDate where  shopid=2", ""},
    {"integer quantities", "select IntegerQuantity from aPAckageSettings", "False"},
    {"alias flag", "select alias from apackagesettings", "True"},
    {"alias", "select Alias from aalias where aliasid =1", "'Branch'"},
    {"preserve flag", "select PreserveItemDetails from aShops where ShopId = 1", "False"},
    {"rights", "select functionrights from louserrights where userid = 7 and interfaceid = 1507 and companyid = 1",
     "'NEP'"},
    {"finished flag, as a small integer",
     "select SRHTransfinished from mesrequesttoshopheader where SRHrequestid=1 and srhshopid=1", "small 0"},
    {"shop kind", "select substring(futurevarchar,1,1) from ashops where ShopID=2", "'b'"},
    {"shop kind where nothing is stored", "select substring(futurevarchar,1,1) from ashops where ShopID=3", "NULL"},
    {"supplying shops: active, another, a shared category",
     "select distinct s.shopid, s.shopname from aShops s, ashopitemcategory ic where  ic.shopid = s.shopid  and "
     "ic.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid=1) and s.shopid<>1 and "
     "s.ActiveShop=1",
     "2,'Station'"},
    {"prefix of the current year",
     "SELECT Prefix FROM aPrefix WHERE InterfaceID = 1507 AND FinancialId = (Select FinancialId from aFinancialYear "
     "where CurFinancialYear = 1)  and shopid=1",
     "'GR/'"},
    {"highest number by value, not by text",
     "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from mesRequesttoShopHeader where "
     "srhshopid = 1 and len(SRHrequestNo)>len('GR/') and  "
     "isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1 and substring(SRHrequestNo,1,len('GR/'))='GR/'",
     "10"},
    {"highest number without a prefix passes over what is no number",
     "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-0))),0) from mesRequesttoShopHeader where "
     "srhshopid = 1 and len(SRHrequestNo)>len('') and  "
     "isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-0),0)) =1 and substring(SRHrequestNo,1,len(''))=''",
     "0"},
    {"lines of a request, 18 digits unharmed",
     "select a.srditemid, a.srdgoodqty, a.srdbadQty,  a.srdSellingprice, c.ItemDescription, u.UnitCode  from "
     "mesRequesttoShopdetail a, aitem b, vwItemDescription c, aUnit u  where a.srditemid = b.itemid and c.itemid = "
     "b.itemid  and b.UnitsID = u.UnitId and a.srdrequestid = 1 and srdshopid = 1",
     "100,decimal 123456789012345678.125,decimal 0.000,decimal 0.000,'Oat flakes 500 g','PCS'|101,decimal "
     "2.000,decimal 0.500,decimal 1.250,'Tea','PCS'"},
    {"item code of a line", "select itemcode from aitem where itemid=100", "'A-100'"},
    {"reorder suggestion against the whole shop's stock",
     "select  sd.itemid, sd.ItemReorderLevel, sd.ReorderQuantity, b.ItemDescription, u.UnitCode  from ashopitemdetail "
     "sd, aitem b, aUnit u  where sd.itemid = b.itemid  and b.UnitsId = u.UnitId and sd.ItemReorderLevel >  (select "
     "isnull(sum(stock), 0) from vwinquiryshopstock s  where s.shopid=sd.shopid) and sd.shopid=1 and b.itemcategoryid "
     "in (select itemcategoryid from ashopitemcategory   where shopid = 2)",
     "100,decimal 5.000,decimal 12.000,'Oat flakes 500 g','PCS'"},
    {"membership", "select itemid from aShopItemDetail where shopid=2 and itemid=101", ""},
    {"a number that exists, in any case",
     "select SRHrequestID from mesRequesttoShopHeader where srhrequestno='gr/9' and srhshopid=1", "1"},
    {"barcode in the scan dialog", "select itemid from aitempackingdetail where packingbarcode='4009'", "101"},
    {"shortcut in the scan dialog",
     "select itemid from ashopitemDetail ai  Where ai.itemID = ai.itemID And ai.shortcutno= 77 And shopid = 1", "100"},
    {"duplicate item codes in the scan dialog", "select AllowItemCodeDuplication from miscsettings", "True"},
    {"barcode at line entry",
     "select apd.itemid from aitempackingdetail apd, aitem a  where apd.packingbarcode='4001234567890'  and apd.itemid "
     "= a.itemid and a.itemtype <>'B' and apd.Active = 1 and a.Active = 1",
     "100"},
    {"barcode of an inactive packing",
     "select apd.itemid from aitempackingdetail apd, aitem a  where apd.packingbarcode='4009'  and apd.itemid = "
     "a.itemid and a.itemtype ='B' and apd.Active = 1 and a.Active = 1",
     ""},
    {"shortcut at line entry",
     "select ai.itemid from ashopitemDetail ai, aitem a Where a.itemid = ai.itemid and  ai.itemID = ai.itemID And "
     "ai.shortcutno = 77 And shopid = 1  and a.itemtype <>'B' And a.Active = 1",
     "100"},
    {"item code at line entry, in any case",
     "select a.itemid from aitem a where itemcode = 'a-100' and a.itemtype <>'B' and a.Active = 1", "100"},
    {"an item that both shops carry",
     "select a.itemid, v.itemdescription, a.itemcode  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId "
     "Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 "
     "intersect "
     "select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail "
     "where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2) and a.itemid=100",
     "100,'Oat flakes 500 g','A-100'"},
    {"an item that one shop carries",
     "select a.itemid, v.itemdescription, a.itemcode  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId "
     "Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 "
     "intersect "
     "select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail "
     "where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2) and a.itemid=101",
     ""},
    {"reorder quantity", "select reorderquantity from aShopItemDetail where shopid=1 and itemid=100", "decimal 12.000"},
    {"items to fetch",
     "select distinct(a.itemid) itemid,a.itemcode,v.itemdescription, a.brand,a.modelno,isnull(a.part_code,' "
     "')part_code "
     " from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in "
     "(select ItemCategoryId from aShopItemCategory where ShopId=1 intersect select ItemCategoryId from "
     "aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail where ShopId=1 intersect "
     "select ItemId from aShopItemDetail where ShopId=2)",
     "100,'A-100','Oat flakes 500 g','Mill',NULL,' '"},
    {"default search column", "select defaultfetch from lossettings where ShopID=1", "'ItemCode'"},
    {"retail packing", "select Packingtypeid from vwitemretailpacking where itemid=100", "1"},
    {"the shop's price", "spSellingPriceFetch 1,1,0,100,1,1,1", "money 25000,money 22500"},
    {"head office's price", "spSellingPriceFetch 1,2,0,100,1,1,1", "money 30000,money 27500"},
    {"a price without wholesale", "spSellingPriceFetch 1,1,0,101,1,1,0", "money 41250,NULL"},
    {"no price at all", "spSellingPriceFetch 1,1,0,100,0,1,1", ""},
    {"department and currency",
     "select a.departmentID,a.DepCurrencyID from aDepartmentMaster a,aShops b Where a.departmentID = b.departmentID "
     "And "
     "a.CompanyID = b.CompanyID and b.shopid=1",
     "1,1"},
    {"packing types of an item",
     "select ad.packingtypeid ,PackingTypeName,'' as qty from aitempackingdetail ad,apackingtype ap, "
     "apackingtypecapacitydetail ac,aitem ai where ad.itemid = 100 and ad.packingtypeid=ap.packingtypeid and "
     "ad.itemid=ai.itemid and  ac.unitsid=ai.unitsid and ac.packingtypeid=ad.packingtypeid and ad.active=1",
     "1,'Single',''|2,'Carton',''"},
    {"capacity of a packing",
     "select isnull(pk.quantity,0) qty from apackingtypecapacitydetail pk, aitem a where  a.itemid =100 and "
     "pk.packingtypeid=2 and a.unitsid=pk.unitsid",
     "decimal 12.000"},
    {"unit of an item", "select u.UnitCode from aItem i, aUnit u where i.UnitsId = u.UnitId AND i.ItemId = 100",
     "'PCS'"},
    {"price fixed at head office", "SELECT PriceFixedAtHq FROM aItem WHERE ItemId = 101", "True"},
    {"shipment price at head office",
     "SELECT SellingPrice  FROM vwItemRetailPacking irp,  losShopItemShipmentDetail sisd WHERE irp.ItemId = "
     "sisd.ItemId "
     "AND irp.PackingTypeId = sisd.PackingTypeId AND sisd.ItemId = 100 AND sisd.ShopId IS NULL",
     "money 30000"},
    {"shipment price of a shop",
     "SELECT SellingPrice  FROM vwItemRetailPacking irp,  losShopItemShipmentDetail sisd WHERE irp.ItemId = "
     "sisd.ItemId "
     "AND irp.PackingTypeId = sisd.PackingTypeId AND sisd.ItemId = 100 AND sisd.ShopId = 1",
     "money 25000"},
    {"lines of the slip, once for each packing, by description",
     "select UnitCode, h.SRHrequestNO, d.SRDItemId,ai.itemcode, srdgoodqty,a.itemdescription, ai.itemrate  from "
     "mesRequestToShopHeader h, mesRequestToShopDetail d,  vwitemdescriptionPrint a, aItem ai, aUnit u,  "
     "aItemPackingDetail pd where h.SRHrequestID=d.SRDrequestID and a.ItemId=d.SRDItemId and  h.SRHShopId=1 and "
     "h.SRHShopId=d.SRDShopId and  h.srhRequestId = 1 and a.ItemId=ai.ItemId  and pd.ItemId = ai.ItemId  and "
     "ai.UnitsId "
     "= u.UnitId  order by a.itemdescription",
     "'PCS','GR/9',100,'A-100',decimal 123456789012345678.125,'Oat flakes 500 g',money "
     "12345|'PCS','GR/9',100,'A-100',decimal 123456789012345678.125,'Oat flakes 500 g',money "
     "12345|'PCS','GR/9',101,'A-101',decimal 2.000,'Tea',money 20000"},
    {"lines of the slip as saved",
     "select UnitCode, h.SRHrequestNO, d.SRDItemId,ai.itemcode, srdgoodqty,a.itemdescription, ai.itemrate  from "
     "mesRequestToShopHeader h, mesRequestToShopDetail d,  vwitemdescriptionPrint a, aItem ai, aUnit u,  "
     "aItemPackingDetail pd where h.SRHrequestID=d.SRDrequestID and a.ItemId=d.SRDItemId and  h.SRHShopId=1 and "
     "h.SRHShopId=d.SRDShopId and  h.srhRequestId = 3 and a.ItemId=ai.ItemId  and pd.ItemId = ai.ItemId  and "
     "ai.UnitsId "
     "= u.UnitId  order by srdShopId, SRDrequestid, srdItemId",
     ""},
    {"cost price percentage", "select revisedcostpricepercent from ashops where  ShopId=1", "decimal 0.000"},
    {"company on the slip", "select name from acompanymaster", "'Meadow Retail'"},
    {"request on the slip",
     "select SRHrequestNO,SRHrequestdate,SRHremarks,a.shopname from mesrequesttoshopheader,ashops a where "
     "SRHtoShopid=a.shopid and SRHshopid=1 and SRHrequestid=1",
     "'GR/9',#2024/03/10 00:00:00#,'for Easter','Station'"},
    {"sending shop on the slip",
     "select shopname, address, CityName, CountryName, telephoneno, faxno from ashops s, acountrymaster co, acity  ci "
     "where s.countryid = co.countryid and  ci.cityid = s.cityid and s.shopid=1",
     "'Harbour','Quay 3','Harbour','Norland',NULL,NULL"},
    {"messages on the slip",
     "select * from ashopprintmessages where shopid = 1 and transtype = 'POSPO' order by messageid",
     "1,1,'POSPO','Thank you','M'"},
    {"user on the slip", "select Username from Lousers where userid = 7 and shopid = 1", "'Ada Field'"},
    {"department and symbol on the report",
     "select departmentname from ashops a,adepartmentmaster b,acurrencymaster c where shopid=1 and  "
     "a.departmentid=b.departmentid and b.depcurrencyid=c.currencyid",
     "'Groceries'"},
    {"searching items, an apostrophe doubled",
     "select distinct(a.itemid) itemid,a.itemcode,v.itemdescription,a.brand,a.modelno,isnull(a.part_code,' ')part_code "
     " "
     "from aitem a, vwItemDescription v, ashopitemdetail sd  where a.active = 1 and a.itemcategoryid in (select "
     "itemcategoryid from  ashopitemcategory where shopid=2) and  v.itemid=a.itemid  and a.itemtype <>'B' and "
     "sd.shopid=1 and sd.itemid=v.itemid and v.itemdescription like '%o''neil%' ",
     ""},
    {"searching items, in any case",
     "select distinct(a.itemid) itemid,a.itemcode,v.itemdescription,a.brand,a.modelno,isnull(a.part_code,' ')part_code "
     " "
     "from aitem a, vwItemDescription v, ashopitemdetail sd  where a.active = 1 and a.itemcategoryid in (select "
     "itemcategoryid from  ashopitemcategory where shopid=2) and  v.itemid=a.itemid  and a.itemtype <>'B' and "
     "sd.shopid=1 and sd.itemid=v.itemid and v.itemdescription like '%FLAKES%' ",
     "100,'A-100','Oat flakes 500 g','Mill',NULL,' '"},
};

TEST(QuotedStatements, GiveWhatTheScreensShow) {
    auto connection = smallCompany();
    for (const Case& one : kQueries) {
        SCOPED_TRACE(one.what);
        std::string given;
        EXPECT_NO_THROW(given = rows(*connection, one.statement));
        EXPECT_EQ(given, one.expected);
    }
}

TEST(QuotedStatements, WriteWhatTheyName) {
    struct Write {
        const char* statement;
        const char* check;
        const char* expected;
        long long affected;
    };
    const Write kWrites[] = {
        {"update mesrequesttoshopheader set SRHcancelled=SRHcancelled where  SRHrequestID = 1 and SRHshopid =1",
         "select SRHcancelled from mesRequesttoShopHeader where srhrequestid=1", "False", 1},
        {"update mesrequesttoshopdetail set srdbadqty=srdbadqty where  SRDrequestid=1 and srdshopid =1",
         "select srdbadqty from mesRequesttoShopDetail", "decimal 0.000|decimal 0.500", 2},
        {"Update mesRequesttoShopHeader set updatetime=getdate() where srhrequestid=1  and srhShopid=1",
         "select srhrequestid from mesRequesttoShopHeader where updatetime > '20200101'", "1", 1},
        {"delete mesRequesttoShopdetail where srdrequestid=1 and srdshopid = 1",
         "select count(*) from mesRequesttoShopDetail", "0", 2},
    };
    auto connection = smallCompany();
    for (const Write& one : kWrites) {
        SCOPED_TRACE(one.statement);
        EXPECT_EQ(connection->database().execute(one.statement).affected, one.affected);
        EXPECT_EQ(rows(*connection, one.check), one.expected);
    }
}

TEST(QuotedStatements, ServerClockIsADate) {
    auto connection = smallCompany();
    const auto outcome = connection->database().execute("select CURRENT_TIMESTAMP");
    ASSERT_EQ(outcome.rows.size(), 1u);
    ASSERT_TRUE(outcome.rows[0][0].is<automation::Date>());
    EXPECT_GT(outcome.rows[0][0].as<automation::Date>()->days, 45000);
}

TEST(QuotedStatements, AnItemOfANumberThatIsNoIntegerFailsTheConversion) {
    auto connection = smallCompany();
    connection->database().execute("update mesRequesttoShopHeader set srhrequestno='GR/1.5' where srhrequestid=1");
    const auto failure = failureOf([&] {
        connection->database().execute(
            "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from mesRequesttoShopHeader "
            "where srhshopid = 1 and len(SRHrequestNo)>len('GR/') and  "
            "isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1 and "
            "substring(SRHrequestNo,1,len('GR/'))='GR/'");
    });
    EXPECT_EQ(failure.number, sandbox::kConversionError);
    EXPECT_EQ(failure.text, "Syntax error converting the varchar value '1.5' to a column of data type int.");
}

} // namespace
