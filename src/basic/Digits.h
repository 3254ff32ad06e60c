// A decimal number as its digits, so that rounding happens on what people read and not on binary fractions.
#pragma once

#include "automation/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace basic {

/// Kept without leading zeros in `whole` and trailing zeros in `fraction`; zero has both empty and is never negative.
struct Digits {
    bool negative = false;
    std::string whole;
    std::string fraction;
};

/// Reads what isNumeric accepts.
std::optional<Digits> parseNumber(std::string_view text);
/// The digits as given, times ten to the power of `exponent`.
Digits scaled(bool negative, std::string whole, std::string fraction, int exponent);
/// The value of "&H1F" or "&O17" at the start of the text, and how many characters it took (0: there is none).
struct RadixNumber {
    std::int32_t value = 0;
    std::size_t length = 0;
};
RadixNumber parseRadixNumber(std::string_view text);

/// 15 significant digits. Error 6 for infinity and for what is no number.
Digits digitsOf(double number);
Digits digitsOf(std::int64_t number);
Digits digitsOf(automation::Currency amount);

Digits sum(const Digits& a, const Digits& b);
/// Negative, 0 or positive.
int compare(const Digits& a, const Digits& b);

/// Rounds to `places` digits after the point, halves away from zero.
void roundToPlaces(Digits& number, std::size_t places);
/// The nearest whole number, halves to the even one; nothing when it does not fit.
std::optional<std::int64_t> roundedHalfToEven(const Digits& number);

/// Error 6 when it is too large for a double.
double toDouble(const Digits& number);
/// For example "-0.5"; never an exponent. With so many zeros at the end that it has at least `places` digits after the
/// point.
std::string plainText(const Digits& number, std::size_t places = 0);

} // namespace basic
