// Text between the module (UTF-8, counted in characters) and Windows (UTF-16, counted in code units).
#pragma once

#include <string>
#include <string_view>

namespace win32 {

std::wstring wide(std::string_view text);
/// A surrogate without its partner becomes U+FFFD.
std::string narrow(std::wstring_view text);

/// As much of a text as a row or a tip can show, cut between two characters: a database may hold texts of many
/// megabytes, and windows ask for what they paint again and again.
std::string_view beginning(std::string_view text);

/// How many characters the first `units` code units make.
int charactersIn(std::wstring_view text, int units);
/// How many code units the first `characters` take.
int unitsOf(std::wstring_view text, int characters);
/// Whether the text ends or breaks in the middle of a character: the second half is still to be typed.
bool hasHalfCharacter(std::wstring_view text);

} // namespace win32
