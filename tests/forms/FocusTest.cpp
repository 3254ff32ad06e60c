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

TEST_F(Focus, ALockedBoxTakesNothing) {
    form->load = [this] { form->txtName.setLocked(true); };
    showsForm();
    user.types("d\b");
    user.pastes("all");
    EXPECT_EQ(user.text("txtName"), "as designed");
}
