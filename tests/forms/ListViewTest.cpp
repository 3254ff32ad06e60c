// The list: which line is the selected one, and lines that outlive their list.
#include "tests/forms/SampleForm.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;
using support::User;

namespace {

class List : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    ListView& list = touch(*form).lvwLines;
    User user{desktop};
};

} // namespace

TEST_F(List, TheFirstLineIsSelectedAfterAddingToNothingAndAfterRemoving) {
    EXPECT_EQ(list.selectedItem(), nullptr);
    list.add("1");
    EXPECT_EQ(list.selectedIndex(), 1);
    list.add("2");
    list.add("3");
    EXPECT_EQ(list.selectedIndex(), 1);
    list.select(3);
    list.insert(1, "0");
    EXPECT_EQ(list.selectedItem()->text(), "3");
    list.remove(2);
    EXPECT_EQ(list.selectedItem()->text(), "0");
    for (int left = list.count(); left > 0; --left) list.remove(1);
    EXPECT_EQ(list.selectedIndex(), 0);
    for (int bad : {0, 1, -1}) EXPECT_THROW(list.item(bad), automation::RunTimeError) << bad;
    EXPECT_THROW(list.select(1), automation::RunTimeError);
}

TEST_F(List, SubItemsAreEmptyUntilSet) {
    ListItem& line = list.add("1");
    EXPECT_EQ(line.subItem(7), "");
    line.setSubItem(5, "4711");
    EXPECT_EQ(line.subItem(5), "4711");
    EXPECT_EQ(line.subItem(4), "");
    EXPECT_THROW(line.subItem(0), automation::RunTimeError);
    line.setToolTip(2, "the whole name");
    EXPECT_EQ(line.toolTip(2), "the whole name");
    EXPECT_EQ(line.toolTip(0), "");
}

TEST_F(List, ALineOutlivesItsPlaceInTheList) {
    list.add("1");
    list.add("2");
    const std::shared_ptr<ListItem> first = list.itemPtr(1);
    const std::shared_ptr<ListItem> second = list.itemPtr(2);
    list.remove(1);
    EXPECT_EQ(first->index(), 0);
    EXPECT_FALSE(first->selected());
    EXPECT_EQ(second->index(), 1);
    form.reset();
    second->setText("still mine");
    EXPECT_EQ(second->index(), 0);
}

TEST_F(List, ThePersonsChoiceIsAnItemClickAndTheCodesIsNone) {
    std::vector<std::string> clicked;
    list.onItemClick = [&](ListItem& line) { clicked.push_back(line.text()); };
    for (const char* text : {"1", "2", "3"}) list.add(text);
    user.starts([this] { form->showModal(nullptr); });
    user.happens([this] { list.select(3); });
    EXPECT_TRUE(clicked.empty());
    user.selectsRow("lvwLines", 2);
    user.presses(kKeyDown);
    user.presses(kKeyDown);
    EXPECT_EQ(clicked, (std::vector<std::string>{"2", "3"}));
    EXPECT_EQ(list.selectedIndex(), 3);
}
