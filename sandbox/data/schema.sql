-- Tables, keys, views and the price procedure of a company's database.
-- Plain SQL Server DDL: run it as it stands on an empty database of a real server; the sandbox builds its own from the
-- same text. Identifiers and text compare without case, as under the server's usual collation.

-- Company, places, currencies ----------------------------------------------------------------------------------------

create table acompanymaster (
    CompanyID int not null,
    name varchar(60) not null,
    Address1 varchar(60) null,
    Address2 varchar(60) null,
    Address3 varchar(60) null,
    telephoneno varchar(30) null,
    constraint PK_acompanymaster primary key (CompanyID)
)
GO
create table acountrymaster (
    countryid int not null,
    CountryName varchar(40) not null,
    constraint PK_acountrymaster primary key (countryid)
)
GO
create table acity (
    cityid int not null,
    CityName varchar(40) not null,
    countryid int not null,
    constraint PK_acity primary key (cityid)
)
GO
create table acurrencymaster (
    currencyid int not null,
    currencyname varchar(40) not null,
    symbol nvarchar(5) not null,
    constraint PK_acurrencymaster primary key (currencyid)
)
GO
create table aDepartmentMaster (
    departmentID int not null,
    CompanyID int not null,
    departmentname varchar(40) not null,
    DepCurrencyID int not null,
    constraint PK_aDepartmentMaster primary key (departmentID, CompanyID)
)
GO

-- Shops ---------------------------------------------------------------------------------------------------------------

-- The first character of futurevarchar marks the shop's kind; B deals in items of type B only.
create table aShops (
    shopid int not null,
    shopname nvarchar(50) not null,
    ActiveShop bit not null default 1,
    futurevarchar varchar(20) null,
    address nvarchar(100) null,
    cityid int not null,
    countryid int not null,
    telephoneno varchar(30) null,
    faxno varchar(30) null,
    departmentid int not null,
    CompanyID int not null,
    PreserveItemDetails bit not null default 0,
    revisedcostpricepercent decimal(9,3) not null default 0,
    constraint PK_aShops primary key (shopid)
)
GO
create table ashopitemcategory (
    shopid int not null,
    itemcategoryid int not null,
    constraint PK_ashopitemcategory primary key (shopid, itemcategoryid)
)
GO
create table ashopitemdetail (
    shopid int not null,
    itemid int not null,
    ItemReorderLevel decimal(21,3) not null default 0,
    ReorderQuantity decimal(21,3) not null default 0,
    shortcutno int null,
    constraint PK_ashopitemdetail primary key (shopid, itemid)
)
GO
create index IX_ashopitemdetail_shortcut on ashopitemdetail (shopid, shortcutno)
GO
create table ashopprintmessages (
    messageid int not null,
    shopid int not null,
    transtype varchar(10) not null,
    message nvarchar(100) not null,
    allignment char(1) not null default 'L',
    constraint PK_ashopprintmessages primary key (messageid, shopid, transtype)
)
GO

-- Items and packings --------------------------------------------------------------------------------------------------

create table aUnit (
    UnitId int not null,
    UnitCode varchar(10) not null,
    UnitName varchar(30) not null,
    constraint PK_aUnit primary key (UnitId)
)
GO
create table aitemcategory (
    itemcategoryid int not null,
    itemcategoryname nvarchar(50) not null,
    constraint PK_aitemcategory primary key (itemcategoryid)
)
GO
create table aitem (
    itemid int not null,
    itemcode varchar(30) not null,
    ItemDescription nvarchar(100) not null,
    printdescription nvarchar(100) null,
    UnitsId int not null,
    itemcategoryid int not null,
    itemtype char(1) not null default 'G',
    brand nvarchar(40) null,
    modelno varchar(30) null,
    part_code varchar(30) null,
    itemrate money not null default 0,
    PriceFixedAtHq bit null default 0,
    Active bit not null default 1,
    constraint PK_aitem primary key (itemid)
)
GO
create index IX_aitem_itemcode on aitem (itemcode)
GO
create table apackingtype (
    packingtypeid int not null,
    PackingTypeName varchar(40) not null,
    constraint PK_apackingtype primary key (packingtypeid)
)
GO
-- How many base units one pack holds, per unit.
create table apackingtypecapacitydetail (
    packingtypeid int not null,
    unitsid int not null,
    quantity decimal(21,3) null,
    constraint PK_apackingtypecapacitydetail primary key (packingtypeid, unitsid)
)
GO
create table aitempackingdetail (
    itemid int not null,
    packingtypeid int not null,
    packingbarcode varchar(30) null,
    RetailPacking bit not null default 0,
    Active bit not null default 1,
    constraint PK_aitempackingdetail primary key (itemid, packingtypeid)
)
GO
create index IX_aitempackingdetail_barcode on aitempackingdetail (packingbarcode)
GO
-- Selling prices; a row without a shop is the head office's price.
create table losShopItemShipmentDetail (
    ItemId int not null,
    PackingTypeId int not null,
    ShopId int null,
    SellingPrice money null,
    WholesalePrice money null,
    constraint UQ_losShopItemShipmentDetail unique (ItemId, PackingTypeId, ShopId)
)
GO
create table losShopItemStock (
    shopid int not null,
    itemid int not null,
    stock decimal(21,3) not null default 0,
    constraint PK_losShopItemStock primary key (shopid, itemid)
)
GO
create table losShopDayClose (
    shopid int not null,
    closedate datetime not null,
    constraint PK_losShopDayClose primary key (shopid, closedate)
)
GO

-- Users, rights, numbering --------------------------------------------------------------------------------------------

create table loUsers (
    Userid int not null,
    shopid int not null,
    UserName nvarchar(50) not null,
    constraint PK_loUsers primary key (Userid, shopid)
)
GO
create table louserrights (
    userid int not null,
    interfaceid int not null,
    companyid int not null,
    FunctionRights varchar(30) null,
    constraint PK_louserrights primary key (userid, interfaceid, companyid)
)
GO
create table aFinancialYear (
    FinancialId int not null,
    FinancialYear varchar(20) not null,
    StartDate datetime not null,
    EndDate datetime not null,
    CurFinancialYear bit not null default 0,
    constraint PK_aFinancialYear primary key (FinancialId)
)
GO
create table aPrefix (
    InterfaceID int not null,
    FinancialId int not null,
    shopid int not null,
    Prefix varchar(15) not null,
    constraint PK_aPrefix primary key (InterfaceID, FinancialId, shopid)
)
GO

-- Settings ------------------------------------------------------------------------------------------------------------

create table aPAckageSettings (
    IntegerQuantity bit not null default 0,
    alias bit not null default 0,
    AllowItemCodeDuplication bit not null default 0
)
GO
create table miscsettings (
    AllowItemCodeDuplication bit not null default 0
)
GO
create table aalias (
    aliasid int not null,
    Alias nvarchar(30) not null,
    constraint PK_aalias primary key (aliasid)
)
GO
create table LOsSettings (
    ShopID int not null,
    sNoofBackDays int null,
    defaultfetch varchar(30) null,
    constraint PK_LOsSettings primary key (ShopID)
)
GO

-- Screens: catalogue of column headers, stored layouts ----------------------------------------------------------------

create table atables (
    tableid int not null,
    tablename varchar(100) not null,
    constraint PK_atables primary key (tableid)
)
GO
create table atablecolumns (
    tableid int not null,
    columnno int not null,
    columnname varchar(50) not null,
    ColumnHeader nvarchar(50) not null,
    constraint PK_atablecolumns primary key (tableid, columnno)
)
GO
create table alistviewheader (
    lvwid int not null,
    lvwtransname varchar(50) not null,
    lvwname varchar(50) not null,
    lvwmodulename varchar(50) not null,
    constraint PK_alistviewheader primary key (lvwid)
)
GO
create table alistviewdetails (
    lvwdid int not null,
    lvwcolid int not null,
    lvwdcolwidth float not null,
    lvwdcolalign int not null default 0,
    constraint PK_alistviewdetails primary key (lvwdid, lvwcolid)
)
GO
-- A user's own widths for the columns of a register grid.
create table aMasterGridSettings (
    UserID int not null,
    CompanyID int not null,
    GridName varchar(50) not null,
    ColumnNo int not null,
    ColumnWidth float not null,
    constraint PK_aMasterGridSettings primary key (UserID, CompanyID, GridName, ColumnNo)
)
GO
create table loUserAuditing (
    AuditID int identity(1,1) not null,
    CompanyID int not null,
    ShopID int not null,
    UserID int not null,
    InterfaceID int not null,
    DocumentID varchar(20) not null,
    DocumentNo varchar(50) not null,
    ActionType char(1) not null,
    LoggedTime datetime not null,
    SavedTime datetime not null default getdate(),
    Remarks nvarchar(255) null,
    constraint PK_loUserAuditing primary key (AuditID)
)
GO

-- Requests ------------------------------------------------------------------------------------------------------------

create table mesRequesttoShopHeader (
    srhrequestid int not null,
    srhshopid int not null,
    srhrequestno varchar(30) not null,
    srhrequestdate datetime not null,
    SRHrequestTime datetime null,
    srhtoShopid int not null,
    SRHremarks nvarchar(255) null,
    srhrecaddUser nvarchar(50) null,
    srhrecmoduser nvarchar(50) null,
    srhTransfinished smallint not null default 0,
    srhNoofDetails int not null default 0,
    srhtype varchar(1) not null default '',
    srhused bit not null default 0,
    SRHcancelled bit not null default 0,
    srhcancelledRemarks nvarchar(255) null,
    updatetime datetime null,
    constraint PK_mesRequesttoShopHeader primary key (srhrequestid, srhshopid),
    constraint UQ_mesRequesttoShopHeader_requestno unique (srhshopid, srhrequestno)
)
GO
-- The register lists a shop's requests by their ids.
create index IX_mesRequesttoShopHeader_shop on mesRequesttoShopHeader (srhshopid, srhrequestid)
GO
-- Written by column position: the order of the columns is part of the contract.
create table mesRequesttoShopDetail (
    srdrequestid int not null,
    srdshopid int not null,
    srditemid int not null,
    srdtoshopid int not null,
    srdgoodqty decimal(21,3) not null default 0,
    srdbadQty decimal(21,3) not null default 0,
    srdSellingprice decimal(21,3) not null default 0,
    constraint PK_mesRequesttoShopDetail primary key (srdrequestid, srdshopid, srditemid)
)
GO

-- Views ---------------------------------------------------------------------------------------------------------------

create view vwItemDescription as
select itemid, ItemDescription from aitem
GO
create view vwitemdescriptionPrint as
select itemid, isnull(printdescription, ItemDescription) as ItemDescription from aitem
GO
create view vwitemretailpacking as
select itemid, packingtypeid as Packingtypeid from aitempackingdetail where RetailPacking = 1 and Active = 1
GO
create view vwinquiryshopstock as
select shopid, itemid, stock from losShopItemStock
GO
create view vwshopCloseDate as
select shopid, max(closedate) as closedate from losShopDayClose group by shopid
GO

-- Prices --------------------------------------------------------------------------------------------------------------

-- Selling price (SP) and wholesale price (WP) of an item's packing: the shop's own where it has one, otherwise the head
-- office's; no row where there is neither. Prices are kept in the shop's own currency, so company, unit rate and
-- currency choose nothing here; they stand for callers that pass them.
create procedure spSellingPriceFetch
    @CompanyID int, @ShopID int, @PartyID int, @ItemID int, @PackingTypeID int, @Rate int, @CurrencyID int
as
select top 1 p.SellingPrice SP, p.WholesalePrice WP
from losShopItemShipmentDetail p
where p.ItemId = @ItemID and p.PackingTypeId = @PackingTypeID and (p.ShopId = @ShopID or p.ShopId is null)
order by case when p.ShopId is null then 1 else 0 end
GO
