// Characters as every language has them, whatever the locale says.
#pragma once

#include <string_view>

namespace automation {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
constexpr bool isLetter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

/// Blanks, tabs and line ends.
constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr bool isBlank(char c) { return kBlanks.find(c) != kBlanks.npos; }

/// Without any of `blanks` at its ends.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " ") {
    text.remove_prefix(text.find_first_not_of(blanks) < text.size() ? text.find_first_not_of(blanks) : text.size());
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

} // namespace automation
