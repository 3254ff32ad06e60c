// What the tests of stand-ins have: a company, a desktop, a form with one control of each kind.
#pragma once

#include "sandbox/suite/StandIns.h"
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/Till.h"

#include <gtest/gtest.h>

namespace suite {

class StandInTest : public testing::Test {
protected:
    StandInTest() { form->ensureLoaded(); }
    automation::ObjectPtr standIn(const char* progId, const std::string& folder = "") {
        return sandbox::createStandIn(progId, {&desktop, folder});
    }

    support::CompanyFile company;
    support::ScriptedDesktop desktop;
    support::User user{desktop};
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
};

} // namespace suite
