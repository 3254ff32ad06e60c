// What may be typed into a number box, and how the general helper chooses in combo boxes.
#include "sandbox/suite/StandIns.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/ScriptedDesktop.h"

#include <gtest/gtest.h>

using automation::Value;

namespace {

class ClerkHelper : public testing::Test {
protected:
    support::ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    automation::ObjectPtr helper = sandbox::createStandIn("commonmodule.CLSCOMMONGEN", {&desktop, ""});

    void SetUp() override { form->ensureLoaded(); }

    /// The character that is left of `key` when the box holds `text` with the selection marked by "[" and "]".
    int filtered(std::string text, int key) {
        const int start = static_cast<int>(text.find('['));
        const int end = static_cast<int>(text.find(']')) - 1;
        std::erase_if(text, [](char c) { return c == '[' || c == ']'; });
        form->txtName.setText(text);
        form->txtName.select(start, end - start);
        Value character = static_cast<std::int16_t>(key);
        helper->call("TextValidateNum", form->txtName.self(), Value::byReference(character), std::int16_t{18},
                     std::int16_t{3});
        return *character.as<std::int16_t>();
    }
};

} // namespace

TEST_F(ClerkHelper, NumberBoxTakesOnlyWhatLeavesANumberInIt) {
    struct Case {
        const char* box;
        int key;
        bool taken;
        const char* why;
    };
    const Case cases[] = {
        {"[]", '5', true, "a digit"},
        {"[]", '.', true, "a number may begin with its point"},
        {"[]", '-', true, "a sign in front"},
        {"1[]", '-', false, "no sign behind"},
        {"[]1", '-', true, "a sign before what stands there"},
        {"[]-1", '-', false, "no second sign"},
        {"[-]1", '-', true, "a sign over the sign"},
        {"[]-1", '5', false, "no digit before the sign"},
        {"1.5[]", '.', false, "no second point"},
        {"1[.]5", '.', true, "a point over the point"},
        {"[1.5]", '.', true, "a point over the whole text"},
        {"1.123[]", '4', false, "no fourth decimal"},
        {"1.12[]3", '4', false, "no fourth decimal in between"},
        {"[]1.123", '4', true, "more digits in front"},
        {"1.1[23]", '4', true, "a digit over two decimals"},
        {"12[]3456", '.', false, "a point that would leave four decimals"},
        {"123[]456", '.', true, "a point that leaves three"},
        {"12345678901234567[]", '8', true, "the 18th digit"},
        {"123456789012345678[]", '9', false, "no 19th digit"},
        {"123456789012345678[]", '.', true, "the point is no digit"},
        {"123456789012345.678[]", '9', false, "decimals count among the 18"},
        {"[1]23456789012345678", '9', true, "a digit over a digit"},
        {"-123456789012345678[]", '9', false, "the sign leaves no more room"},
        {"[]", ',', false, "a comma"},
        {"[]", 'e', false, "a letter"},
        {"[]", ' ', false, "a blank"},
        {"[]", '\'', false, "an apostrophe"},
        {"[]", 163, false, "a currency sign"},
        {"[]", 1632, false, "a digit of another script"},
        {"[]", -8364, false, "a code past 32767"},
        {"1.123[]", 8, true, "Backspace"},
        {"1.123[]", 13, true, "Enter"},
        {"1.123[]", 9, true, "Tab"},
        {"1.123[]", 3, true, "Ctrl+C"},
        {"1.123[]", 22, true, "Ctrl+V"},
        {"1.123[]", 26, true, "Ctrl+Z"},
    };
    for (const Case& c : cases) EXPECT_EQ(filtered(c.box, c.key), c.taken ? c.key : 0) << c.box << ": " << c.why;
}

TEST_F(ClerkHelper, ChoosesByNumberAndByNameAndNothingWhereThereIsNone) {
    forms::ComboBox& box = form->cboShop;
    box.addItem("High Street", 1);
    box.addItem("Harbour", 40000);
    const auto byValue = [&](std::int32_t wanted) {
        Value value = wanted;
        helper->call("SelectComboItemByValue", box.self(), Value::byReference(value));
        return box.listIndex();
    };
    const auto byName = [&](const char* wanted) {
        Value text = wanted;
        helper->call("SelectComboItemByname", box.self(), Value::byReference(text));
        return box.listIndex();
    };
    EXPECT_EQ(byValue(40000), 1);
    EXPECT_EQ(byValue(7), -1) << "an earlier choice must not stay";
    EXPECT_EQ(byName("High Street"), 0);
    EXPECT_EQ(byName("Old Mill"), -1);
    box.clear();
    EXPECT_EQ(byValue(1), -1);
}
