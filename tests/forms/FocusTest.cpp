// Who has the focus: tab order, mnemonics, controls that cannot take it, and handlers that send it elsewhere.
#include "tests/forms/FormTest.h"
#include "tests/support/EventLog.h"

using namespace forms;

namespace {

class Focus : public FormTest {
protected:
    Texts log;

    void showsLoggedForm() {
        showsForm();
        support::logEvents(*form, log);
    }
    Texts round(bool backwards) {
        Texts stops;
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
    EXPECT_EQ(round(false), (Texts{"cboShop", "optDown", "lvwLines", "cmdOk", "cmdCancel", "txtName"}));
    EXPECT_EQ(round(true), (Texts{"cmdCancel", "cmdOk", "lvwLines", "optDown", "cboShop", "txtName"}));
    form->load = [this] { form->optUp.setValue(false); }; // a group without a choice is entered at its first
    user.clicks("cmdCancel");
    showsForm();
    EXPECT_EQ(round(false), (Texts{"cboShop", "cboFree", "optUp", "chkDone", "lvwLines", "flexRows", "cmdOk",
                                   "cmdCancel", "txtName"}));
}

TEST_F(Focus, MnemonicsReachWhatTheirLetterMarks) {
    const std::tuple<char, const char*, bool, bool> cases[] = {
        {'n', "txtName", false, false}, // a label's letter: the box after it
        {'C', "chkDone", true, false},  // the sign before the blank is a literal one
        {'d', "optDown", true, true},
        {'N', "txtName", true, true},
    };
    showsForm();
    for (const auto& [letter, focus, ticked, down] : cases) {
        SCOPED_TRACE(letter);
        user.alt(static_cast<char32_t>(letter));
        EXPECT_EQ(user.focus(), focus);
        EXPECT_EQ(user.checked("chkDone"), ticked);
        EXPECT_EQ(form->optDown.value(), down);
    }
    user.happens([this] {
        form->chkDone.setEnabled(false);
        form->optUp.setVisible(false);
        for (const char32_t letter : {U'u', U'&'}) EXPECT_FALSE(input::mnemonic(*form, letter));
    });
    EXPECT_TRUE(user.alt('c').ended()) << "the check box is disabled, so the letter is the close button's";
}

TEST_F(Focus, DisablingOrHidingTheFocusedControlPassesTheFocusOn) {
    showsLoggedForm();
    user.happens([this] { form->txtName.setVisible(false); });
    user.happens([this] { form->cboShop.setEnabled(false); });
    EXPECT_EQ(log, (Texts{"txtName_LostFocus", "cboShop_GotFocus", "cboShop_LostFocus", "cboFree_GotFocus"}));
    EXPECT_EQ(user.focus(), "cboFree");
    user.happens([this] {
        for (Control* control : form->controls()) control->setEnabled(control == &form->cboFree);
    });
    user.tabs();
    EXPECT_EQ(user.focus(), "cboFree");
    user.happens([this] { form->cboFree.setEnabled(false); });
    EXPECT_EQ(user.focus(), "") << "with no other stop nobody has it";
}

TEST_F(Focus, SetFocusDoesNothingWhereTheFocusCannotGo) {
    touch(*form).cmdOk.setFocus();
    EXPECT_EQ(form->activeControl(), nullptr);
    showsForm();
    user.happens([this] {
        form->cmdOk.setEnabled(false);
        form->cboShop.setVisible(false);
        for (Control* control : std::initializer_list<Control*>{&form->cmdOk, &form->cboShop, &form->lblName})
            control->setFocus();
    });
    EXPECT_EQ(user.focus(), "txtName");
}

TEST_F(Focus, AHandlerThatSendsTheFocusElsewhereDecides) {
    form->txtName.onLostFocus = [this] { form->cmdOk.setFocus(); };
    showsLoggedForm();
    user.clicks("chkDone");
    EXPECT_EQ(user.focus(), "cmdOk");
    EXPECT_FALSE(user.checked("chkDone"));
    EXPECT_EQ(log, (Texts{"txtName_Validate", "txtName_LostFocus", "cmdOk_GotFocus"}));
}

TEST_F(Focus, KeysSentActInTheirOrderAfterTheOutermostHandler) {
    std::vector<std::string> during;
    form->txtName.onChange = [&] {
        desktop.sendKeys("{TAB}{tab}");
        during.push_back("Change");
    };
    form->cmdOk.onClick = [&] {
        for (int i = 0; i < 2; ++i) form->txtName.setText("changed by code");
        during.push_back(form->activeControl()->name());
    };
    desktop.sendKeys("{Tab}"); // lost while no form is shown
    form->load = [this] { form->txtName.setLocked(true); };
    showsForm();
    EXPECT_EQ(user.focus(), "txtName");
    user.types("d\b").pastes("all");
    EXPECT_EQ(user.text("txtName"), "as designed") << "a locked box takes nothing";
    user.clicks("cmdOk");
    EXPECT_EQ(during, (Texts{"Change", "cmdOk"}));
    EXPECT_EQ(user.focus(), "txtName");
    EXPECT_EQ(user.text("txtName"), "changed by code");
    EXPECT_THROW(desktop.sendKeys("{F13}"), automation::RunTimeError);
}

TEST_F(Focus, KeysSentBeforeTheFormLeavesAreLostAndBeforeAnErrorAct) {
    const auto above = std::make_shared<SampleForm>(desktop, "frmAbove");
    form->cmdOk.onClick = [&] { above->showModal(form.get()); };
    above->cmdOk.onClick = [&] {
        desktop.sendKeys("{TAB}");
        above->unload();
    };
    form->cmdCancel.onClick = [&] {
        desktop.sendKeys("{tab}");
        automation::raise(automation::kOverflow);
    };
    showsForm();
    for (int i = 0; i < 2; ++i) user.clicks("cmdOk");
    EXPECT_EQ(user.form(), "frmSample");
    EXPECT_EQ(user.focus(), "cmdOk");
    user.clicks("cmdCancel").answers("Overflow", Answer::ok);
    EXPECT_EQ(user.focus(), "txtName");
}
