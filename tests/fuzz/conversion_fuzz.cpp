// Fuzzes the language's rules for numbers, dates and text: the input is a value's text, a line end, and a pattern.
#include "automation/RunTimeError.h"
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace automation;

const basic::Locale kLocales[] = {
    {},
    {basic::DateOrder::monthDayYear, '/', "M/d/yyyy", '.', ',', 1252},
    {basic::DateOrder::dayMonthYear, '.', "dd.MM.yyyy", ',', '.', 1252},
    {basic::DateOrder::yearMonthDay, '-', "yyyy-MM-dd", ',', ' ', 1250},
    {basic::DateOrder::dayMonthYear, '-', "d-MMM-yyyy", '.', ',', 1256},
    {basic::DateOrder::dayMonthYear, ' ', "d MMMM yyyy", '.', ',', 874},
    {basic::DateOrder::yearMonthDay, '.', "yyyy. MM. dd.", ',', ' ', 1250},
    {basic::DateOrder::dayMonthYear, '.', "dddd, d.MMM yyyy 'r.'", ',', ' ', 1251},
};

void hold(bool held, const char* rule) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

/// What the work gives, or nothing and the number of its error, which must be one of those in the headers.
template <class Work> auto attempt(Work work, long* number = nullptr) -> std::optional<decltype(work())> {
    try {
        return work();
    } catch (const RunTimeError& raised) {
        const long error = raised.number();
        hold(error == kInvalidCall || error == kOverflow || error == kTypeMismatch, "an error that no header names");
        if (number) *number = error;
        return std::nullopt;
    }
}

/// Whether two numbers agree in 15 significant digits.
bool close(double a, double b) { return std::fabs(a - b) <= 1e-14 * std::fmax(std::fabs(a), std::fabs(b)); }

void checkWritten(double number) {
    const std::string text = basic::numberText(number);
    const double again = basic::cDbl(text);
    hold(close(number, again) || std::fabs(number) < 1e-300, "a number's text is that number");
    hold(basic::numberText(again) == text, "a number's text is written as it was read");
    hold(basic::val(text) == again, "Val reads what is written");
    hold(basic::isNumeric(text), "a number's text is numeric");
    const std::string plain = basic::decimalText(number);
    hold(plain.find_first_not_of("-.0123456789") == std::string::npos, "plain digits have no exponent");
    hold(basic::cDbl(plain) == again, "plain digits are the same number");
}

void checkNumbers(const std::string& text) {
    long error = 0;
    const auto value = attempt([&] { return basic::val(text); }, &error);
    hold(value ? std::isfinite(*value) : error == kOverflow, "Val of any text is a number or overflows");
    if (value) checkWritten(*value);

    const auto number = attempt([&] { return basic::cDbl(text); });
    hold(basic::isNumeric(text) == number.has_value(), "numeric is what converts");
    const auto whole = attempt([&] { return basic::cLng(text); });
    const auto small = attempt([&] { return basic::cInt(text); }, &error);
    attempt([&] { return basic::cBool(text); });
    attempt([&] { return basic::cDate(Value(Decimal{"1"})); });
    if (!number) return hold(error != 0 && (!whole || error == kOverflow), "what is no number is no whole number");
    hold(std::isfinite(*number), "a number is finite");
    checkWritten(*number);
    const bool fits = *number > -2147483648.0 && *number < 2147483647.0;
    hold(fits ? whole.has_value() : !whole || std::fabs(*number) < 2147483648.6, "a whole number fits or overflows");
    if (whole) hold(std::fabs(*whole - *number) <= 0.5, "a whole number is the nearest");
    if (small) hold(whole && *small == *whole, "small and large whole numbers agree");
    if (whole && !small) hold(*whole < -32768 || *whole > 32767, "a small whole number fits");
    const auto byDouble = attempt([&] { return basic::cLng(*number); });
    if (whole && byDouble) hold(std::abs(double(*whole) - double(*byDouble)) <= 1, "text and number round alike");

    const std::string rounded = basic::format(text, "0.00");
    hold(std::fabs(basic::cDbl(rounded) - *number) <= 0.005 + 1e-14 * std::fabs(*number),
         "a format rounds to its places");
    hold(basic::format(rounded, "0.00") == rounded, "a format of its own text changes nothing");
    hold(basic::replaceAll(basic::format(text, "#,##0.00"), ",", "") == rounded, "grouping only adds signs");
}

void checkDates(const std::string& text, const basic::Locale& locale) {
    const auto date = attempt([&] { return basic::cDate(text, locale); });
    if (!date) return;
    const basic::CivilTime parts = basic::civil(*date);
    hold(basic::dateOf(parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second) == *date,
         "a date is its parts");
    const std::string iso = basic::format(*date, "yyyy-mm-dd hh:nn:ss");
    hold(basic::cDate(iso, locale) == *date, "year first is read in every locale");
    hold(basic::cDate(basic::cStr(*date, locale), locale) == *date, "a date's text is that date");
    hold(basic::format(text, "yyyy-mm-dd hh:nn:ss", locale) == iso, "a format reads what cDate reads");
}

void checkText(const std::string& text, const std::string& other) {
    const int length = basic::len(text);
    hold(length >= 0 && static_cast<std::size_t>(length) <= text.size(), "a length counts characters");
    for (int count : {0, 1, length / 2, length, length + 1}) {
        const std::string left = basic::left(text, count);
        hold(left + basic::mid(text, count + 1) == text, "left and the rest are the text");
        hold(basic::right(text, length - std::min(count, length)) == basic::mid(text, count + 1), "right is the rest");
    }
    hold(basic::trim(text) == basic::ltrim(basic::rtrim(text)), "trimming is trimming both ends");
    const std::string upper = basic::ucase(text), lower = basic::lcase(text);
    hold(basic::ucase(upper) == upper && basic::lcase(lower) == lower, "case is changed once");
    hold(basic::len(upper) == length && basic::len(lower) == length, "case changes no length");
    hold(basic::containsNoCase(text, other) || basic::instr(text, other) == 0, "what is found is found without case");
    if (const int at = basic::instr(text, other); at > 0 && !other.empty())
        hold(basic::mid(text, at, basic::len(other)) == other, "text stands where it was found");
    if (!other.empty()) basic::replaceAll(text, other, other + "x");
    hold(basic::len(basic::padLeft(text, 40)) == std::max(40, length), "padding gives the width");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string text = input.substr(0, end);
    const std::string pattern = input.substr(std::min(end + 1, size));
    checkNumbers(text);
    checkText(text, pattern);
    for (const basic::Locale& locale : kLocales) {
        checkDates(text, locale);
        attempt([&] { return basic::format(text, pattern, locale); });
        attempt([&] { return basic::format(basic::val(text), pattern, locale); });
        attempt([&] { return basic::cStr(Date{basic::val(text)}, locale); });
    }
    return 0;
}
