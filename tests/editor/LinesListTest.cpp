// The editor's list of lines: keys, mouse, menu, tool tips, deletion, and what other screens ask of it.
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using Names = std::vector<std::string>;

class LinesList : public testing::Test {
protected:
    CompanyFile company;
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 4);
    Till till{company};

    forms::ListView& list() { return till.module.request().lvwrequest; }
    /// Line entry is up for a new line, or for the line at `row`.
    void expectEntry(int row) {
        ASSERT_EQ(till.user.form(), "frmRequestDetail");
        EXPECT_EQ(till.module.session.strLineMode, row == 0 ? "N" : "E");
        EXPECT_EQ(till.user.text("cboItem"), row == 0 ? "" : list().item(row).subItem(2));
        EXPECT_EQ(till.module.request().CurrentLineIndex, row == 0 ? list().count() : row);
        till.user.clicks("cmdCancel");
    }
};

TEST_F(LinesList, KeysAndMouseReachLineEntry) {
    till.newRequest();
    till.user.focuses("lvwrequest");
    till.user.types("\r"); // nothing to change yet
    expectEntry(0);
    till.user.doubleClicks("lvwrequest");
    EXPECT_EQ(till.user.form(), "frmRequest");
    till.user.presses(forms::kKeyDelete);
    EXPECT_FALSE(till.user.message());
    till.user.presses(forms::kKeyF10);
    expectEntry(0);

    till.enters({items[0], items[1], items[2]});
    till.user.selectsRow("lvwrequest", 2);
    till.user.types("\r");
    expectEntry(2);
    till.user.doubleClicks("lvwrequest");
    expectEntry(2);
    till.user.presses(forms::kKeyF10);
    expectEntry(2);
    till.user.types("\n");
    expectEntry(0);

    // Lines without any quantity are as good as none to F10.
    till.user.happens([this] {
        for (int i = 1; i <= 3; ++i) list().item(i).setSubItem(goodsreq::kLineGoodQty, "0.000");
    });
    till.user.presses(forms::kKeyF10);
    expectEntry(0);
    till.user.types("\r");
    expectEntry(2);
}

TEST_F(LinesList, DeletionAsksAndRenumbers) {
    till.newRequest();
    till.enters({items[0], items[1], items[2]});
    till.user.selectsRow("lvwrequest", 2);
    const std::string question = "Are you sure you want to delete \r" + items[1].description;
    till.user.presses(forms::kKeyDelete);
    ASSERT_TRUE(till.user.message());
    EXPECT_EQ(till.user.message()->defaultAnswer, Answer::no);
    till.user.answers(question, Answer::no);
    EXPECT_EQ(till.column(0), (Names{"1", "2", "3"}));
    till.user.rightClicks("lvwrequest");
    till.user.choosesMenu("mnudel");
    till.user.answers(question, Answer::yes);
    EXPECT_EQ(till.column(0), (Names{"1", "2"}));
    EXPECT_EQ(till.column(2), (Names{items[0].description, items[2].description}));
    EXPECT_EQ(list().selectedIndex(), 2) << "at its place";
    till.user.presses(forms::kKeyDelete);
    till.user.answers(Answer::yes);
    EXPECT_EQ(list().selectedIndex(), 1);
}

TEST_F(LinesList, DeletingFromAStoredRequestIsNoChangeOfALineOnItsOwn) {
    CompanyFile file;
    storeRequest(file, items);
    Till other(file);
    other.editRequest(kStored);
    other.user.selectsRow("lvwrequest", 1);
    other.user.presses(forms::kKeyDelete);
    other.user.answers(Answer::yes);
    EXPECT_EQ(other.user.list("lvwrequest").size(), 2u);
    other.user.clicks("cmdCancel"); // not asked
    EXPECT_EQ(other.user.form(), "frmMaster");
}

TEST_F(LinesList, TheOnlyLineOfARequestIsLoadedChangedAndDeleted) {
    CompanyFile file;
    storeRequest(file, items, "delete mesRequesttoShopDetail where srdrequestid = 900 and srditemid <> " + items[2].id);
    Till other(file);
    other.editRequest(kStored);
    EXPECT_EQ(other.user.list("lvwrequest"), (Rows{{"1", items[2].code, items[2].description, "6.000", "0.500",
                                                    items[2].id, "0.000", items[2].unit}}));
    other.user.focuses("lvwrequest");
    other.user.types("\r");
    EXPECT_EQ(other.user.text("cboItem"), items[2].description);
    other.user.clicks("cmdCancel");
    other.user.presses(forms::kKeyDelete);
    other.user.answers(Answer::yes);
    EXPECT_TRUE(other.user.list("lvwrequest").empty());
    EXPECT_EQ(other.module.request().lvwrequest.selectedIndex(), 0);
    other.user.clicks("cmdOk");
    other.user.answers("Atleast one detail needed", Answer::ok);
    EXPECT_EQ(other.errors(), Names{});
}

TEST_F(LinesList, TheMenuOffersWhatCanBeDone) {
    const auto states = [this] {
        till.user.rightClicks("lvwrequest");
        std::string text;
        for (const forms::MenuItem& item : till.user.menu()) text += (item.enabled ? "+" : "-") + item.caption + " ";
        till.user.dismissesMenu();
        return text;
    };
    till.newRequest(0);
    EXPECT_EQ(states(), "-&Add\tCtrl+Enter -&Edit\tEnter -&Delete\tDel +&Cancel ");
    till.picksShop(kSupplier);
    EXPECT_EQ(states(), "+&Add\tCtrl+Enter -&Edit\tEnter -&Delete\tDel +&Cancel ");
    till.enters({items[0]});
    EXPECT_EQ(states(), "+&Add\tCtrl+Enter +&Edit\tEnter +&Delete\tDel +&Cancel ");
    till.user.happens([this] { forms::input::mouseDown(list(), {forms::MouseButton::left}); });
    EXPECT_TRUE(till.user.menu().empty());
    till.user.rightClicks("lvwrequest");
    till.user.choosesMenu("mnuAdd");
    expectEntry(0);
    till.user.rightClicks("lvwrequest");
    till.user.choosesMenu("mnuEdit");
    expectEntry(1);
    till.user.rightClicks("lvwrequest");
    till.user.choosesMenu("mnuCancel");
    EXPECT_EQ(till.user.form(), "frmRequest");
}

TEST_F(LinesList, AClickedLineTellsItsQuantityAndItsWholeName) {
    till.newRequest();
    till.addsLines();
    till.line(items[0], "12345.5");
    till.user.clicks("cmdCancel");
    till.user.selectsRow("lvwrequest", 1);
    EXPECT_EQ(list().item(1).toolTip(3), "12,345.500");
    EXPECT_EQ(list().item(1).toolTip(2), items[0].description);
    EXPECT_EQ(list().item(1).toolTip(1), "");
    list().item(1).setSubItem(3, "2.000");
    EXPECT_EQ(list().item(1).toolTip(3), "");
    EXPECT_EQ(list().item(1).toolTip(2), items[0].description);
}

TEST_F(LinesList, AQuantityThatIsPastedWithACommaIsGoneOnWithBehindIt) {
    till.desktop.userLocale.decimalSeparator = ',';
    till.newRequest();
    till.addsLines();
    till.user.focuses("txtQuantity");
    till.user.pastes(" 2,5");
    till.user.types("5");
    EXPECT_EQ(till.user.text("txtQuantity"), "2.55");
}

TEST_F(LinesList, KnowsWhetherTheSupplyingShopCarriesAnItem) {
    const std::string notThere =
        company.value("select top 1 itemid from ashopitemdetail where shopid = 1 and itemid not in"
                      " (select itemid from ashopitemdetail where shopid = 2) order by itemid");
    till.newRequest();
    goodsreq::frmRequest& editor = till.module.request();
    bool common = false, missing = true, told = true;
    till.user.happens([&] {
        common = editor.PresentInCurrentShop(std::stoi(items[0].id), true);
        missing = editor.PresentInCurrentShop(std::stoi(notThere), false);
    });
    EXPECT_TRUE(common);
    EXPECT_FALSE(missing);
    till.user.happens([&] { told = editor.PresentInCurrentShop(std::stoi(notThere), true); });
    till.user.answers("Item not in shop 2", Answer::ok);
    EXPECT_FALSE(told);
}

TEST_F(LinesList, SuggestsWhatIsOrderedAboveTheShopsWholeStock) {
    CompanyFile file;
    // Of the shop's items three are left, for speed.
    file.change(
        "delete ashopitemdetail where shopid = 1 and itemid not in (" + items[0].id + "," + items[1].id + "," +
        items[2].id + ");delete losShopItemStock where shopid = 1;insert into losShopItemStock values (1," +
        items[0].id +
        ",20);update ashopitemdetail set ItemReorderLevel = 20 where shopid = 1;"
        "update ashopitemdetail set ItemReorderLevel = 20.001, ReorderQuantity = 7 where shopid = 1 and itemid = " +
        items[1].id);
    Till other(file);
    other.newRequest();
    other.user.happens([&] { other.module.request().FillReorderSuggestions(); });
    EXPECT_EQ(other.user.list("lvwrequest"),
              (Rows{{"1", "", items[1].description, "7", "0", items[1].id, "", items[1].unit}}));
    EXPECT_EQ(other.errors(), Names{});
}

} // namespace
