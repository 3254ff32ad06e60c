// The apostrophe and the characters that a system without Unicode turns into one.
#pragma once

#include <string>
#include <string_view>

namespace basic {

/// The text with `each` in place of every apostrophe and of every character that the best-fit table of one of the
/// system's ANSI code pages turns into one. A text that leaves us in Unicode and is converted on its way to the server
/// holds no other apostrophe afterwards.
std::string replaceApostrophes(std::string_view text, std::string_view each);

bool hasApostrophe(std::string_view text);

} // namespace basic
