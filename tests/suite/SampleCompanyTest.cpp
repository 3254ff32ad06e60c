// What everybody may rely on in the sample company.
#include "sandbox/data/SampleCompany.h"
#include "sandbox/data/SchemaText.h"
#include "tests/suite/SampleCopy.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class SampleCompany : public testing::Test {
protected:
    SampleCopy company;

    int count(const std::string& fromWhere) { return company.number("select count(*) from " + fromWhere); }
};

std::vector<std::string> statements() {
    std::vector<std::string> all;
    sandbox::writeSampleCompany([&](const std::string& statement) { all.push_back(statement); });
    return all;
}

} // namespace

TEST(SampleData, IsTheSameEachTime) { EXPECT_EQ(statements(), statements()); }

TEST(SampleData, CheckDigitsAreThoseOfBarcodesWorkedOutByHand) {
    // Weights 1 and 3 in turn, filled up to the next ten.
    for (const char* code : {"2012345678903", "2999999999991", "2901000000015", "0000000000000"})
        EXPECT_EQ(sandbox::ean13CheckDigit(code), code[12]) << code;
}

TEST_F(SampleCompany, HasTheRowsThatItPromises) {
    EXPECT_EQ(count("aShops"), 8);
    EXPECT_EQ(count("aShops where ActiveShop=0"), 1);
    EXPECT_EQ(company.rows("select shopid from aShops where substring(futurevarchar,1,1)='B'"), (RowTexts{{"6"}}));
    EXPECT_EQ(count("aitem"), sandbox::kSampleItems);
    EXPECT_EQ(company.value("select count(distinct ItemDescription) from aitem"),
              std::to_string(sandbox::kSampleItems));
    EXPECT_EQ(company.value("select count(distinct itemcode) from aitem"), std::to_string(sandbox::kSampleItems));
    EXPECT_EQ(count("aitemcategory"), 12);
    EXPECT_EQ(count("mesRequesttoShopHeader"), sandbox::kSampleRequests);
    EXPECT_EQ(count("aFinancialYear"), 2);
    EXPECT_EQ(count("aFinancialYear where CurFinancialYear=1 and StartDate<='20260331' and EndDate>='20260331'"), 1);
    EXPECT_EQ(
        company.rows(
            "select userid,FunctionRights from louserrights where interfaceid=1507 and companyid=1 order by userid"),
        (RowTexts{{"1", "NEDP"}, {"2", "NEP"}, {"3", "ADMIN"}}));
    EXPECT_EQ(company.value("select columnheader from atables t,atablecolumns tc where t.tableid = tc.tableid and "
                            "tablename ='mesRequesttoShopHeader,ashops'"),
              "Request Id");
    EXPECT_EQ(count("atablecolumns"), 9);
    for (const char* some : {"aitem where itemtype='B'", "aitem where Active=0", "aitempackingdetail where Active=0",
                             "aitem where PriceFixedAtHq=1", "ashopitemdetail where shortcutno>999"})
        EXPECT_GT(count(some), 5) << some;
}

TEST_F(SampleCompany, BarcodesAreValidAndUnique) {
    std::set<std::string> seen;
    for (const auto& row : company.rows("select packingbarcode from aitempackingdetail")) {
        const std::string& code = row[0];
        ASSERT_EQ(code.size(), 13u) << code;
        ASSERT_EQ(code.find_first_not_of("0123456789"), std::string::npos) << code;
        EXPECT_EQ(code.substr(0, 2), "29") << "given out in the store";
        EXPECT_EQ(sandbox::ean13CheckDigit(code), code[12]) << code;
        EXPECT_TRUE(seen.insert(code).second) << code << " twice";
    }
    EXPECT_GT(seen.size(), 4000u);
}

TEST_F(SampleCompany, EachShopHasWhatTheModuleReads) {
    for (int shop = 1; shop <= sandbox::kSampleShops; ++shop) {
        const std::string id = std::to_string(shop);
        for (const std::string& needed :
             {"LOsSettings where sNoofBackDays=60 and ShopID=" + id,
              "vwshopCloseDate where closedate<'20260130' and shopid=" + id,
              "ashopprintmessages where transtype='POSPO' and shopid=" + id, "ashopitemcategory where shopid=" + id,
              "ashopitemdetail where shortcutno is not null and shopid=" + id,
              "acity c, acountrymaster co, aShops s where s.cityid=c.cityid and s.countryid=co.countryid and "
              "s.shopid=" +
                  id,
              "aDepartmentMaster a, aShops b where a.departmentID=b.departmentID and a.CompanyID=b.CompanyID and "
              "b.shopid=" +
                  id}) {
            if (shop == sandbox::kGardenShop && needed.find("shortcutno") != std::string::npos) continue;
            EXPECT_GT(count(needed), 0) << needed;
        }
        EXPECT_EQ(count("loUsers where shopid=" + id), 4);
        EXPECT_EQ(
            company.rows(
                "select InterfaceID,Prefix from aPrefix p, aFinancialYear y where p.FinancialId=y.FinancialId and "
                "CurFinancialYear=1 and shopid=" +
                id + " order by InterfaceID"),
            (RowTexts{{"1507", "GR/"}, {"1611", "IS/"}}));
        EXPECT_EQ(count("ashopitemdetail where shopid=" + id + " and shortcutno is not null"),
                  company.number("select count(distinct shortcutno) from ashopitemdetail where shopid=" + id))
            << "a shortcut number names one item";
    }
    EXPECT_EQ(count("ashopitemdetail where shortcutno<1 or shortcutno>9999"), 0);
    EXPECT_EQ(count("ashopitemcategory a, ashopitemcategory b where a.shopid=8 and b.shopid<>8 and "
                    "a.itemcategoryid=b.itemcategoryid"),
              0)
        << "the garden centre shares no category";
}

TEST_F(SampleCompany, ItemsOfEachKindCanBeFoundPricedAndRefused) {
    const auto call = [&](int shop, int item) {
        return company.rows("spSellingPriceFetch 1," + std::to_string(shop) + ",0," + std::to_string(item) + ",1,1,1");
    };
    EXPECT_EQ(call(1, 1), (RowTexts{{"1.15", "0.97"}})) << "the head office's price where the shop has none";
    EXPECT_EQ(call(7, 1), (RowTexts{{"1.18", "1"}})) << "the shop's own";
    EXPECT_TRUE(call(1, 250).empty()) << "an item without a price";
    EXPECT_GT(count("aitem a where not exists (select d.shopid from ashopitemdetail d where d.itemid=a.itemid and "
                    "d.shopid<>1) and "
                    "exists (select e.shopid from ashopitemdetail e where e.itemid=a.itemid and e.shopid=1)"),
              20)
        << "items of one shop only";
    EXPECT_EQ(
        count("aitem a where not exists (select p.packingtypeid from aitempackingdetail p where p.itemid=a.itemid)"),
        0);
    EXPECT_GT(count("aitempackingdetail p, aitem a where p.itemid=a.itemid and not exists (select c.packingtypeid from "
                    "apackingtypecapacitydetail c where c.packingtypeid=p.packingtypeid and c.unitsid=a.UnitsId)"),
              5)
        << "packings without a capacity";
}

TEST_F(SampleCompany, RequestsAreAsTheModuleWouldHaveStoredThem) {
    EXPECT_EQ(count("mesRequesttoShopHeader where srhrequestdate<'20260130' or srhrequestdate>'20260331'"), 0);
    EXPECT_GT(count("mesRequesttoShopHeader where srhshopid=1"), sandbox::kSampleRequests / 2);
    for (const char* some : {"srhtype='r'", "srhtype='s'", "SRHcancelled=1", "srhTransfinished=1", "srhused=1"})
        EXPECT_GT(count(std::string("mesRequesttoShopHeader where srhshopid=1 and ") + some), 5) << some;
    EXPECT_EQ(
        count("mesRequesttoShopHeader where SRHcancelled=1 and (srhcancelledRemarks is null or srhTransfinished=1)"),
        0);
    EXPECT_EQ(count("mesRequesttoShopHeader where srhused=1 and srhTransfinished=0"), 0);
    EXPECT_EQ(count("mesRequesttoShopHeader where srhtoShopid=srhshopid"), 0);
    EXPECT_EQ(
        count("mesRequesttoShopHeader h where srhNoofDetails<>(select count(*) from mesRequesttoShopDetail d where "
              "d.srdrequestid=h.srhrequestid and d.srdshopid=h.srhshopid)"),
        0);
    EXPECT_EQ(count("mesRequesttoShopHeader where srhNoofDetails<1 or srhNoofDetails>15"), 0);
    EXPECT_EQ(count("mesRequesttoShopDetail d, mesRequesttoShopHeader h where d.srdrequestid=h.srhrequestid and "
                    "d.srdshopid=h.srhshopid and d.srdtoshopid<>h.srhtoShopid"),
              0);
    EXPECT_EQ(count("mesRequesttoShopDetail d where not exists (select i.itemid from ashopitemdetail i where "
                    "i.itemid=d.srditemid "
                    "and i.shopid=d.srdshopid) or not exists (select j.itemid from ashopitemdetail j where "
                    "j.itemid=d.srditemid and j.shopid=d.srdtoshopid)"),
              0)
        << "both shops carry every item of a request";
    EXPECT_EQ(count("mesRequesttoShopHeader a, mesRequesttoShopHeader b where a.srhshopid=b.srhshopid and "
                    "a.srhrequestid=b.srhrequestid-1 and a.srhrequestdate>b.srhrequestdate"),
              0)
        << "ids follow the dates";
}
