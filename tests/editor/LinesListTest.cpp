// The editor's list of lines: keys, mouse, menu, tool tips, deletion, and what other screens ask of it.
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;

class LinesList : public EditorTest<3> {
protected:
    Till till{company};

    forms::ListView& list() { return till.lines(); }
    /// Line entry is up for a new line, or for the line at `row`.
    void expectEntry(int row) {
        ASSERT_EQ(till.user.form(), "frmRequestDetail");
        EXPECT_EQ(till.module.session.strLineMode, row == 0 ? "N" : "E");
        EXPECT_EQ(till.user.text("cboItem"), row == 0 ? "" : list().item(row).subItem(2));
        EXPECT_EQ(till.module.request().CurrentLineIndex, row == 0 ? list().count() : row);
        till.backToEditor();
    }
};

TEST_F(LinesList, KeysAndMouseReachLineEntry) {
    till.newRequest().user.focuses("lvwrequest").types("\r"); // nothing to change yet
    expectEntry(0);
    EXPECT_EQ(till.user.doubleClicks("lvwrequest").form(), "frmRequest");
    EXPECT_FALSE(till.user.presses(forms::kKeyDelete).message());
    till.user.presses(forms::kKeyF10);
    expectEntry(0);

    till.enters(items).user.selectsRow("lvwrequest", 2).types("\r");
    expectEntry(2);
    till.user.doubleClicks("lvwrequest");
    expectEntry(2);
    till.user.presses(forms::kKeyF10);
    expectEntry(2);
    till.user.types("\n");
    expectEntry(0);
    // Lines without any quantity are as good as none to F10.
    for (int i = 1; i <= 3; ++i) till.putsCell(i, goodsreq::kLineGoodQty, "0.000");
    till.user.presses(forms::kKeyF10);
    expectEntry(0);
    till.user.types("\r");
    expectEntry(2);
}

TEST_F(LinesList, DeletionAsksAndRenumbers) {
    const std::string question = "Are you sure you want to delete \r" + other.description;
    till.newRequest().enters(items).user.selectsRow("lvwrequest", 2).presses(forms::kKeyDelete);
    till.isAsked(question, Answer::no, Answer::no);
    EXPECT_EQ(till.column(0), (Names{"1", "2", "3"}));
    till.user.rightClicks("lvwrequest").choosesMenu("mnudel").answers(question, Answer::yes);
    EXPECT_EQ(till.column(0), (Names{"1", "2"}));
    EXPECT_EQ(till.column(2), (Names{items[0].description, items[2].description}));
    EXPECT_EQ(list().selectedIndex(), 2) << "at its place";
    till.user.presses(forms::kKeyDelete).answers(Answer::yes);
    EXPECT_EQ(list().selectedIndex(), 1);
    till.user.presses(forms::kKeyDelete).answers(Answer::yes);
    EXPECT_EQ(list().selectedIndex(), 0);
    till.oksAndReads("Atleast one detail needed");
}

TEST_F(LinesList, DeletingFromAStoredRequestIsNoChangeOfALineOnItsOwn) {
    storeRequest(company, items);
    till.editRequest(kStored).user.selectsRow("lvwrequest", 1).presses(forms::kKeyDelete).answers(Answer::yes);
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(till.user.clicks("cmdCancel").form(), "frmMaster"); // not asked
}

TEST_F(LinesList, TheMenuOffersWhatCanBeDone) {
    const auto states = [this] {
        std::string text;
        for (const auto& entry : till.user.rightClicks("lvwrequest").menu())
            text += (entry.enabled ? "+" : "-") + entry.caption + " ";
        till.user.dismissesMenu();
        return text;
    };
    till.newRequest(0);
    EXPECT_EQ(states(), "-&Add\tCtrl+Enter -&Edit\tEnter -&Delete\tDel +&Cancel ");
    till.picksShop(kSupplier);
    EXPECT_EQ(states(), "+&Add\tCtrl+Enter -&Edit\tEnter -&Delete\tDel +&Cancel ");
    till.enters({item});
    EXPECT_EQ(states(), "+&Add\tCtrl+Enter +&Edit\tEnter +&Delete\tDel +&Cancel ");
    till.user.happens([this] { forms::input::mouseDown(list(), {forms::MouseButton::left}); });
    EXPECT_TRUE(till.user.menu().empty());
    till.user.rightClicks("lvwrequest").choosesMenu("mnuAdd");
    expectEntry(0);
    till.user.rightClicks("lvwrequest").choosesMenu("mnuEdit");
    expectEntry(1);
    EXPECT_EQ(till.user.rightClicks("lvwrequest").choosesMenu("mnuCancel").form(), "frmRequest");
}

TEST_F(LinesList, AClickedLineTellsItsQuantityAndItsWholeName) {
    till.newRequest().addsLines().line(item, "12345.5").backToEditor().user.selectsRow("lvwrequest", 1);
    const auto tips = [this] {
        return Names{list().item(1).toolTip(1), list().item(1).toolTip(2), list().item(1).toolTip(3)};
    };
    EXPECT_EQ(tips(), (Names{"", item.description, "12,345.500"}));
    till.putsCell(1, 3, "2.000");
    EXPECT_EQ(tips(), (Names{"", item.description, ""}));
}

TEST_F(LinesList, KnowsWhetherTheSupplyingShopCarriesAnItem) {
    company.change("delete ashopitemdetail where shopid = 2 and itemid = " + other.id);
    till.newRequest().user.happens([&] {
        EXPECT_TRUE(till.module.request().PresentInCurrentShop(std::stoi(item.id), true));
        EXPECT_FALSE(till.module.request().PresentInCurrentShop(std::stoi(other.id), false));
    });
    EXPECT_EQ(till.said(), Names{}); // what it says where it is asked for, the scan dialog's test reads
}

TEST_F(LinesList, SuggestsWhatIsOrderedAboveTheShopsWholeStock) {
    // Of the shop's items three are left, for speed.
    company.change("delete ashopitemdetail where shopid = 1 and itemid not in (" + item.id + "," + other.id + "," +
                   items[2].id + ");delete losShopItemStock where shopid = 1;insert into losShopItemStock values (1," +
                   item.id +
                   ",20);update ashopitemdetail set ItemReorderLevel = 20, ReorderQuantity = 7 where shopid = 1;"
                   "update ashopitemdetail set ItemReorderLevel = 20.001 where shopid = 1 and itemid <> " +
                   item.id);
    till.newRequest().user.happens([&] { till.module.request().FillReorderSuggestions(); });
    EXPECT_EQ(till.user.rows("lvwrequest"),
              (Rows{{"1", "", other.description, "7", "0", other.id, "", other.unit},
                    {"2", "", items[2].description, "7", "0", items[2].id, "", items[2].unit}}));
}

} // namespace
