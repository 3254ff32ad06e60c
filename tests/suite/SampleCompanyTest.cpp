// What everybody may rely on in the sample company.
#include "sandbox/data/SampleCompany.h"
#include "tests/support/Till.h"

#include <gtest/gtest.h>

#include <set>

TEST(SampleData, CheckDigitsAreThoseOfBarcodesWorkedOutByHand) {
    // Weights 1 and 3 in turn, filled up to the next ten.
    for (const char* code : {"2012345678903", "2999999999991", "2901000000015", "0000000000000"})
        EXPECT_EQ(sandbox::ean13CheckDigit(code), code[12]) << code;
}

TEST(SampleData, HasTheRowsThatItPromises) {
    const support::CompanyFile company;
    const auto count = [&](const std::string& from) {
        return std::stoi(company.value("select count(*) from " + from));
    };
    EXPECT_EQ(count("aShops"), 8);
    EXPECT_EQ(count("mesRequesttoShopHeader"), sandbox::kSampleRequests);
    EXPECT_EQ(count("aFinancialYear where CurFinancialYear=1 and StartDate<='20260331' and EndDate>='20260331'"), 1);
    for (const char* column : {"ItemDescription", "itemcode"})
        EXPECT_EQ(company.rows(std::string("select distinct ") + column + " from aitem").size(),
                  std::size_t{sandbox::kSampleItems});
    for (const char* some : {"aitem where itemtype='B'", "aitem where Active=0", "aitempackingdetail where Active=0",
                             "aitem where PriceFixedAtHq=1", "ashopitemdetail where shortcutno>999"})
        EXPECT_GT(count(some), 5) << some;
}

TEST(SampleData, BarcodesAreValidAndUnique) {
    std::set<std::string> seen;
    for (const auto& row : support::CompanyFile().rows("select packingbarcode from aitempackingdetail")) {
        const std::string& code = row[0];
        ASSERT_EQ(code.size(), 13u) << code;
        ASSERT_EQ(code.find_first_not_of("0123456789"), std::string::npos) << code;
        EXPECT_EQ(code.substr(0, 2), "29") << "given out in the store";
        EXPECT_EQ(sandbox::ean13CheckDigit(code), code[12]) << code;
        EXPECT_TRUE(seen.insert(code).second) << code << " twice";
    }
    EXPECT_GT(seen.size(), 4000u);
}
