// Combo boxes: when a choice is a Click, and what entries and text do to it. Lists: which line is the selected one, and
// lines that outlive their list.
#include "tests/forms/FormTest.h"

using namespace forms;
using automation::RunTimeError;

namespace {

class Combo : public FormTest {
protected:
    ComboBox& list = touch(*form).cboShop;
    ComboBox& box = form->cboFree;
    int clicks = 0, changes = 0;

    Combo() {
        for (ComboBox* combo : {&list, &box}) {
            for (const auto& [text, id] : {std::pair("Riverside", 11), {"Market Square", 12}, {"Station", 13}})
                combo->addItem(text, id);
            combo->onClick = [this] { ++clicks; };
            combo->onChange = [this] { ++changes; };
        }
    }
};

class List : public FormTest {
protected:
    ListView& list = touch(*form).lvwLines;
};

} // namespace

TEST_F(Combo, ClickComesOnlyWithAnotherEntry) {
    const std::tuple<int, int, const char*> steps[] = {
        {-1, 0, ""}, {0, 1, "Riverside"}, {0, 1, "Riverside"},    {2, 2, "Station"},
        {-1, 2, ""}, {2, 3, "Station"},   {1, 4, "Market Square"}};
    for (const auto& [index, clicksUntilThen, text] : steps) {
        list.setListIndex(index);
        EXPECT_EQ(clicks, clicksUntilThen) << index;
        EXPECT_EQ(list.text(), text);
    }
    EXPECT_THROW(list.setListIndex(3), RunTimeError);
    EXPECT_THROW(list.itemData(-1), RunTimeError);
    // The choice stays on its entry when entries come and go.
    list.insertItem(0, "Harbour", 10);
    EXPECT_EQ(list.newIndex(), 0);
    EXPECT_EQ(list.selectedData(), 12);
    list.removeItem(0);
    EXPECT_EQ(list.selectedData(), 12);
    list.removeItem(list.listIndex());
    EXPECT_FALSE(list.hasSelection());
    EXPECT_EQ(list.text(), "");
    list.clear();
    EXPECT_EQ(list.listCount(), 0);
    EXPECT_EQ(clicks, 4);
}

TEST_F(Combo, FreeTextEndsTheChoiceUnlessItIsAnEntrys) {
    box.setListIndex(0);
    for (const auto& [text, index] : {std::pair("River", -1), {"Station", 2}, {"", -1}}) {
        box.setText(text);
        EXPECT_EQ(box.listIndex(), index);
    }
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(clicks, 1);
    // The text of a list is one of its entries'.
    list.setText("Station");
    EXPECT_THROW(list.setText("Nowhere"), RunTimeError);
    EXPECT_EQ(list.listIndex(), 2);
    list.setText("");
    EXPECT_FALSE(list.hasSelection());
}

TEST_F(List, TheFirstLineIsSelectedAfterAddingToNothingAndAfterRemoving) {
    EXPECT_EQ(list.selectedItem(), nullptr);
    for (const char* text : {"1", "2", "3"}) {
        list.add(text);
        EXPECT_EQ(list.selectedIndex(), 1);
    }
    list.select(3);
    list.insert(1, "0");
    EXPECT_EQ(list.selectedItem()->text(), "3");
    list.remove(2);
    EXPECT_EQ(list.selectedItem()->text(), "0");
    for (int left = list.count(); left > 0; --left) list.remove(1);
    EXPECT_EQ(list.selectedIndex(), 0);
    for (int bad : {0, 1, -1}) EXPECT_THROW(list.item(bad), RunTimeError) << bad;
    EXPECT_THROW(list.select(1), RunTimeError);
}

TEST_F(List, ALineKeepsWhatItIsGivenAlsoWithoutItsList) {
    ListItem& line = list.add("1");
    line.setSubItem(5, "4711");
    line.setToolTip(2, "the whole name");
    EXPECT_EQ(line.subItem(4) + line.subItem(5) + line.subItem(7), "4711");
    EXPECT_EQ(line.toolTip(0) + line.toolTip(2), "the whole name");
    EXPECT_THROW(line.subItem(0), RunTimeError);
    list.add("2");
    const std::shared_ptr<ListItem> first = list.itemPtr(1), second = list.itemPtr(2);
    list.remove(1);
    EXPECT_EQ(first->index(), 0);
    EXPECT_FALSE(first->selected());
    EXPECT_EQ(second->index(), 1);
    form.reset();
    second->setText("still mine");
    EXPECT_EQ(second->index(), 0);
}

TEST_F(List, ThePersonsChoiceIsAnItemClickAndTheCodesIsNone) {
    Texts clicked;
    list.onItemClick = [&](ListItem& line) { clicked.push_back(line.text()); };
    for (const char* text : {"1", "2", "3"}) list.add(text);
    showsForm();
    user.happens([this] { list.select(3); });
    EXPECT_EQ(clicked, Texts{});
    user.selectsRow("lvwLines", 2).presses(kKeyDown).presses(kKeyDown);
    EXPECT_EQ(clicked, (Texts{"2", "3"}));
    EXPECT_EQ(list.selectedIndex(), 3);
}
