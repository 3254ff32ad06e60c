// What everybody may rely on in the sample company.
#include "sandbox/data/SampleCompany.h"
#include "tests/suite/SampleCopy.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class SampleCompany : public testing::Test {
protected:
    SampleCopy company;

    int count(const std::string& fromWhere) { return company.number("select count(*) from " + fromWhere); }
};

} // namespace

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
