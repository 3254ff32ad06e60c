// Who has the focus: tab order, mnemonics, controls that cannot take it, and handlers that send it elsewhere.
#include "tests/forms/SampleForm.h"
#include "tests/support/EventLog.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;
using support::User;

namespace {

class Focus : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    User user{desktop};
    std::vector<std::string> log;

    void showsForm() {
        user.starts([this] { form->showModal(nullptr); });
    }
    std::vector<std::string> round(bool backwards) {
        std::vector<std::string> stops;
        do {
            user.tabs(backwards);
            stops.push_back(user.focus());
        } while (stops.back() != "txtName" && stops.size() < 20);
        return stops;
    }
};

} // namespace

TEST_F(Focus, TabVisitsEachStopOnceAndAnOptionGroupAtItsChoice) {
    form->load = [this] {
        form->optDown.setValue(true);
        form->cboFree.setVisible(false);
        form->chkDone.setEnabled(false);
        form->flexRows.setTabStop(false);
    };
    showsForm();
    EXPECT_EQ(round(false),
              (std::vector<std::string>{"cboShop", "optDown", "lvwLines", "cmdOk", "cmdCancel", "txtName"}));
    EXPECT_EQ(round(true),
              (std::vector<std::string>{"cmdCancel", "cmdOk", "lvwLines", "optDown", "cboShop", "txtName"}));
}

TEST_F(Focus, AnOptionGroupWithoutAChoiceIsEnteredAtItsFirst) {
    form->load = [this] { form->optUp.setValue(false); };
    showsForm();
    user.focuses("cboFree");
    user.tabs();
    EXPECT_EQ(user.focus(), "optUp");
    user.tabs();
    EXPECT_EQ(user.focus(), "chkDone");
}

TEST_F(Focus, MnemonicsReachWhatTheirLetterMarks) {
    struct Case {
        char32_t letter;
        const char* focus;
        bool ticked;
        bool down;
    };
    const Case cases[] = {
        {U'n', "txtName", false, false}, // a label's letter: the box after it
        {U'C', "chkDone", true, false},  // the sign before the blank is a literal one
        {U'd', "optDown", true, true},
        {U'N', "txtName", true, true},
    };
    showsForm();
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<char>(c.letter));
        user.alt(c.letter);
        EXPECT_EQ(user.focus(), c.focus);
        EXPECT_EQ(user.checked("chkDone"), c.ticked);
        EXPECT_EQ(form->optDown.value(), c.down);
    }
    user.happens([this] {
        form->chkDone.setEnabled(false);
        form->optUp.setVisible(false);
        EXPECT_FALSE(input::mnemonic(*form, U'u'));
        EXPECT_FALSE(input::mnemonic(*form, U'&'));
    });
    user.alt('c'); // The check box is disabled, so the letter is the close button's.
    EXPECT_TRUE(user.ended());
}

TEST_F(Focus, DisablingOrHidingTheFocusedControlPassesTheFocusOn) {
    showsForm();
    support::logEvents(*form, log);
    user.happens([this] { form->txtName.setVisible(false); });
    EXPECT_EQ(user.focus(), "cboShop");
    user.happens([this] { form->cboShop.setEnabled(false); });
    EXPECT_EQ(user.focus(), "cboFree");
    EXPECT_EQ(log, (std::vector<std::string>{"txtName_LostFocus", "cboShop_GotFocus", "cboShop_LostFocus",
                                             "cboFree_GotFocus"}));
}

TEST_F(Focus, WithNoOtherStopNobodyHasIt) {
    form->load = [this] {
        for (Control* control : form->controls()) control->setEnabled(control == &form->txtName);
    };
    showsForm();
    user.tabs();
    EXPECT_EQ(user.focus(), "txtName");
    user.happens([this] { form->txtName.setEnabled(false); });
    EXPECT_EQ(user.focus(), "");
}

TEST_F(Focus, SetFocusDoesNothingWhereTheFocusCannotGo) {
    touch(*form).cmdOk.setFocus();
    EXPECT_EQ(form->activeControl(), nullptr);
    showsForm();
    user.happens([this] {
        form->cmdOk.setEnabled(false);
        form->cboShop.setVisible(false);
        form->cmdOk.setFocus();
        form->cboShop.setFocus();
        form->lblName.setFocus();
    });
    EXPECT_EQ(user.focus(), "txtName");
}

TEST_F(Focus, AHandlerThatSendsTheFocusElsewhereDecides) {
    form->txtName.onLostFocus = [this] { form->cmdOk.setFocus(); };
    showsForm();
    support::logEvents(*form, log);
    user.clicks("chkDone");
    EXPECT_EQ(user.focus(), "cmdOk");
    EXPECT_FALSE(user.checked("chkDone"));
    EXPECT_EQ(log, (std::vector<std::string>{"txtName_Validate", "txtName_LostFocus", "cmdOk_GotFocus"}));
}

TEST_F(Focus, KeysSentTogetherActInTheirOrderAfterTheHandler) {
    std::string during;
    form->cmdOk.onClick = [&] {
        desktop.sendKeys("{TAB}{tab}");
        during = form->activeControl()->name();
    };
    form->txtName.setText("kept");
    showsForm();
    user.clicks("cmdOk");
    EXPECT_EQ(during, "cmdOk");
    EXPECT_EQ(user.focus(), "txtName");
    EXPECT_THROW(desktop.sendKeys("{F13}"), automation::RunTimeError);
}

TEST_F(Focus, KeysSentWaitForTheOutermostHandler) {
    std::vector<std::string> during;
    form->txtName.onChange = [&] {
        desktop.sendKeys("{TAB}");
        during.push_back("Change");
    };
    form->cmdOk.onClick = [&] {
        form->txtName.setText("changed by code");
        form->txtName.setText("changed by code");
        during.push_back(form->activeControl()->name());
    };
    showsForm();
    user.clicks("cmdOk");
    EXPECT_EQ(during, (std::vector<std::string>{"Change", "cmdOk"}));
    EXPECT_EQ(user.focus(), "cmdCancel");
}

TEST_F(Focus, KeysSentByAFormThatLeftAreLost) {
    auto above = std::make_shared<SampleForm>(desktop, "frmAbove");
    form->cmdOk.onClick = [&] { above->showModal(form.get()); };
    above->cmdOk.onClick = [&] {
        desktop.sendKeys("{TAB}");
        above->unload();
    };
    showsForm();
    user.clicks("cmdOk");
    user.clicks("cmdOk");
    EXPECT_EQ(user.form(), "frmSample");
    EXPECT_EQ(user.focus(), "cmdOk");
}

TEST_F(Focus, TypingInABoxHonoursItsLimits) {
    struct Case {
        const char* name;
        int maxLength;
        bool locked;
        const char* before;
        int start, length;
        const char* typed;
        const char* after;
        int caret;
    };
    const Case cases[] = {
        {"at the caret", 0, false, "abc", 1, 0, "X", "aXbc", 2},
        {"over the selection", 0, false, "abc", 0, 3, "7", "7", 1},
        {"characters, not bytes", 4, false, "\xC3\xA4\xC3\xB6\xC3\xBC", 3, 0,
         "\xC3\x9F"
         "x",
         "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F", 4},
        {"full", 3, false, "abc", 3, 0, "d", "abc", 3},
        {"full, but selected", 3, false, "abc", 1, 1, "d", "adc", 2},
        {"backspace takes a whole character", 0, false,
         "a\xC3\xB6"
         "b",
         2, 0, "\b", "ab", 1},
        {"backspace takes the selection", 0, false, "abc", 1, 2, "\b", "a", 1},
        {"locked", 0, true, "abc", 3, 0, "d\b", "abc", 3},
        {"Enter adds nothing to one line", 0, false, "abc", 3, 0, "\r", "abc", 3},
    };
    showsForm();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        user.happens([&] {
            form->txtName.setMaxLength(c.maxLength);
            form->txtName.setLocked(c.locked);
            form->txtName.setText(c.before);
            form->txtName.select(c.start, c.length);
        });
        user.types(c.typed);
        EXPECT_EQ(user.text("txtName"), c.after);
        EXPECT_EQ(form->txtName.selStart(), c.caret);
        EXPECT_EQ(form->txtName.selLength(), 0);
    }
}

TEST_F(Focus, PastedTextIsJudgedAsAWhole) {
    form->txtName.acceptsWhole = [](const std::string& whole) { return whole.find('-') == std::string::npos; };
    showsForm();
    user.enters("txtName", "12");
    user.pastes("-3");
    EXPECT_EQ(user.text("txtName"), "12");
    user.pastes("34");
    EXPECT_EQ(user.text("txtName"), "1234");
}
