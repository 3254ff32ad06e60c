// What the server is sent on the road of one request: other programs of the suite, and triggers and traces at the sites,
// know these statements by their text, so each blank counts.
#include "tests/support/Shop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using support::CompanyFile;
using support::SampleItem;
using support::Shop;

TEST(Statements, AreSentLetterForLetter) {
    const CompanyFile company;
    // The period of the sample shop: sixty days before its processing date.
    const std::string from = "20260130";
    const std::vector<SampleItem> items = support::requestableItems(company, 1, 2, 3);
    Shop shop(company);
    auto& user = shop.user;
    shop.opens();
    user.clicks("cmdnew");
    shop.picksShop(2);
    user.focuses("lvwrequest");
    user.types("\r");
    const std::string codes[] = {items[0].barcode, items[1].code, items[2].shortcut};
    for (const std::string& code : codes) user.types(code + "\r4\r\r\r");
    user.presses(forms::kKeyEscape);
    user.clicks("cmdOk");
    ASSERT_EQ(user.form(), "frmMaster");
    const std::vector<std::string> stored = user.grid("flexMaster").back();
    const std::string& id = stored[0];
    user.clicks("CmdEdit");
    user.clicks("cmdOk");
    ASSERT_EQ(user.form(), "frmMaster");
    ASSERT_EQ(shop.errors(), std::vector<std::string>{});

    const std::vector<std::string> sent = shop.statements();
    const std::string list =
        " select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname,  case sRHcancelled when 1 then 'Yes' when 0 then 'No' end"
        " Cancelled,sRHremarks,  srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed, shopid from"
        " mesRequesttoShopHeader,ashops where mesrequesttoshopheader.srhtoShopid=ashops.shopid and  srhrequestdate >='" +
        from + "' and srhShopid=1 and srhtype ='r' ";
    const std::string carried =
        " Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where ShopId=1 intersect"
        " select ItemCategoryId from aShopItemCategory where ShopId=2) and a.ItemId in (select ItemId from aShopItemDetail"
        " where ShopId=1 intersect select ItemId from aShopItemDetail where ShopId=2) and a.itemid=";
    for (const std::string& statement : {
             // Register.
             list + "order by sRHrequestID ",
             list + " and  srhrequestid =" + id,
             std::string("select tc.columnheader,tc.columnname from atables t,atablecolumns tc where t.tableid = tc.tableid"
                         " and tablename ='mesRequesttoShopHeader,ashops'"),
             std::string("select functionrights from louserrights where userid = 1 and interfaceid = 1507 and companyid = 1"),
             // Editor.
             std::string("select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader where  "
                         " ltrim(rtrim(upper(lvwtransname)))='FRMREQUEST' and ltrim(rtrim(upper(lvwname)))='LVWREQUEST' and"
                         " ltrim(rtrim(upper(lvwmodulename)))='SHOPTOSHOPTRANSFER')"),
             "select a.srditemid, a.srdgoodqty, a.srdbadQty,  a.srdSellingprice, c.ItemDescription, u.UnitCode  from"
             " mesRequesttoShopdetail a, aitem b, vwItemDescription c, aUnit u  where a.srditemid = b.itemid and c.itemid ="
             " b.itemid  and b.UnitsID = u.UnitId and a.srdrequestid = " + id + " and srdshopid = 1",
             // Saving.
             std::string("select SRHrequestID from mesRequesttoShopHeader where srhrequestno='' and srhshopid=1"),
             std::string("SELECT Prefix FROM aPrefix WHERE InterfaceID = 1507 AND FinancialId = (Select FinancialId from"
                         " aFinancialYear where CurFinancialYear = 1)  and shopid=1"),
             std::string("Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from"
                         " mesRequesttoShopHeader where srhshopid = 1 and len(SRHrequestNo)>len('GR/') and "
                         " isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1 and"
                         " substring(SRHrequestNo,1,len('GR/'))='GR/'"),
             std::string("select * from mesRequesttoShopHeader"),
             std::string("select CURRENT_TIMESTAMP"),
             "select * from mesRequesttoShopHeader where srhrequestid=" + id + " and srhShopid=1",
             "Update mesRequesttoShopHeader set updatetime=getdate() where srhrequestid=" + id + "  and srhShopid=1",
             "delete mesRequesttoShopdetail where srdrequestid=" + id + " and srdshopid = 1",
             // Line entry: by barcode, by item code, by shortcut number.
             "select apd.itemid from aitempackingdetail apd, aitem a  where apd.packingbarcode='" + items[0].barcode +
                 "'  and apd.itemid = a.itemid and a.itemtype <>'B' and apd.Active = 1 and a.Active = 1",
             "select a.itemid from aitem a where itemcode = '" + items[1].code + "' and a.itemtype <>'B' and a.Active = 1",
             "select ai.itemid from ashopitemDetail ai, aitem a Where a.itemid = ai.itemid and  ai.itemID = ai.itemID And"
             " ai.shortcutno = " + items[2].shortcut + " And shopid = 1  and a.itemtype <>'B' And a.Active = 1",
             "select a.itemid, v.itemdescription, a.itemcode  from aitem a inner join vwItemDescription v on"
             " a.ItemId=v.ItemId" + carried + items[0].id,
             std::string("select a.departmentID,a.DepCurrencyID from aDepartmentMaster a,aShops b Where a.departmentID ="
                         " b.departmentID And a.CompanyID = b.CompanyID and b.shopid=1"),
             "select Packingtypeid from vwitemretailpacking where itemid=" + items[0].id,
             "spSellingPriceFetch 1,1,0," + items[0].id + ",1,1,1",
             "select ad.packingtypeid ,PackingTypeName,'' as qty from aitempackingdetail ad,apackingtype ap,"
             " apackingtypecapacitydetail ac,aitem ai where ad.itemid = " + items[0].id +
                 " and ad.packingtypeid=ap.packingtypeid and ad.itemid=ai.itemid and  ac.unitsid=ai.unitsid and"
                 " ac.packingtypeid=ad.packingtypeid and ad.active=1",
             "select isnull(pk.quantity,0) qty from apackingtypecapacitydetail pk, aitem a where  a.itemid =" + items[0].id +
                 " and pk.packingtypeid=1 and a.unitsid=pk.unitsid",
         })
        EXPECT_GT(std::ranges::count(sent, statement), 0) << statement;
}

// Between the transaction's begin and its end stands nothing that waits for a person or that a till does not need.
TEST(Statements, OfASaveStandInOneShortTransaction) {
    const CompanyFile company;
    const SampleItem item = support::requestableItems(company, 1, 2, 1).front();
    Shop shop(company);
    auto& user = shop.user;
    shop.opens();
    user.clicks("cmdnew");
    shop.picksShop(2);
    user.focuses("lvwrequest");
    user.types("\r");
    user.types(item.barcode + "\r4\r\r\r");
    user.presses(forms::kKeyEscape);
    user.clicks("cmdOk");
    ASSERT_EQ(user.form(), "frmMaster");

    const std::vector<std::string> all = shop.statements();
    const auto begin = std::ranges::find(all, "BEGIN TRANSACTION");
    const auto end = std::ranges::find(all, "COMMIT TRANSACTION");
    ASSERT_LT(begin, end);
    ASSERT_NE(end, all.end());
    std::vector<std::string> verbs;
    for (auto statement = begin + 1; statement != end; ++statement)
        verbs.push_back(statement->substr(0, statement->find(' ')));
    // Existing number, next id, prefix, highest number, user name, header, server's clock; header, line and audit rows.
    EXPECT_EQ(std::ranges::count_if(verbs, [](const std::string& v) { return v == "insert" || v == "INSERT"; }), 3);
    EXPECT_LE(verbs.size(), 10u);
}

} // namespace
