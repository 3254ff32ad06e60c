// When a combo box's choice is a Click, and what its entries and its text do to the choice.
#include "tests/forms/SampleForm.h"
#include "tests/support/ScriptedDesktop.h"

#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;

namespace {

class Combo : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    int clicks = 0;
    int changes = 0;

    void SetUp() override {
        for (ComboBox* combo : {&touch(*form).cboShop, &form->cboFree}) {
            combo->addItem("Riverside", 11);
            combo->addItem("Market Square", 12);
            combo->addItem("Station", 13);
            combo->onClick = [this] { ++clicks; };
            combo->onChange = [this] { ++changes; };
        }
    }
};

} // namespace

TEST_F(Combo, ClickComesOnlyWithAnotherEntry) {
    struct Step {
        int index;
        int clicks;
        const char* text;
    };
    const Step steps[] = {{-1, 0, ""}, {0, 1, "Riverside"}, {0, 1, "Riverside"},    {2, 2, "Station"},
                          {-1, 2, ""}, {2, 3, "Station"},   {1, 4, "Market Square"}};
    for (const Step& step : steps) {
        form->cboShop.setListIndex(step.index);
        EXPECT_EQ(clicks, step.clicks) << step.index;
        EXPECT_EQ(form->cboShop.text(), step.text);
    }
    EXPECT_EQ(form->cboShop.selectedData(), 12);
    EXPECT_THROW(form->cboShop.setListIndex(3), automation::RunTimeError);
    EXPECT_THROW(form->cboShop.itemData(-1), automation::RunTimeError);
    EXPECT_EQ(form->cboShop.listIndex(), 1);
}

TEST_F(Combo, TheChoiceStaysOnItsEntryWhenEntriesComeAndGo) {
    ComboBox& combo = form->cboShop;
    combo.setListIndex(1);
    combo.insertItem(0, "Harbour", 10);
    EXPECT_EQ(combo.newIndex(), 0);
    EXPECT_EQ(combo.selectedData(), 12);
    combo.removeItem(0);
    EXPECT_EQ(combo.selectedData(), 12);
    combo.removeItem(combo.listIndex());
    EXPECT_FALSE(combo.hasSelection());
    EXPECT_EQ(combo.text(), "");
    combo.clear();
    EXPECT_EQ(combo.listCount(), 0);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Combo, FreeTextEndsTheChoiceUnlessItIsAnEntrys) {
    ComboBox& combo = form->cboFree;
    combo.setListIndex(0);
    combo.setText("River");
    EXPECT_EQ(combo.listIndex(), -1);
    EXPECT_EQ(changes, 1);
    combo.setText("Station");
    EXPECT_EQ(combo.listIndex(), 2);
    combo.setText("");
    EXPECT_FALSE(combo.hasSelection());
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Combo, TheTextOfAListIsOneOfItsEntries) {
    form->cboShop.setText("Station");
    EXPECT_EQ(form->cboShop.listIndex(), 2);
    EXPECT_THROW(form->cboShop.setText("Nowhere"), automation::RunTimeError);
    EXPECT_EQ(form->cboShop.listIndex(), 2);
    form->cboShop.setText("");
    EXPECT_FALSE(form->cboShop.hasSelection());
}
