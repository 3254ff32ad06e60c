// Cuts a script into the statements it is made of.
#pragma once

#include <string_view>
#include <vector>

namespace sandbox {

/// Statements end at a line with nothing but "GO", and at ";" outside of quotes and comments. Pieces with nothing but
/// blanks and comments are left out; the views point into `text`.
std::vector<std::string_view> splitScript(std::string_view text);

} // namespace sandbox
