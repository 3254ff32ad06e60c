#include "basic/Format.h"

#include "automation/Ascii.h"
#include "automation/RunTimeError.h"
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Digits.h"
#include "basic/Numbers.h"

namespace basic {
namespace {

using automation::isLetter;
using automation::lower;
using automation::raise;
using automation::Value;

struct NumberPattern {
    std::size_t fewestWhole = 0;    ///< digits before the point, with leading zeros
    std::size_t fewestFraction = 0; ///< digits behind it, with trailing zeros
    std::size_t mostFraction = 0;
    bool point = false;
    bool grouped = false;
};

NumberPattern parseNumberPattern(std::string_view text) {
    NumberPattern pattern;
    for (char c : text) {
        if (c == '.' && !pattern.point) {
            pattern.point = true;
        } else if (c == ',' && !pattern.point) {
            pattern.grouped = true;
        } else if (c != '#' && c != '0') {
            raise(automation::kInvalidCall);
        } else if (pattern.point) {
            ++pattern.mostFraction;
            if (c == '0') pattern.fewestFraction = pattern.mostFraction;
        } else if (c == '0' || pattern.fewestWhole > 0) {
            ++pattern.fewestWhole;
        }
    }
    return pattern;
}

std::string formatDigits(Digits number, const NumberPattern& pattern) {
    roundToPlaces(number, pattern.mostFraction);
    std::string& whole = number.whole;
    if (whole.size() < pattern.fewestWhole) whole.insert(0, pattern.fewestWhole - whole.size(), '0');
    if (number.fraction.size() < pattern.fewestFraction) number.fraction.resize(pattern.fewestFraction, '0');
    if (pattern.grouped)
        for (std::size_t at = whole.size(); at > 3; at -= 3) whole.insert(at - 3, 1, ',');
    return (number.negative ? "-" : "") + whole + (pattern.point ? "." : "") + number.fraction;
}

std::string formatNumber(const Value& plain, const NumberPattern& pattern) {
    if (plain.isText() && !isNumeric(plain)) return *plain.as<std::string>();
    if (const auto* v = plain.as<double>()) return formatDigits(digitsOf(*v), pattern);
    if (plain.is<automation::Date>() || plain.is<bool>()) return formatDigits(digitsOf(cDbl(plain)), pattern);
    // All other kinds write themselves without losing a digit.
    const std::optional<Digits> digits = parseNumber(cStr(plain));
    if (!digits) raise(automation::kTypeMismatch);
    return formatDigits(*digits, pattern);
}

std::string monthText(int month, std::size_t run) {
    switch (run) {
    case 1:
    case 2: return padded(month, run);
    case 3: return std::string(monthName(month).substr(0, 3));
    case 4: return std::string(monthName(month));
    }
    raise(automation::kInvalidCall);
}

std::string yearText(int year, std::size_t run) {
    if (run == 2) return padded(year % 100, 2);
    if (run != 4) raise(automation::kInvalidCall);
    return padded(year, 4);
}

/// With one letter as it is, with two in two digits.
std::string shortText(int number, std::size_t run) {
    if (run > 2) raise(automation::kInvalidCall);
    return padded(number, run);
}

std::string formatDate(const CivilTime& time, std::string_view pattern) {
    std::string text;
    bool afterHours = false;
    for (std::size_t i = 0; i < pattern.size();) {
        const char letter = lower(pattern[i]);
        std::size_t run = 1;
        if (letter == '\\') {
            text += pattern.substr(i + 1, 1);
            i += 2;
            continue;
        }
        if (letter == '"') {
            const std::size_t end = pattern.find('"', i + 1);
            if (end == std::string_view::npos) raise(automation::kInvalidCall);
            text += pattern.substr(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        if (!isLetter(letter)) {
            text += pattern[i++];
            continue;
        }
        while (i + run < pattern.size() && lower(pattern[i + run]) == letter) ++run;
        switch (letter) {
        case 'y': text += yearText(time.year, run); break;
        case 'm': text += afterHours ? shortText(time.minute, run) : monthText(time.month, run); break;
        case 'd': text += shortText(time.day, run); break;
        case 'h': text += shortText(time.hour, run); break;
        case 'n': text += shortText(time.minute, run); break;
        case 's': text += shortText(time.second, run); break;
        default: raise(automation::kInvalidCall);
        }
        afterHours = letter == 'h';
        i += run;
    }
    return text;
}

} // namespace

std::string format(const Value& value, std::string_view pattern, const Locale& locale) {
    const Value plain = plainValue(value);
    if (plain.isNull() || plain.isEmpty()) return "";
    if (pattern.empty()) return cStr(plain, locale);
    const bool forNumbers = pattern.find_first_of("#0") != std::string_view::npos &&
                            pattern.find_first_of("yYmMdDhHnNsS\"\\") == std::string_view::npos;
    if (forNumbers) return formatNumber(plain, parseNumberPattern(pattern));
    return formatDate(civil(cDate(plain, locale)), pattern);
}

std::string format(const Value& value, std::string_view pattern) { return format(value, pattern, Locale()); }

} // namespace basic
