// The list: which line is the selected one, and lines that outlive their list.
#include "tests/forms/FormTest.h"

using namespace forms;
using automation::RunTimeError;

namespace {

class List : public FormTest {
protected:
    ListView& list = touch(*form).lvwLines;
};

} // namespace

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
