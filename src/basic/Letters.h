// Upper and lower case of single letters of the Latin, Greek and Cyrillic scripts.
#pragma once

#include <string>

namespace basic {

/// The letter itself when it has no other case. No letter becomes two.
char32_t upperLetter(char32_t letter);
char32_t lowerLetter(char32_t letter);

/// `letter` is below U+10000 and no surrogate.
void appendUtf8(std::string& text, char32_t letter);

} // namespace basic
