// The life of forms: loading by touch, activation, closing from inside and outside, and errors in handlers.
#include "tests/basic/ExpectError.h"
#include "tests/forms/FormTest.h"

using namespace forms;

namespace {

class FormLife : public FormTest {
protected:
    std::shared_ptr<SampleForm> below = std::make_shared<SampleForm>(desktop, "frmBelow");

    FormLife() {
        below->cmdOk.onClick = [this] { form->showModal(below.get()); };
    }
};

} // namespace

TEST_F(FormLife, LoadsOnceWhenTouchedAndAgainAfterUnloading) {
    int events = 0; // the design raises none
    form->txtName.onChange = form->optUp.onClick = [&] { ++events; };
    form->load = [this] { form->txtName.setText("loaded"); };
    for (const int loads : {1, 2}) {
        EXPECT_FALSE(form->loaded());
        EXPECT_EQ(touch(*form).txtName.text(), "loaded");
        touch(*form).txtName.setText("changed");
        EXPECT_EQ(form->loads, loads);
        EXPECT_EQ(events, 2 * loads);
        EXPECT_TRUE(form->unload());
        EXPECT_EQ(form->txtName.text(), "as designed");
    }
}

TEST_F(FormLife, ShowsWithTheFocusOnTheFirstStopUnlessActivateChose) {
    showsForm();
    EXPECT_EQ(user.focus(), "txtName");
    EXPECT_TRUE(user.clicks("cmdCancel").ended());
    form->activated = [this] { form->cmdOk.setFocus(); };
    showsForm();
    EXPECT_EQ(user.focus(), "cmdOk");
}

TEST_F(FormLife, ActivatesWhenShownAndWhenAFormAboveHasClosedButNotAfterAMessage) {
    below->chkDone.onClick = [this] { desktop.messageBox({"Hello", "Title"}); };
    shows(*below);
    user.clicks("cmdOk");
    EXPECT_EQ(user.form(), "frmSample");
    EXPECT_EQ(below->activations, 1);
    user.clicks("cmdCancel");
    EXPECT_EQ(user.form(), "frmBelow");
    EXPECT_EQ(user.focus(), "cmdOk");
    EXPECT_EQ(below->activations, 2);
    user.clicks("chkDone").answers("Hello", Answer::ok);
    EXPECT_EQ(below->activations, 2);
    // One that left meanwhile does not activate.
    form->cmdOk.onClick = [this] {
        below->unload();
        form->unload();
    };
    EXPECT_TRUE(user.clicks("cmdOk").clicks("cmdOk").ended());
    EXPECT_EQ(below->activations, 2);
}

TEST_F(FormLife, AFormThatIsUnloadedWhileItLoadsOrActivatesIsGone) {
    int activations = 0;
    for (std::function<void()>* when : {&form->activated, &form->load}) {
        *when = [this] { form->unload(); };
        bool returned = false;
        user.starts([&] {
            form->showModal(nullptr);
            returned = true;
        });
        EXPECT_TRUE(user.ended() && returned);
        EXPECT_FALSE(form->loaded());
        activations += form->activations;
    }
    EXPECT_EQ(activations, 2) << "none of the one that left while it loaded";
}

TEST_F(FormLife, UnloadingInsideAHandlerOfItsOwnIsLogicallyDoneAtOnce) {
    struct : FormView {
        int gone = 0;
        void captionChanged() override {}
        void sizeChanged() override {}
        void coloursChanged() override {}
        void focusChanged(Control&) override {}
        void formUnloaded() override { ++gone; }
    } view;
    bool ran = false;
    form->cmdOk.onClick = [&] {
        ran = form->unload();
        EXPECT_FALSE(form->loaded() || form->visible() || form->view());
        EXPECT_EQ(user.form(), "frmSample");
    };
    showsForm();
    form->attach(&view);
    user.clicks("cmdOk");
    EXPECT_TRUE(ran);
    EXPECT_EQ(view.gone, 1);
    EXPECT_TRUE(user.ended());
}

TEST_F(FormLife, AnsweringTheCloseQuestionByUnloadingAsksOnlyOnce) {
    int questions = 0, unloads = 0;
    form->queryUnload = [&](bool&, CloseReason) {
        ++questions;
        form->unload();
    };
    form->unloaded = [&] { ++unloads; };
    showsForm();
    EXPECT_TRUE(user.presses(kKeyEscape).ended());
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
            user.clicks("cmdCancel").answers("Type mismatch", Answer::ok);
        }
        EXPECT_TRUE(user.ended());
        showsForm();
        user.clicks("cmdOk");
        EXPECT_EQ(clicks, 1);
        user.clicks("cmdCancel");
    }
}

TEST_F(FormLife, AnErrorThatAHandlerLetsThroughIsShownAndTheFormStays) {
    const std::tuple<std::function<void()>, const char*, const char*> cases[] = {
        {[this] { form->showModal(nullptr); }, "goodsreq", "Form already displayed; can't show modally"},
        {[] { throw automation::RunTimeError(7, "Not there", "server"); }, "server", "Not there"},
        {[] { throw std::runtime_error("broken"); }, "goodsreq", "broken"},
        {[] { throw 7; }, "goodsreq", "Unexpected error"},
    };
    showsForm();
    for (const auto& [handler, source, text] : cases) {
        form->cmdOk.onClick = handler;
        user.clicks("cmdOk");
        ASSERT_TRUE(user.message());
        EXPECT_EQ(user.message()->icon, MessageIcon::critical);
        EXPECT_EQ(user.message()->title, source);
        user.answers(text, Answer::ok);
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
