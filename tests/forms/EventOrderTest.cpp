// The table of the order of events, on the scripted desktop.
#include "tests/support/EventOrder.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using namespace support;

namespace {

User& take(User& user, EventOrderForm& form, const EventStep& step) {
    switch (step.kind) {
    case EventStep::Kind::types: return user.types(step.text);
    case EventStep::Kind::tabs: return user.tabs();
    case EventStep::Kind::backTab: return user.tabs(true);
    case EventStep::Kind::escape: return user.presses(forms::kKeyEscape);
    case EventStep::Kind::clicks: return user.clicks(step.control);
    case EventStep::Kind::picks: return user.picks(step.control, step.text);
    case EventStep::Kind::disables: return user.happens([&] { form.find(step.control)->setEnabled(false); });
    }
    return user;
}

} // namespace

TEST(EventOrder, HoldsOnTheScriptedDesktop) {
    for (const EventCase& c : eventOrder()) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> log;
        ScriptedDesktop desktop;
        const auto form = std::make_shared<EventOrderForm>(desktop, log);
        User user(desktop);
        user.starts([&] { form->showModal(nullptr); });
        EXPECT_EQ(log, std::vector<std::string>{"txtFirst_GotFocus"});
        log.clear();
        for (const EventStep& step : c.steps) take(user, *form, step);
        EXPECT_EQ(log, c.events);
        EXPECT_EQ(user.focus(), c.focus);
        EXPECT_EQ(user.text("txtFirst"), c.first);
        EXPECT_EQ(user.text("txtSecond"), c.second);
    }
}
