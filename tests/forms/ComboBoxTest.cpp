// When a combo box's choice is a Click, and what its entries and its text do to the choice.
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
