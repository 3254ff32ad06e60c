// Text by characters: UTF-8 in, UTF-8 out, positions and lengths counted in code points from 1.
#pragma once

#include <limits>
#include <string>
#include <string_view>

namespace basic {

// A byte that is no valid UTF-8 counts as one character and is kept as it is.

/// Only blanks are trimmed, no tabs and line ends.
std::string trim(std::string_view text);
std::string ltrim(std::string_view text);
std::string rtrim(std::string_view text);

/// Letters of the Latin, Greek and Cyrillic scripts, one for one: a sharp s has no upper case here.
std::string ucase(std::string_view text);
std::string lcase(std::string_view text);
/// As `ucase`, behind what stands in `into`.
void appendUpper(std::string& into, std::string_view text);

int len(std::string_view text);
/// All of the text when it is shorter than `count`. Error 5 for a negative count.
std::string left(std::string_view text, int count);
std::string right(std::string_view text, int count);
/// From the character at `start` on, "" past the end. Error 5 for a start below 1 or a negative count.
std::string mid(std::string_view text, int start, int count = std::numeric_limits<int>::max());
/// The position of the first `sought` at or after `start`, 0 when there is none; empty text is found at `start`.
/// Error 5 for a start below 1.
int instr(std::string_view text, std::string_view sought, int start = 1);

/// Case-sensitive, from left to right; an empty `sought` changes nothing.
std::string replaceAll(std::string_view text, std::string_view sought, std::string_view replacement);

/// `count` blanks; none when it is 0 or negative.
std::string space(int count);
/// Blanks before the text until it is `width` characters wide (right-aligned); longer text is kept whole.
std::string padLeft(std::string_view text, int width);
/// Blanks after the text until it is `width` characters wide (left-aligned); longer text is kept whole.
std::string padRight(std::string_view text, int width);

bool startsWithNoCase(std::string_view text, std::string_view beginning);
bool containsNoCase(std::string_view text, std::string_view sought);

} // namespace basic
