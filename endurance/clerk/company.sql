-- What the random clerks' company holds. Shops, users, items and requests have numbers of their own ranges; request ids
-- repeat between shops. The first four digits of the barcodes are shortcut numbers. Item 199 has left the master tables.
insert into acompanymaster values (7,'Brackenway','House','Street','Vale','0');
insert into acountrymaster values (44,'United Kingdom'); insert into acity values (81,'Netherfold',44);
insert into acurrencymaster values (31,'Pound','P');
insert into aDepartmentMaster values (12,7,'Retail',31);
insert into aShops values
 (3,'North',1,'G','a',81,44,'1','2',12,7,0,0),(5,'South',1,'G','a',81,44,'1','2',12,7,1,0),
 (6,'Quay',1,'G','a',81,44,'1','2',12,7,0,0),(9,'Closed',0,'G','a',81,44,'1','2',12,7,0,0);
insert into aitemcategory values (61,'Metal'),(62,'Small'),(63,'Light');
insert into ashopitemcategory values (3,61),(3,62),(3,63),(5,61),(5,62),(6,61),(9,61);
insert into aUnit values (41,'PCS','Piece'),(42,'KG','Kilogram');
insert into aitem (itemid,itemcode,ItemDescription,UnitsId,itemcategoryid,itemtype,Active) values
 (101,'BOLT','Bolt M8',41,61,'G',1),(102,'NUT','Nut M8',41,61,'G',1),(103,'ROPE','Rope, white',42,61,'G',1),
 (104,'CLAMP','Clamp O''Neil',41,61,'G',1),(105,'WASH','Washer',41,62,'G',1),(106,'GLUE','Glue',41,61,'G',1),
 (107,'OLD','Old lamp',41,61,'G',0),(108,'LAMP','Lamp',41,63,'G',1),(109,'WIRE','Wire',42,61,'G',1),
 (110,'TRADE','Trade paint',41,61,'B',1),(111,'TAPE','Tape',41,61,'G',1);
insert into apackingtype values (51,'Single'),(52,'Box of 12'),(53,'Sack 25'),(54,'Stand');
insert into apackingtypecapacitydetail values (51,41,1),(52,41,12),(51,42,1),(53,42,25);
insert into ashopitemdetail values
 (3,101,1,4,4712),(3,102,1,2.5,11),(3,103,1,6,12),(3,104,1,1,13),(3,105,1,8,4711),(3,106,1,3,14),(3,107,1,3,15),
 (3,108,1,3,16),(3,110,1,3,17),(3,111,1,0,18),(5,101,1,5,4711),(5,102,1,7,11),(5,103,1,9,13),(5,104,1,2,12),
 (5,105,1,4,14),(5,106,1,2,4712),(5,109,1,4,16),(5,110,1,3,17),(5,111,1,1,18),(6,101,1,3,11),(6,102,1,2,4711),
 (6,103,1,2,12),(6,104,1,2,13),(6,106,1,2,14),(6,109,1,4,16),(6,111,1,1,18);
insert into losShopItemShipmentDetail values
 (101,51,null,10.127,8.114),(101,51,3,11.5,9.25),(102,51,null,2.2,1.8),(103,51,null,3.3,2.7),(103,51,5,3.4,2.9),
 (104,51,null,7.77,6.66),(105,51,null,0.5,0.4),(109,51,null,1.1,0.9),(110,51,null,20,15),(111,51,null,4.4,4);
insert into losShopDayClose values (3,'20251231'),(5,'20251231'),(6,'20251231');
insert into loUsers values
 (21,3,'Ann of North'),(21,5,'Ann of South'),(21,6,'Ann of Quay'),(22,3,'Ben of North'),(22,5,'Ben of South'),
 (22,6,'Ben of Quay'),(23,3,'Cy'),(23,5,'Cy S'),(23,6,'Cy Q'),(24,3,'Di'),(24,5,'Di S'),(24,6,'Di Q'),
 (25,3,'Eve the long-named of North'),(25,5,'Eve of South'),(25,6,'Eve of Quay');
insert into louserrights values
 (21,1507,7,'NEPD'),(21,1611,7,'nepd '),(21,1700,7,'NEPD'),(22,1507,7,'NE'),(22,1611,7,'NE'),(22,1700,7,'NE'),
 (23,1507,7,'P'),(23,1611,7,'P'),(23,1700,7,'P'),(24,1507,7,'ADMIN'),(24,1611,7,'ADMIN'),(24,1700,7,'ADMIN');
insert into aFinancialYear values (71,'before','20240401','20250331',0),(72,'now','20250401','20260331',1);
insert into aPrefix values (1507,72,3,'GR/'),(1611,72,3,'IS/'),(1507,72,5,'S5-'),(1611,72,5,'T5-'),(1507,71,3,'OLD/');
insert into aPAckageSettings values (0,0,0); insert into miscsettings values (0); insert into aalias values (1,'Outlet');
insert into LOsSettings values (3,60,'ItemDescription'),(5,60,'ItemCode'),(6,60,null);
insert into atables values (91,'mesRequesttoShopHeader,ashops');
insert into atablecolumns values (91,1,'a','Id'),(91,2,'b','Request No'),(91,3,'c','Request Date'),(91,4,'d','Shop Name'),
 (91,5,'e','Cancelled'),(91,6,'f','Remarks'),(91,7,'g','Used'),(91,8,'h','Confirmed'),(91,9,'i','Shop Id');
insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhtoShopid,srhNoofDetails,srhtype,
 srhTransfinished,srhused,SRHcancelled,srhrequestdate) values
 (2,3,'GR/4',5,2,'r',0,0,0,'20260320'),(3,3,'GR/7',5,1,'r',1,0,0,'20260320'),(4,3,'GR/8',5,3,'r',0,0,0,'20260320'),
 (5,3,'IS/3',5,2,'s',0,0,0,'20260320'),(6,3,'GR/10',6,1,'r',0,0,1,'20260320'),(7,3,'GR/11',5,2,'r',0,1,0,'20260320'),
 (8,3,'IS/4',6,1,'s',0,0,0,'20260320'),(9,3,'GR/12',5,2,'r',0,0,0,'20260320'),(2,5,'S5-2',3,1,'r',1,0,0,'20260320'),
 (4,5,'S5-3',3,2,'r',1,1,0,'20260320'),(5,5,'T5-1',6,2,'s',0,0,0,'20260320'),(8,5,'S5-9',3,1,'r',0,0,0,'20260320');
update mesRequesttoShopHeader set SRHremarks='as agreed',srhrecaddUser='Ann of North';
insert into mesRequesttoShopDetail values
 (2,3,101,5,4.5,1,0),(2,3,103,5,6.5,1,0),(3,3,101,5,4.5,1,0),(4,3,105,5,1.5,1,0),(4,3,102,5,5.5,0,0),
 (4,3,104,5,7.5,0,0),(5,3,101,5,4.5,1,5.25),(5,3,102,5,5.5,0,5.25),(6,3,101,6,4.5,1,0),(7,3,103,5,6.5,1,0),
 (7,3,104,5,7.5,0,0),(8,3,103,6,6.5,1,5.25),(9,3,101,5,4.5,1,0),(9,3,199,5,4.5,1,0),(2,5,102,3,5.5,0,0),
 (4,5,101,3,4.5,1,0),(4,5,102,3,5.5,0,0),(5,5,109,6,5.5,1,5.25),(5,5,103,6,6.5,1,5.25),(8,5,105,3,1.5,1,0);
insert into aitempackingdetail values
 (101,51,'47111011',1,1),(101,52,'47121012',0,1),(102,51,'47111021',1,1),(102,52,'47121022',0,0),
 (103,51,'47111031',1,1),(103,53,'47121032',0,1),(104,51,'47111041',1,1),(104,52,'47121042',0,1),
 (105,51,'47111051',1,1),(105,52,'47121052',0,1),(106,51,'47111061',1,1),(106,52,'47121062',0,1),
 (107,51,'47111071',1,1),(107,52,'47121072',0,1),(108,51,'47111081',1,1),(108,52,'47121082',0,1),
 (109,51,'47111091',1,1),(109,53,'47121092',0,1),(110,51,'47111101',1,1),(110,52,'47121102',0,1),
 (111,51,'47111111',1,1),(111,52,'47121112',0,1);
