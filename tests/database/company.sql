-- The small company: two shops that share a category and an item, one that shares nothing; one request of each kind.
insert into acity values (1, 'Harbour', 1);
insert into aShops (shopid, shopname, ActiveShop, futurevarchar, address, cityid, countryid, departmentid,
  CompanyID) values
  (1, 'Harbour', 1, 'A1', 'Quay 3', 1, 1, 1, 1), (2, 'Station', 1, 'bX', 'Rail 9', 1, 1, 1, 1),
  (3, 'Airport', 1, NULL, NULL, 1, 1, 1, 1), (4, 'Closed', 0, 'A', NULL, 1, 1, 1, 1);
insert into ashopitemcategory values (1, 10), (1, 11), (2, 10), (3, 12), (4, 10);
insert into ashopitemdetail values (1, 100, 5, 12, 77), (1, 101, 0, 0, NULL), (2, 100, 0, 0, 77);
insert into aUnit values (1, 'PCS', 'Pieces');
insert into aitem (itemid, itemcode, ItemDescription, UnitsId, itemcategoryid, itemtype, brand, part_code,
  itemrate, PriceFixedAtHq) values
  (100, 'A-100', 'Oat flakes 500 g', 1, 10, 'G', 'Mill', NULL, 1.2345, 0),
  (101, 'A-101', 'Tea', 1, 11, 'B', NULL, 'T1', 2, 1);
insert into losShopItemShipmentDetail values (100, 1, 1, 2.5, 2.25), (100, 1, NULL, 3, 2.75),
  (101, 1, NULL, 4.125, NULL);
insert into mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid, SRHremarks,
  srhtype) values
  (1, 1, 'GR/9', '20240310', 2, 'for Easter', 'r'), (2, 1, 'GR/10', '20240325', 2, NULL, 'r'),
  (3, 1, 'S1', '20240325', 3, '', 's');
insert into mesRequesttoShopDetail values (1, 1, 100, 2, 123456789012345678.125, 0, 0), (1, 1, 101, 2, 2, 0.5, 1.25);
