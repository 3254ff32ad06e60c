// What the tests of stand-ins have: a company, a desktop, a form with one control of each kind.
#pragma once

#include "sandbox/suite/StandIns.h"
#include "tests/basic/ExpectError.h"
#include "tests/forms/FormTest.h"
#include "tests/support/Till.h"

namespace suite {

class StandInTest : public FormTest {
protected:
    StandInTest() { form->ensureLoaded(); }
    automation::ObjectPtr standIn(const char* progId, const std::string& folder = "") {
        return sandbox::createStandIn(progId, {&desktop, folder});
    }

    support::CompanyFile company;
};

} // namespace suite
