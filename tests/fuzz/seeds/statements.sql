select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader where   ltrim(rtrim(upper(lvwtransname)))='SHOPTOSHOPTRANSFER' and ltrim(rtrim(upper(lvwname)))='LVWREQUEST' and ltrim(rtrim(upper(lvwmodulename)))='FRMREQUEST')
select username from LOUSERS where userid=7 and shopid = 1
 select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname,  case sRHcancelled when 1 then 'Yes' when 0 then 'No' end Cancelled,sRHremarks,  srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed, shopid from mesRequesttoShopHeader,ashops where mesrequesttoshopheader.srhtoShopid=ashops.shopid and  srhrequestdate >='20240320' and srhShopid=1 and srhtype ='r' order by sRHrequestID 
 select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname,  case sRHcancelled when 1 then 'Yes' when 0 then 'No' end Cancelled,sRHremarks,  srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed, shopid from mesRequesttoShopHeader,ashops where mesrequesttoshopheader.srhtoShopid=ashops.shopid and  srhrequestdate >='20240301' and srhShopid=1 and srhtype ='s'  and  srhrequestid =3
select  replace(replace(tc.ColumnHeader, 'shop','Branch'),'godown','Branch'),tc.columnname from atables t,atablecolumns tc where t.tableid = tc.tableid and tablename ='mesRequesttoShopHeader,ashops'
select tc.columnheader,tc.columnname from atables t,atablecolumns tc where t.tableid = tc.tableid and tablename ='mesRequesttoShopHeader,ashops'
select sNoofBackDays from LOsSettings where  shopid=1
select closedate from vwshopCloseDate where  shopid=1
select closedate from vwshopCloseDate where  shopid=2
select IntegerQuantity from aPAckageSettings
select alias from apackagesettings
select Alias from aalias where aliasid =1
select PreserveItemDetails from aShops where ShopId = 1
select functionrights from louserrights where userid = 7 and interfaceid = 1507 and companyid = 1
select SRHTransfinished from mesrequesttoshopheader where SRHrequestid=1 and srhshopid=1
select substring(futurevarchar,1,1) from ashops where ShopID=2
select substring(futurevarchar,1,1) from ashops where ShopID=3
select distinct s.shopid, s.shopname from aShops s, ashopitemcategory ic where  ic.shopid = s.shopid  and ic.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid=1) and s.shopid<>1 and s.ActiveShop=1
SELECT Prefix FROM aPrefix WHERE InterfaceID = 1507 AND FinancialId = (Select FinancialId from aFinancialYear where CurFinancialYear = 1)  and shopid=1
Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from mesRequesttoShopHeader where srhshopid = 1 and len(SRHrequestNo)>len('GR/') and  isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1 and substring(SRHrequestNo,1,len('GR/'))='GR/'
Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-0))),0) from mesRequesttoShopHeader where srhshopid = 1 and len(SRHrequestNo)>len('') and  isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-0),0)) =1 and substring(SRHrequestNo,1,len(''))=''
select a.srditemid, a.srdgoodqty, a.srdbadQty,  a.srdSellingprice, c.ItemDescription, u.UnitCode  from mesRequesttoShopdetail a, aitem b, vwItemDescription c, aUnit u  where a.srditemid = b.itemid and c.itemid = b.itemid  and b.UnitsID = u.UnitId and a.srdrequestid = 1 and srdshopid = 1
select itemcode from aitem where itemid=100
select  sd.itemid, sd.ItemReorderLevel, sd.ReorderQuantity, b.ItemDescription, u.UnitCode  from ashopitemdetail sd, aitem b, aUnit u  where sd.itemid = b.itemid  and b.UnitsId = u.UnitId and sd.ItemReorderLevel >  (select isnull(sum(stock), 0) from vwinquiryshopstock s  where s.shopid=sd.shopid) and sd.shopid=1 and b.itemcategoryid in (select itemcategoryid from ashopitemcategory   where shopid = 2)
select itemid from aShopItemDetail where shopid=2 and itemid=101
select SRHrequestID from mesRequesttoShopHeader where srhrequestno='gr/9' and srhshopid=1
select itemid from aitempackingdetail where packingbarcode='4009'
select itemid from ashopitemDetail ai  Where ai.itemID = ai.itemID And ai.shortcutno= 77 And shopid = 1
select AllowItemCodeDuplication from miscsettings
select apd.itemid from aitempackingdetail apd, aitem a  where apd.packingbarcode='4001234567890'  and apd.itemid = a.itemid and a.itemtype <>'B' and apd.Active = 1 and a.Active = 1
select apd.itemid from aitempackingdetail apd, aitem a  where apd.packingbarcode='4009'  and apd.itemid = a.itemid and a.itemtype ='B' and apd.Active = 1 and a.Active = 1
select ai.itemid from ashopitemDetail ai, aitem a Where a.itemid = ai.itemid and  ai.itemID = ai.itemID And ai.shortcutno = 77 And shopid = 1  and a.itemtype <>'B' And a.Active = 1
select a.itemid from aitem a where itemcode = 'a-100' and a.itemtype <>'B' and a.Active = 1
select a.itemid, v.itemdescription, a.itemcode  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 intersect select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2) and a.itemid=100
select a.itemid, v.itemdescription, a.itemcode  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 intersect select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2) and a.itemid=101
select reorderquantity from aShopItemDetail where shopid=1 and itemid=100
select distinct(a.itemid) itemid,a.itemcode,v.itemdescription, a.brand,a.modelno,isnull(a.part_code,' ')part_code  from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 intersect select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2)
select defaultfetch from lossettings where ShopID=1
select Packingtypeid from vwitemretailpacking where itemid=100
spSellingPriceFetch 1,1,0,100,1,1,1
spSellingPriceFetch 1,2,0,100,1,1,1
spSellingPriceFetch 1,1,0,101,1,1,0
spSellingPriceFetch 1,1,0,100,0,1,1
select a.departmentID,a.DepCurrencyID from aDepartmentMaster a,aShops b Where a.departmentID = b.departmentID And a.CompanyID = b.CompanyID and b.shopid=1
select ad.packingtypeid ,PackingTypeName,'' as qty from aitempackingdetail ad,apackingtype ap, apackingtypecapacitydetail ac,aitem ai where ad.itemid = 100 and ad.packingtypeid=ap.packingtypeid and ad.itemid=ai.itemid and  ac.unitsid=ai.unitsid and ac.packingtypeid=ad.packingtypeid and ad.active=1
select isnull(pk.quantity,0) qty from apackingtypecapacitydetail pk, aitem a where  a.itemid =100 and pk.packingtypeid=2 and a.unitsid=pk.unitsid
select u.UnitCode from aItem i, aUnit u where i.UnitsId = u.UnitId AND i.ItemId = 100
SELECT PriceFixedAtHq FROM aItem WHERE ItemId = 101
SELECT SellingPrice  FROM vwItemRetailPacking irp,  losShopItemShipmentDetail sisd WHERE irp.ItemId = sisd.ItemId AND irp.PackingTypeId = sisd.PackingTypeId AND sisd.ItemId = 100 AND sisd.ShopId IS NULL
SELECT SellingPrice  FROM vwItemRetailPacking irp,  losShopItemShipmentDetail sisd WHERE irp.ItemId = sisd.ItemId AND irp.PackingTypeId = sisd.PackingTypeId AND sisd.ItemId = 100 AND sisd.ShopId = 1
select UnitCode, h.SRHrequestNO, d.SRDItemId,ai.itemcode, srdgoodqty,a.itemdescription, ai.itemrate  from mesRequestToShopHeader h, mesRequestToShopDetail d,  vwitemdescriptionPrint a, aItem ai, aUnit u,  aItemPackingDetail pd where h.SRHrequestID=d.SRDrequestID and a.ItemId=d.SRDItemId and  h.SRHShopId=1 and h.SRHShopId=d.SRDShopId and  h.srhRequestId = 1 and a.ItemId=ai.ItemId  and pd.ItemId = ai.ItemId  and ai.UnitsId = u.UnitId  order by a.itemdescription
select UnitCode, h.SRHrequestNO, d.SRDItemId,ai.itemcode, srdgoodqty,a.itemdescription, ai.itemrate  from mesRequestToShopHeader h, mesRequestToShopDetail d,  vwitemdescriptionPrint a, aItem ai, aUnit u,  aItemPackingDetail pd where h.SRHrequestID=d.SRDrequestID and a.ItemId=d.SRDItemId and  h.SRHShopId=1 and h.SRHShopId=d.SRDShopId and  h.srhRequestId = 3 and a.ItemId=ai.ItemId  and pd.ItemId = ai.ItemId  and ai.UnitsId = u.UnitId  order by srdShopId, SRDrequestid, srdItemId
select revisedcostpricepercent from ashops where  ShopId=1
select name from acompanymaster
select SRHrequestNO,SRHrequestdate,SRHremarks,a.shopname from mesrequesttoshopheader,ashops a where SRHtoShopid=a.shopid and SRHshopid=1 and SRHrequestid=1
select shopname, address, CityName, CountryName, telephoneno, faxno from ashops s, acountrymaster co, acity  ci where s.countryid = co.countryid and  ci.cityid = s.cityid and s.shopid=1
select * from ashopprintmessages where shopid = 1 and transtype = 'POSPO' order by messageid
select Username from Lousers where userid = 7 and shopid = 1
select departmentname from ashops a,adepartmentmaster b,acurrencymaster c where shopid=1 and  a.departmentid=b.departmentid and b.depcurrencyid=c.currencyid
select distinct(a.itemid) itemid,a.itemcode,v.itemdescription,a.brand,a.modelno,isnull(a.part_code,' ')part_code  from aitem a, vwItemDescription v, ashopitemdetail sd  where a.active = 1 and a.itemcategoryid in (select itemcategoryid from  ashopitemcategory where shopid=2) and  v.itemid=a.itemid  and a.itemtype <>'B' and sd.shopid=1 and sd.itemid=v.itemid and v.itemdescription like '%o''neil%' 
select distinct(a.itemid) itemid,a.itemcode,v.itemdescription,a.brand,a.modelno,isnull(a.part_code,' ')part_code  from aitem a, vwItemDescription v, ashopitemdetail sd  where a.active = 1 and a.itemcategoryid in (select itemcategoryid from  ashopitemcategory where shopid=2) and  v.itemid=a.itemid  and a.itemtype <>'B' and sd.shopid=1 and sd.itemid=v.itemid and v.itemdescription like '%FLAKES%' 
update mesrequesttoshopheader set SRHcancelled=SRHcancelled where  SRHrequestID = 1 and SRHshopid =1
update mesrequesttoshopdetail set srdbadqty=srdbadqty where  SRDrequestid=1 and srdshopid =1
Update mesRequesttoShopHeader set updatetime=getdate() where srhrequestid=1  and srhShopid=1
delete mesRequesttoShopdetail where srdrequestid=1 and srdshopid = 1
select distinct(a.itemid) itemid, isnull(a.part_code,' ')part_code from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 intersect select ItemCategoryId from aShopItemCategory where ShopId=2) order by itemid desc
Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from mesRequesttoShopHeader where len(SRHrequestNo)>len('GR/') and isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1
select case sRHcancelled when 1 then 'Yes' else convert(varchar(9), srhrequestdate, 103) + 'x' end Cancelled, srdgoodqty + 2.5 - srdbadQty n from mesRequesttoShopHeader inner join mesRequesttoShopDetail on srdrequestid = srhrequestid where srhrequestdate >= '20240101' or SRHremarks not like '%[a-e]_%'
insert into acity (cityid, CityName, countryid) values (5, 'x', 1), (6, N'y' + 'z', 1.5e0)
update aitem set itemrate = itemrate + 2, part_code = substring(itemcode, 2, 3) where itemid not in (1, '2', 3.0)
spSellingPriceFetch 1,2,0,3,-4,(select top 1 itemid from aitem),NULL
create table t (a int identity(1,1) not null, b varchar(10) default 'x', c decimal(18,3), d datetime default getdate())
insert into mesRequesttoShopHeader (srhshopid, srhrequestno, srhrequestdate, srhtoShopid, SRHremarks, srhtype) values (1, 'GR/11', '20240401', 2, 'x', 'r')
create view v as select a.shopid, max(b.itemid) m from aShops a inner join ashopitemdetail b on a.shopid = b.shopid group by a.shopid
create procedure p @a int, @b varchar(10) as select * from aitem where itemid=@a and itemcode like @b
select distinct top 3 a union except left outer join b on having group by with into intersect sum count min max isnumeric replace between not exists smallint float bit money nvarchar char unique constraint index * - <> >= <= < > = ( ) , . @a '' -1 0 1e308 2147483648 9223372036854775808 99999999999999999999.5 '20240230' 0.000000000001 n'ä'
