// Exact arithmetic on decimal numbers kept as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sandbox {

/// An optional sign, digits, optionally "." with digits; blanks around are allowed. Nothing for other text.
/// The result has no blanks, no "+", no needless leading zeros, and no minus sign on zero.
std::optional<std::string> parseDecimal(std::string_view text);

// The functions below take what parseDecimal gives.

int compareDecimals(std::string_view a, std::string_view b);
std::string addDecimals(std::string_view a, std::string_view b);
std::string negateDecimal(std::string_view a);

/// Exactly `scale` digits after the point; halves round away from zero.
std::string roundDecimal(std::string_view number, int scale);
/// Digits before the point are cut off towards zero.
std::string truncateDecimal(std::string_view number);
/// Digits before the point, leading zeros not counted.
int wholeDigits(std::string_view number);
int decimalScale(std::string_view number);

} // namespace sandbox
