// One request from the empty editor to the stored rows, as a clerk enters it.
#include "tests/support/Shop.h"

#include <gtest/gtest.h>

namespace {

using forms::Answer;
using support::CompanyFile;
using support::Rows;
using support::SampleItem;
using support::Shop;

constexpr int kSupplier = 2;

struct Kind {
    const char* name;
    std::int32_t screenId;
    const char* type;
    const char* prefix;
};

class Road : public testing::TestWithParam<Kind> {
protected:
    CompanyFile company;
    Shop shop{company, {.screenId = GetParam().screenId}};
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 4);

    /// From the quantity box over the bad quantity (and the price) to OK.
    void entersQuantity(const std::string& quantity) {
        EXPECT_EQ(shop.user.focus(), "txtQuantity");
        shop.user.types(quantity + "\r\r");
        if (shop.user.focus() == "txtsellingprice") shop.user.types("\r");
        EXPECT_EQ(shop.user.focus(), "cmdOk");
        shop.user.types("\r");
        EXPECT_EQ(shop.user.focus(), "txtBarcode");
    }

    Rows lines(const std::string& id) const {
        return company.rows("select srditemid, srdgoodqty, srdtoshopid from mesRequesttoShopDetail where srdshopid = 1 and"
                            " srdrequestid = " + id + " order by srditemid");
    }
};

TEST_P(Road, ARequestIsEnteredStoredAndChanged) {
    auto& user = shop.user;
    shop.opens();
    ASSERT_EQ(user.form(), "frmMaster");
    const std::size_t before = user.grid("flexMaster").size();
    ASSERT_GT(before, 1u);

    user.clicks("cmdnew");
    ASSERT_EQ(user.form(), "frmRequest");
    EXPECT_EQ(user.text("txtrequestDate"), "31/03/2026");
    shop.picksShop(kSupplier);
    user.enters("txtRemarks", "for the weekend");
    user.focuses("lvwrequest");
    user.types("\n");
    ASSERT_EQ(user.form(), "frmRequestDetail");
    EXPECT_EQ(user.focus(), "txtBarcode");
    user.types(items[0].barcode + "\r");
    entersQuantity("5");
    user.types(items[1].code + "\r");
    entersQuantity("2.5");
    user.types(items[2].shortcut + "\r");
    entersQuantity("7");
    user.presses(forms::kKeyEscape);
    ASSERT_EQ(user.form(), "frmRequest");
    ASSERT_EQ(user.list("lvwrequest").size(), 3u);
    user.clicks("cmdOk");

    ASSERT_EQ(user.form(), "frmMaster");
    const auto grid = user.grid("flexMaster");
    ASSERT_EQ(grid.size(), before + 1);
    const std::vector<std::string> row = grid.back();
    EXPECT_EQ(row[1].substr(0, 3), GetParam().prefix);
    EXPECT_EQ(row[2], "31/03/2026");
    EXPECT_EQ(row[4], "No");
    const std::string id = row[0];
    const std::string there = std::to_string(kSupplier);
    EXPECT_EQ(lines(id), (Rows{{items[0].id, "5", there}, {items[1].id, "2.5", there}, {items[2].id, "7", there}}));
    EXPECT_EQ(company.rows("select srhrequestno, srhtype, SRHremarks, srhNoofDetails, srhtoShopid from"
                           " mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " + id),
              (Rows{{row[1], GetParam().type, "for the weekend", "3", there}}));

    // The same request again: the second line's quantity changes.
    user.clicks("CmdEdit");
    ASSERT_EQ(user.form(), "frmRequest");
    EXPECT_EQ(user.text("txtRequestNo"), row[1]);
    ASSERT_EQ(user.list("lvwrequest").size(), 3u);
    user.focuses("lvwrequest");
    user.selectsRow("lvwrequest", 2);
    user.types("\r");
    ASSERT_EQ(user.form(), "frmRequestDetail");
    EXPECT_EQ(user.focus(), "txtQuantity");
    user.types("9\r\r\r");
    user.presses(forms::kKeyEscape);
    ASSERT_EQ(user.form(), "frmRequest");
    user.clicks("cmdOk");
    ASSERT_EQ(user.form(), "frmMaster");
    EXPECT_EQ(lines(id), (Rows{{items[0].id, "5", there}, {items[1].id, "9", there}, {items[2].id, "7", there}}));
    EXPECT_EQ(user.grid("flexMaster").size(), before + 1);

    user.clicks("CmdClose");
    EXPECT_TRUE(user.ended());
    EXPECT_EQ(shop.errors(), std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(Kinds, Road,
                         testing::Values(Kind{"shopRequest", 1507, "r", "GR/"}, Kind{"interDivision", 1611, "s", "IS/"}),
                         [](const auto& info) { return info.param.name; });

} // namespace
