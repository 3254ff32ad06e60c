// The 96-bit DECIMAL and its exact text.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>

namespace com {

/// All digits that the number carries, trailing zeros of its scale included: 1.50 stays "1.50".
std::string decimalText(const DECIMAL& number);

/// Error 6 when the digits do not fit into 96 bits or more than 28 of them follow the point; error 13 when the text is
/// no plain decimal number.
DECIMAL decimalNumber(std::string_view text);

} // namespace com
