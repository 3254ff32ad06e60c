// The life of forms: loading by touch, activation, closing from inside and outside, and errors in handlers.
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;
using support::User;

namespace {

class FormLife : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> below = std::make_shared<SampleForm>(desktop, "frmBelow");
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    User user{desktop};

    void showsForm() {
        user.starts([this] { form->showModal(nullptr); });
    }
};

/// Counts what a view is told.
class CountingView : public FormView {
public:
    int gone = 0;
    std::string focused;
    void captionChanged() override {}
    void sizeChanged() override {}
    void coloursChanged() override {}
    void focusChanged(Control& control) override { focused = control.name(); }
    void formUnloaded() override { ++gone; }
};

} // namespace

TEST_F(FormLife, LoadsOnceWhenTouchedAndAgainAfterUnloading) {
    form->load = [this] { form->txtName.setText("loaded"); };
    EXPECT_FALSE(form->loaded());
    EXPECT_EQ(touch(*form).txtName.text(), "loaded");
    touch(*form).txtName.setText("changed");
    EXPECT_EQ(form->loads, 1);
    EXPECT_TRUE(form->unload());
    EXPECT_EQ(form->txtName.text(), "as designed");
    EXPECT_EQ(touch(*form).txtName.text(), "loaded");
    EXPECT_EQ(form->loads, 2);
}

TEST_F(FormLife, UnloadingResetsEveryControl) {
    SampleForm& f = touch(*form);
    f.txtName.setMaxLength(3);
    f.txtName.setEnabled(false);
    f.txtName.setLocked(true);
    f.txtName.setTabStop(false);
    f.txtName.setReadAs("Item");
    f.txtName.setToolTip("tip");
    f.txtName.setBackColor(1);
    f.txtName.setForeColor(1);
    f.cboShop.addItem("Riverside", 4);
    f.cboShop.setListIndex(0);
    f.optDown.setValue(true);
    f.chkDone.setValue(1);
    f.lvwLines.add("1");
    f.lvwLines.setTag("C");
    f.flexRows.setRows(40);
    f.setCaption("Changed");
    f.unload();
    EXPECT_EQ(f.txtName.maxLength(), 0);
    EXPECT_TRUE(f.txtName.enabled());
    EXPECT_FALSE(f.txtName.locked());
    EXPECT_TRUE(f.txtName.tabStop());
    EXPECT_EQ(f.txtName.readAs() + f.txtName.toolTip(), "");
    EXPECT_EQ(f.txtName.backColor(), kSystemColour);
    EXPECT_EQ(f.txtName.foreColor(), kSystemColour);
    EXPECT_EQ(f.cboShop.listCount(), 0);
    EXPECT_EQ(f.cboShop.text(), "");
    EXPECT_TRUE(f.optUp.value());
    EXPECT_FALSE(f.optDown.value());
    EXPECT_EQ(f.chkDone.value(), 0);
    EXPECT_EQ(f.lvwLines.count(), 0);
    EXPECT_EQ(f.lvwLines.tag(), "");
    EXPECT_EQ(f.lvwLines.columns().size(), 2u);
    EXPECT_EQ(f.flexRows.rows(), 2);
    EXPECT_EQ(f.caption(), "Sample");
}

TEST_F(FormLife, DescribingTheDesignRaisesNoEvents) {
    int events = 0;
    form->txtName.onChange = form->optUp.onClick = [&] { ++events; };
    touch(*form).unload();
    EXPECT_EQ(events, 0);
}

TEST_F(FormLife, ShowsWithTheFocusOnTheFirstStopUnlessActivateChose) {
    showsForm();
    EXPECT_EQ(user.form(), "frmSample");
    EXPECT_EQ(user.focus(), "txtName");
    user.clicks("cmdCancel");
    EXPECT_TRUE(user.ended());
    form->activated = [this] { form->cmdOk.setFocus(); };
    showsForm();
    EXPECT_EQ(user.focus(), "cmdOk");
}

TEST_F(FormLife, ActivatesWhenShownAndWhenAFormAboveHasClosedButNotAfterAMessage) {
    below->cmdOk.onClick = [this] { form->showModal(below.get()); };
    below->chkDone.onClick = [this] { desktop.messageBox({"Hello", "Title"}); };
    user.starts([this] { below->showModal(nullptr); });
    EXPECT_EQ(below->activations, 1);
    user.clicks("cmdOk");
    EXPECT_EQ(user.form(), "frmSample");
    EXPECT_EQ(below->activations, 1);
    user.clicks("cmdCancel");
    EXPECT_EQ(user.form(), "frmBelow");
    EXPECT_EQ(user.focus(), "cmdOk");
    EXPECT_EQ(below->activations, 2);
    user.clicks("chkDone");
    user.answers("Hello", Answer::ok);
    EXPECT_EQ(below->activations, 2);
}

TEST_F(FormLife, AFormBelowThatLeftMeanwhileDoesNotActivate) {
    below->cmdOk.onClick = [this] { form->showModal(below.get()); };
    form->cmdOk.onClick = [this] {
        below->unload();
        form->unload();
    };
    user.starts([this] { below->showModal(nullptr); });
    user.clicks("cmdOk");
    user.clicks("cmdOk");
    EXPECT_TRUE(user.ended());
    EXPECT_EQ(below->activations, 1);
}

TEST_F(FormLife, AFormThatIsUnloadedWhileItLoadsIsNotShown) {
    form->load = [this] { form->unload(); };
    bool returned = false;
    user.starts([&] {
        form->showModal(nullptr);
        returned = true;
    });
    EXPECT_TRUE(user.ended());
    EXPECT_TRUE(returned);
    EXPECT_EQ(form->activations, 0);
}

TEST_F(FormLife, AFormThatIsUnloadedWhileItActivatesIsGone) {
    form->activated = [this] { form->unload(); };
    showsForm();
    EXPECT_TRUE(user.ended());
    EXPECT_FALSE(form->loaded());
}

TEST_F(FormLife, UnloadingInsideAHandlerOfItsOwnIsLogicallyDoneAtOnce) {
    CountingView view;
    std::vector<std::string> seen;
    form->cmdOk.onClick = [&] {
        form->unload();
        seen.push_back(form->loaded() ? "loaded" : "not loaded");
        seen.push_back(form->visible() ? "visible" : "not visible");
        seen.push_back(form->view() ? "with view" : "without view");
        seen.push_back(user.form());
    };
    showsForm();
    form->attach(&view);
    user.clicks("cmdOk");
    EXPECT_EQ(seen, (std::vector<std::string>{"not loaded", "not visible", "without view", "frmSample"}));
    EXPECT_EQ(view.gone, 1);
    EXPECT_TRUE(user.ended());
}

TEST_F(FormLife, AnsweringTheCloseQuestionByUnloadingAsksOnlyOnce) {
    int questions = 0;
    int unloads = 0;
    form->queryUnload = [&](bool&, CloseReason) {
        ++questions;
        form->unload();
    };
    form->unloaded = [&] { ++unloads; };
    showsForm();
    user.presses(kKeyEscape);
    EXPECT_TRUE(user.ended());
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(unloads, 1);
}

TEST_F(FormLife, ADesignThatFailsIsAnErrorAndTheFormCanBeShownAgain) {
    for (const int failing : {1, 2}) { // when it is first loaded, or when it goes back to its design
        form = std::make_shared<SampleForm>(desktop);
        int designs = 0, clicks = 0;
        form->designs = [&] {
            if (++designs == failing) automation::raise(automation::kTypeMismatch);
        };
        form->cmdOk.onClick = [&] { ++clicks; };
        long number = 0;
        user.starts([&] { number = errorOf([&] { form->showModal(nullptr); }); });
        EXPECT_EQ(number, failing == 1 ? 13 : 0);
        if (failing == 2) {
            user.clicks("cmdCancel");
            user.answers("Type mismatch", Answer::ok);
        }
        EXPECT_TRUE(user.ended());
        showsForm();
        user.clicks("cmdOk");
        EXPECT_EQ(clicks, 1);
        user.clicks("cmdCancel");
    }
}

TEST_F(FormLife, KeysSentBeforeAnErrorStillAct) {
    form->txtName.onKeyPress = [this](std::int16_t&) {
        desktop.sendKeys("{tab}");
        automation::raise(automation::kOverflow);
    };
    showsForm();
    user.presses(kKeyReturn);
    user.answers("Overflow", Answer::ok);
    EXPECT_EQ(user.focus(), "cboShop");
}

TEST_F(FormLife, KeysSentWhileNoFormIsShownAreLost) {
    desktop.sendKeys("{Tab}");
    showsForm();
    EXPECT_EQ(user.focus(), "txtName");
}

TEST_F(FormLife, AnErrorThatAHandlerLetsThroughIsShownAndTheFormStays) {
    const struct {
        std::function<void()> handler;
        const char* title;
        const char* text;
    } cases[] = {
        {[this] { form->showModal(nullptr); }, "goodsreq", "Form already displayed; can't show modally"},
        {[] { throw automation::RunTimeError(7, "Not there", "server"); }, "server", "Not there"},
        {[] { throw std::runtime_error("broken"); }, "goodsreq", "broken"},
        {[] { throw 7; }, "goodsreq", "Unexpected error"},
    };
    showsForm();
    for (const auto& c : cases) {
        form->cmdOk.onClick = c.handler;
        user.clicks("cmdOk");
        ASSERT_TRUE(user.message());
        EXPECT_EQ(user.message()->icon, MessageIcon::critical);
        EXPECT_EQ(user.message()->title, c.title);
        user.answers(c.text, Answer::ok);
        EXPECT_EQ(user.form(), "frmSample");
    }
}

TEST_F(FormLife, ACommandOfAMenuRunsUnlessItIsDisabled) {
    int ran = 0;
    MenuItem add{"mnuAdd", "&Add", false, [&] { ++ran; }};
    const Menu menu{"mnuLines", {&add}};
    form->lvwLines.onMouseDown = [&](const MouseEvent&) { desktop.popupMenu(*form, menu); };
    showsForm();
    for (const int runs : {0, 1}) {
        user.rightClicks("lvwLines");
        desktop.choose(0);
        EXPECT_EQ(ran, runs);
        add.enabled = true;
    }
}
