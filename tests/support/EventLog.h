// Writes down which handlers of a form's controls run, in their order.
#pragma once

#include "forms/Form.h"

#include <string>
#include <vector>

namespace support {

/// Puts itself before each handler that `form` and its controls have now: "txtFirst_KeyDown 65" and then the handler.
/// `log` outlives the form.
void logEvents(forms::Form& form, std::vector<std::string>& log);

} // namespace support
