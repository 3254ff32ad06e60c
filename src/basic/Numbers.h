// Reading numbers out of text, and writing doubles as text.
#pragma once

#include "automation/Value.h"

#include <string>
#include <string_view>

namespace basic {

/// The number at the start of the text, 0 when there is none. Blanks, also inside the number, are passed over; only
/// "." is a decimal sign; "1e3" and "1d3" are exponents, "&H1F" and "&O17" are read too (up to four hexadecimal digits
/// are a signed 16-bit number, unless "&" follows). Error 6 when the number is too large.
double val(std::string_view text);
/// The same number with all its digits, as decimalText writes it; "0" when there is none.
std::string valText(std::string_view text);

/// Whether the value is a number or text that cDbl takes: sign before or after, or brackets for a negative number,
/// blanks around, "," between digits, an exponent. Empty is a number; Null, dates and empty text are none.
bool isNumeric(const automation::Value& value);

/// The double in 15 significant digits without trailing zeros, "0.5" with its leading zero; exponent form ("1E+15",
/// "1.5E-20") only from 1E+15 on and below 1E-15. Error 6 for infinity and for what is no number.
std::string numberText(double number);
/// As numberText, but never in exponent form.
std::string decimalText(double number);

} // namespace basic
