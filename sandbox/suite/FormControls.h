// The controls of a form that is known by its members only.
#pragma once

#include "automation/Object.h"

#include <vector>

namespace sandbox {

std::vector<automation::ObjectPtr> controlsOf(automation::Object& form);

/// A box that a person fills in: its class is one of text box, combo box, check box and option button.
bool isInput(const automation::Object& control);

/// What the box holds, as text.
std::string inputText(automation::Object& control);

} // namespace sandbox
