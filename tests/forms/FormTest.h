// A sample form and the person at it.
#pragma once

#include "tests/forms/SampleForm.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

class FormTest : public testing::Test {
protected:
    support::ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    support::User user{desktop};

    void shows(SampleForm& first) {
        user.starts([&first] { first.showModal(nullptr); });
    }
    void showsForm() { shows(*form); }
};

using Texts = std::vector<std::string>;
