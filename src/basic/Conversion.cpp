#include "basic/Conversion.h"

#include "automation/Members.h"
#include "automation/Object.h"
#include "automation/RunTimeError.h"
#include "basic/Calendar.h"
#include "basic/DateText.h"
#include "basic/Digits.h"
#include "basic/Numbers.h"

#include <cmath>
#include <limits>

namespace basic {
namespace {

using automation::raise;
using automation::Value;

/// How many objects may stand behind one another as default members, so that one that gives itself ends in an error.
constexpr int kDeepestObject = 8;

/// What `value` stands for: its target where it is a reference, and its default member's value where it is an object.
/// Neither copied nor changed, unless it is an object: then `held` holds it.
const Value& plainOf(const Value& value, Value& held) {
    const Value* plain = &value.resolved();
    for (int depth = 0; plain->isObject(); ++depth) {
        if (depth == kDeepestObject) raise(automation::kTypeMismatch);
        Value member = plain->object().get("").resolved();
        held = std::move(member);
        plain = &held;
    }
    if (plain->is<automation::Array>() || plain->isMissing()) raise(automation::kTypeMismatch);
    return *plain;
}

/// As plainOf, where Null has no meaning.
const Value& definiteOf(const Value& value, Value& held) {
    const Value& plain = plainOf(value, held);
    if (plain.isNull()) raise(automation::kInvalidUseOfNull);
    return plain;
}

Digits digitsOfText(const std::string& text) {
    std::optional<Digits> digits = parseNumber(text);
    if (!digits) raise(automation::kTypeMismatch);
    return std::move(*digits);
}

/// The nearest whole number, halves to the even one, for doubles that an integer of 64 bits holds for certain.
std::int64_t roundedHalfToEven(double number) {
    if (!(std::fabs(number) < 1e15)) raise(automation::kOverflow);
    const double below = std::floor(number);
    const double rest = number - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0);
    return static_cast<std::int64_t>(below) + (up ? 1 : 0);
}

std::int64_t wholeOf(const Digits& digits) {
    const std::optional<std::int64_t> whole = roundedHalfToEven(digits);
    if (!whole) raise(automation::kOverflow);
    return *whole;
}

std::int64_t wholeOf(const Value& value) {
    Value held;
    const Value& plain = definiteOf(value, held);
    if (const auto* v = plain.as<bool>()) return *v ? -1 : 0;
    if (const auto* v = plain.as<std::int16_t>()) return *v;
    if (const auto* v = plain.as<std::int32_t>()) return *v;
    if (const auto* v = plain.as<double>()) return roundedHalfToEven(*v);
    if (const auto* v = plain.as<automation::Date>()) return roundedHalfToEven(v->days);
    if (const auto* v = plain.as<automation::Currency>()) return wholeOf(digitsOf(*v));
    if (const auto* v = plain.as<automation::Decimal>()) return wholeOf(digitsOfText(v->text));
    if (const auto* v = plain.as<std::string>()) return wholeOf(digitsOfText(*v));
    return 0;
}

template <class Integer> Integer narrowed(std::int64_t whole) {
    if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max())
        raise(automation::kOverflow);
    return static_cast<Integer>(whole);
}

std::string textOf(const Value& plain, const Locale& locale) {
    if (const auto* v = plain.as<bool>()) return *v ? "True" : "False";
    if (const auto* v = plain.as<std::int16_t>()) return std::to_string(*v);
    if (const auto* v = plain.as<std::int32_t>()) return std::to_string(*v);
    if (const auto* v = plain.as<double>()) return numberText(*v);
    if (const auto* v = plain.as<automation::Date>()) return dateText(*v, locale);
    if (const auto* v = plain.as<automation::Currency>()) return plainText(digitsOf(*v));
    if (const auto* v = plain.as<automation::Decimal>()) return plainText(digitsOfText(v->text));
    if (const auto* v = plain.as<std::string>()) return *v;
    return "";
}

} // namespace

Value plainValue(const Value& value) {
    Value held;
    return plainOf(value, held);
}

std::int16_t cInt(const Value& value) { return narrowed<std::int16_t>(wholeOf(value)); }

std::int32_t cLng(const Value& value) { return narrowed<std::int32_t>(wholeOf(value)); }

double cDbl(const Value& value) {
    Value held;
    const Value& plain = definiteOf(value, held);
    if (const auto* v = plain.as<bool>()) return *v ? -1 : 0;
    if (const auto* v = plain.as<std::int16_t>()) return *v;
    if (const auto* v = plain.as<std::int32_t>()) return *v;
    if (const auto* v = plain.as<double>()) return *v;
    if (const auto* v = plain.as<automation::Date>()) return v->days;
    if (const auto* v = plain.as<automation::Currency>()) return toDouble(digitsOf(*v));
    if (const auto* v = plain.as<automation::Decimal>()) return toDouble(digitsOfText(v->text));
    if (const auto* v = plain.as<std::string>()) return toDouble(digitsOfText(*v));
    return 0;
}

bool cBool(const Value& value) {
    Value held;
    const Value& plain = definiteOf(value, held);
    if (const auto* v = plain.as<std::string>()) {
        if (automation::sameName(*v, "true")) return true;
        if (automation::sameName(*v, "false")) return false;
    }
    return cDbl(plain) != 0;
}

std::string cStr(const Value& value, const Locale& locale) {
    Value held;
    return textOf(definiteOf(value, held), locale);
}

std::string concatText(const Value& value, const Locale& locale) {
    Value held;
    return textOf(plainOf(value, held), locale);
}

automation::Date cDate(const Value& value, const Locale& locale) {
    Value held;
    const Value& plain = definiteOf(value, held);
    if (const auto* v = plain.as<automation::Date>()) return *v;
    if (const auto* v = plain.as<std::string>()) {
        const std::optional<automation::Date> date = parseDate(*v, locale);
        if (!date) raise(automation::kTypeMismatch);
        return *date;
    }
    const automation::Date date{cDbl(plain)};
    civil(date); // raises the overflow
    return date;
}

} // namespace basic
