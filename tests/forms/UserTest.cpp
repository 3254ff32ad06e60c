// The scripted person itself: what a person could not do fails a test, and every end is a clean one.
#include "tests/support/User.h"
#include "tests/forms/SampleForm.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;
using support::User;

namespace {

struct Till {
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    User user{desktop};

    Till() {
        form->cmdOk.onClick = [this] {
            desktop.messageBox({"Select Shop", "Till", MessageIcon::information, MessageButtons::ok});
        };
        user.starts([this] { form->showModal(nullptr); });
    }
};

} // namespace

TEST(ScriptedUser, WhatAPersonCannotDoFailsTheTest) {
    Till till;
    User& user = till.user;
    till.form->cmdCancel.setEnabled(false);
    till.form->chkDone.setVisible(false);
    EXPECT_NONFATAL_FAILURE(user.clicks("cmdCancel"), "cmdCancel is disabled");
    EXPECT_NONFATAL_FAILURE(user.clicks("chkDone"), "chkDone is hidden");
    EXPECT_NONFATAL_FAILURE(user.clicks("cmdNone"), "has no control cmdNone");
    EXPECT_NONFATAL_FAILURE(user.answers(Answer::ok), "No message box is up");
    EXPECT_NONFATAL_FAILURE(user.choosesMenu("mnuAdd"), "No menu is up");
    user.closesFrame();
    EXPECT_NONFATAL_FAILURE(user.types("1"), "no form is shown");
}

TEST(ScriptedUser, AnUnexpectedMessageBoxFailsTheNextActAndIsLeft) {
    Till till;
    till.user.clicks("cmdOk");
    EXPECT_NONFATAL_FAILURE(till.user.enters("txtName", "7"), "Select Shop");
    EXPECT_EQ(till.user.text("txtName"), "7");
    till.user.clicks("cmdOk");
    EXPECT_NONFATAL_FAILURE(till.user.answers("Another text", Answer::ok), "Another text");
    till.user.clicks("cmdOk");
    EXPECT_NONFATAL_FAILURE(till.user.answers(Answer::yes), "does not offer");
}

TEST(ScriptedUser, AMessageBoxAtTheEndFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(
        {
            Till till;
            till.user.clicks("cmdOk");
        },
        "Nobody answered the message box: Select Shop");
}

TEST(ScriptedUser, FormsLeftOpenAreClosedWithoutAQuestion) {
    int questions = 0;
    {
        Till till;
        auto above = std::make_shared<SampleForm>(till.desktop, "frmAbove");
        above->queryUnload = [&](bool& cancel, CloseReason) {
            ++questions;
            cancel = true;
        };
        till.form->chkDone.onClick = [&, above] { above->showModal(till.form.get()); };
        till.user.clicks("chkDone");
        EXPECT_EQ(till.user.form(), "frmAbove");
    }
    EXPECT_EQ(questions, 0);
}

TEST(ScriptedUser, TwoPeopleWorkTurnByTurn) {
    Till left;
    Till right;
    left.user.enters("txtName", "12");
    right.user.clicks("cmdOk");
    left.user.types("3");
    EXPECT_EQ(left.user.text("txtName"), "123");
    right.user.answers("Select Shop", Answer::ok);
    right.user.enters("txtName", "9");
    left.user.closesFrame();
    EXPECT_TRUE(left.user.ended());
    EXPECT_EQ(right.user.text("txtName"), "9");
}

TEST(ScriptedUser, TheKeyIsLetGoOnTheFormThatItOpened) {
    Till till;
    std::vector<std::string> released;
    auto above = std::make_shared<SampleForm>(till.desktop, "frmAbove");
    above->txtName.onKeyUp = [&](std::int16_t& code, std::int16_t) {
        released.push_back("above " + std::to_string(code));
    };
    till.form->cmdOk.onKeyUp = [&](std::int16_t&, std::int16_t) { released.push_back("below"); };
    till.form->cmdOk.onClick = [&] { above->showModal(till.form.get()); };
    till.user.focuses("cmdOk");
    till.user.types("\r");
    EXPECT_EQ(till.user.form(), "frmAbove");
    EXPECT_EQ(released, std::vector<std::string>{"above 13"});
}
