#include "basic/Numbers.h"

#include "automation/Ascii.h"
#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Digits.h"

#include <cmath>

namespace basic {
namespace {

/// The largest and smallest magnitudes written without exponent.
constexpr std::size_t kMostWholeDigits = 15;
constexpr double kSmallestPlain = 1e-15;

using automation::isDigit;

bool isExponentMark(char c) { return c == 'e' || c == 'E' || c == 'd' || c == 'D'; }

/// One digit, the others behind a point, and a signed exponent of two digits or more.
std::string exponentText(const Digits& number) {
    std::string digits = number.whole + number.fraction;
    int exponent = static_cast<int>(number.whole.size()) - 1;
    const std::size_t zeros = digits.find_first_not_of('0');
    digits.erase(0, zeros);
    exponent -= static_cast<int>(zeros);
    digits.erase(digits.find_last_not_of('0') + 1);

    std::string text = number.negative ? "-" : "";
    text += digits.front();
    if (digits.size() > 1) text += "." + digits.substr(1);
    text += exponent < 0 ? "E-" : "E+";
    const std::string power = std::to_string(std::abs(exponent));
    return text + (power.size() < 2 ? "0" : "") + power;
}

std::optional<Digits> leadingNumber(std::string_view text) {
    std::string dense;
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') dense += c;
    if (RadixNumber radix = parseRadixNumber(dense); radix.length > 0) return digitsOf(std::int64_t{radix.value});

    std::size_t end = 0;
    const auto at = [&](std::size_t i) { return i < dense.size() ? dense[i] : '\0'; };
    const auto skipDigits = [&] {
        while (isDigit(at(end))) ++end;
    };
    if (at(end) == '-' || at(end) == '+') ++end;
    skipDigits();
    if (at(end) == '.') {
        ++end;
        skipDigits();
    }
    if (isExponentMark(at(end))) {
        const std::size_t sign = at(end + 1) == '-' || at(end + 1) == '+' ? 1 : 0;
        if (isDigit(at(end + 1 + sign))) {
            end += 1 + sign;
            skipDigits();
        }
    }
    return parseNumber(std::string_view(dense).substr(0, end));
}

} // namespace

double val(std::string_view text) {
    const std::optional<Digits> number = leadingNumber(text);
    return number ? toDouble(*number) : 0;
}

std::string valText(std::string_view text) { return plainText(leadingNumber(text).value_or(Digits{})); }

bool isNumeric(const automation::Value& value) {
    try {
        const automation::Value plain = plainValue(value);
        if (plain.isNull() || plain.is<automation::Date>()) return false;
        if (!plain.isText()) return true;
        const std::optional<Digits> digits = parseNumber(*plain.as<std::string>());
        if (digits) toDouble(*digits);
        return digits.has_value();
    } catch (const automation::RunTimeError&) {
        return false;
    }
}

std::string decimalText(double number) { return plainText(digitsOf(number)); }

std::string numberText(double number) {
    const Digits digits = digitsOf(number);
    const bool tiny = number != 0 && std::fabs(number) < kSmallestPlain;
    return digits.whole.size() > kMostWholeDigits || tiny ? exponentText(digits) : plainText(digits);
}

} // namespace basic
