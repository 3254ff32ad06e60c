#include "sandbox/database/Cell.h"

#include "automation/Ascii.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/ServerTime.h"
#include "sandbox/database/Translator.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace sandbox {
namespace {

using automation::trimmed;
using automation::Value;
using basic::Digits;

struct Range {
    std::int64_t low, high;
};

Range rangeOf(Kind kind) {
    switch (kind) {
    case Kind::smallInt: return {-32768, 32767};
    case Kind::integer: return {-2147483648LL, 2147483647LL};
    default: return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

[[noreturn]] void failText(const std::string& text, const SqlType& to) {
    fail(kConversionError,
         "Syntax error converting the varchar value '" + text + "' to a column of data type " + typeName(to) + ".");
}

[[noreturn]] void failRange(const SqlType& from, const SqlType& to) {
    const std::string what = from.kind == Kind::text ? "varchar" : "expression";
    fail(kDataOverflow, "Arithmetic overflow error converting " + what + " to data type " + typeName(to) + ".");
}

std::int64_t inRange(std::int64_t number, const SqlType& from, const SqlType& to) {
    const Range range = rangeOf(to.kind);
    if (number < range.low || number > range.high) failRange(from, to);
    return number;
}

Digits money(std::int64_t tenThousandths) { return basic::digitsOf(automation::Currency{tenThousandths}); }

double toReal(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (auto* real = std::get_if<double>(&cell)) return *real;
    if (auto* whole = std::get_if<std::int64_t>(&cell)) {
        if (from.kind == Kind::money) return static_cast<double>(*whole) / 10000.0;
        if (from.kind == Kind::dateTime)
            return static_cast<double>(*whole - kServerEpoch) / static_cast<double>(kMillisecondsPerDay);
        return static_cast<double>(*whole);
    }
    const std::string& text = std::get<std::string>(cell);
    std::string_view digits = trimmed(text);
    if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (digits.empty()) return 0;
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() || !std::isfinite(number))
        fail(kConversionError, "Error converting data type varchar to " + typeName(to) + ".");
    return number;
}

Digits toDecimal(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (auto* real = std::get_if<double>(&cell)) {
        if (std::fabs(*real) >= 1e38) failRange(from, to);
        return basic::digitsOf(*real);
    }
    if (auto* whole = std::get_if<std::int64_t>(&cell))
        return from.kind == Kind::money ? money(*whole) : basic::digitsOf(*whole);
    std::string digits(trimmed(std::get<std::string>(cell)));
    if (to.kind == Kind::money) {
        // Money takes a currency sign and thousands separators.
        std::erase(digits, ',');
        std::erase(digits, '$');
    }
    if (digits.empty() && to.kind == Kind::money) return {};
    auto number = parseDecimal(digits);
    if (!number) fail(kConversionError, "Error converting data type varchar to " + typeName(to) + ".");
    return *number;
}

std::int64_t wholeText(const std::string& text, const SqlType& to) {
    std::string_view digits = trimmed(text);
    if (digits.empty()) return 0;
    std::string_view number = digits;
    if (number.front() == '+') number.remove_prefix(1);
    if (number.empty() || (number.front() == '-' && digits.front() == '+')) failText(text, to);
    std::int64_t whole = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), whole);
    const bool all = read.ptr == number.data() + number.size();
    if (all && read.ec == std::errc::result_out_of_range)
        fail(kDataOverflow,
             "The conversion of the varchar value '" + text + "' overflowed an " + typeName(to) + " column.");
    if (!all || read.ec != std::errc()) failText(text, to);
    const Range range = rangeOf(to.kind);
    if (whole < range.low || whole > range.high)
        fail(kDataOverflow,
             "The conversion of the varchar value '" + text + "' overflowed an " + typeName(to) + " column.");
    return whole;
}

std::int64_t toWhole(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (from.kind == Kind::text) return wholeText(std::get<std::string>(cell), to);
    if (auto* real = std::get_if<double>(&cell)) {
        if (!(std::fabs(*real) < 9.2e18)) failRange(from, to);
        return inRange(static_cast<std::int64_t>(*real), from, to);
    }
    if (auto* whole = std::get_if<std::int64_t>(&cell)) {
        if (from.kind == Kind::dateTime)
            return inRange((*whole - kServerEpoch + kMillisecondsPerDay / 2) / kMillisecondsPerDay, from, to);
        if (from.kind != Kind::money) return inRange(*whole, from, to);
    }
    Digits digits = toDecimal(cell, from, to);
    if (from.kind == Kind::money) basic::roundToPlaces(digits, 0);
    digits.fraction.clear();
    const std::optional<std::int64_t> whole = basic::roundedHalfToEven(digits);
    if (!whole) failRange(from, to);
    return inRange(*whole, from, to);
}

std::int64_t toBit(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (from.kind == Kind::text) {
        const std::string word = basic::ucase(trimmed(std::get<std::string>(cell)));
        if (word == "TRUE") return 1;
        if (word == "FALSE") return 0;
        return wholeText(std::get<std::string>(cell), to) != 0;
    }
    if (auto* real = std::get_if<double>(&cell)) return *real != 0;
    if (auto* whole = std::get_if<std::int64_t>(&cell)) return *whole != 0;
    return basic::compare(toDecimal(cell, from, to), {}) != 0;
}

std::int64_t toMoment(const Cell& cell, const SqlType& from) {
    if (from.kind == Kind::text) {
        const std::string& text = std::get<std::string>(cell);
        auto moment = parseMoment(text);
        if (!moment) fail(kConversionError, "Syntax error converting datetime from character string.");
        return *moment;
    }
    const double days = toReal(cell, from, {Kind::dateTime});
    if (days < -53690 || days >= 2958464)
        fail(kDataOverflow, "Arithmetic overflow error converting expression to data type datetime.");
    return static_cast<Moment>(std::llround(days * static_cast<double>(kMillisecondsPerDay))) + kServerEpoch;
}

std::string toText(const Cell& cell, const SqlType& from) {
    switch (from.kind) {
    case Kind::money: {
        Digits amount = money(std::get<std::int64_t>(cell));
        basic::roundToPlaces(amount, 2);
        return basic::plainText(amount, 2);
    }
    case Kind::dateTime: fail(kConversionError, "A datetime is not converted to text here.");
    case Kind::real: {
        // The server writes a float with at most six digits unless asked for more.
        char out[40];
        std::snprintf(out, sizeof out, "%.6g", std::get<double>(cell));
        return out;
    }
    default: break;
    }
    if (auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
    return std::get<std::string>(cell);
}

std::string fitDecimal(Digits number, const SqlType& from, const SqlType& to) {
    basic::roundToPlaces(number, static_cast<std::size_t>(to.scale));
    if (static_cast<int>(number.whole.size()) > to.size - to.scale) failRange(from, to);
    return basic::plainText(number, static_cast<std::size_t>(to.scale));
}

} // namespace

std::optional<Digits> parseDecimal(std::string_view text) {
    text = trimmed(text);
    const std::string_view digits = text.substr(!text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0);
    // The host's language reads more: separators, brackets, exponents.
    if (digits.find_first_not_of("0123456789.") != std::string_view::npos) return std::nullopt;
    return basic::parseNumber(text);
}

Cell convertCell(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (std::holds_alternative<std::monostate>(cell)) return cell;
    switch (to.kind) {
    case Kind::unknown: return cell;
    case Kind::text: {
        std::string text = toText(cell, from);
        if (to.size > 0 && basic::len(text) > to.size) {
            if (from.kind != Kind::text) failRange(from, to);
            text = basic::left(text, to.size);
        }
        if (to.fixed) text = basic::padRight(text, to.size);
        return text;
    }
    case Kind::bit: return toBit(cell, from, to);
    case Kind::smallInt:
    case Kind::integer:
    case Kind::bigInt: return toWhole(cell, from, to);
    case Kind::money: {
        Digits amount = toDecimal(cell, from, to);
        basic::roundToPlaces(amount, 4);
        const auto number = basic::roundedHalfToEven(basic::scaled(amount.negative, amount.whole, amount.fraction, 4));
        if (!number) failRange(from, to);
        return *number;
    }
    case Kind::decimal:
        // A type without digits is the common type of a comparison: every digit counts there.
        if (to.size == 0) return basic::plainText(toDecimal(cell, from, to));
        return fitDecimal(toDecimal(cell, from, to), from, to);
    case Kind::real: return toReal(cell, from, to);
    case Kind::dateTime: return toMoment(cell, from);
    }
    return cell;
}

Cell storeCell(const Cell& cell, const SqlType& from, const SqlType& to) {
    if (to.kind != Kind::text || from.kind != Kind::text || to.size == 0) return convertCell(cell, from, to);
    auto* text = std::get_if<std::string>(&cell);
    if (!text) return cell;
    if (static_cast<int>(text->size()) > to.size && basic::len(basic::rtrim(*text)) > to.size)
        fail(kDataOverflow, "String or binary data would be truncated.");
    return convertCell(cell, from, to);
}

bool looksNumeric(std::string_view text) {
    text = trimmed(text);
    if (text.empty()) return false;
    std::size_t i = 0;
    auto at = [&] { return i < text.size() ? text[i] : '\0'; };
    auto digit = [&] { return automation::isDigit(at()); };
    bool money = false;
    // A sign and a currency sign may stand before the digits, in either order.
    for (int seen = 0; seen < 2; ++seen) {
        if (at() == '+' || at() == '-') ++i;
        if (at() == '$') {
            money = true;
            ++i;
        }
    }
    while (at() == ' ') ++i;
    std::size_t digits = 0;
    bool point = false;
    bool comma = false;
    for (; digit() || (at() == ',' && !point) || (at() == '.' && !point); ++i) {
        if (digit()) ++digits;
        point = point || at() == '.';
        comma = comma || at() == ',';
    }
    if (digits > 0 && !money && !comma && (at() == 'e' || at() == 'E' || at() == 'd' || at() == 'D')) {
        ++i;
        if (at() == '+' || at() == '-') ++i;
        if (!digit()) return false;
        while (digit()) ++i;
    }
    return i == text.size();
}

Value valueOf(const Cell& cell, const SqlType& type) {
    if (std::holds_alternative<std::monostate>(cell)) return automation::Null{};
    if (auto* whole = std::get_if<std::int64_t>(&cell)) {
        switch (type.kind) {
        case Kind::bit: return *whole != 0;
        case Kind::smallInt: return static_cast<std::int16_t>(*whole);
        case Kind::money: return automation::Currency{*whole};
        case Kind::dateTime: return dateOf(*whole);
        case Kind::bigInt: return automation::Decimal{std::to_string(*whole)};
        case Kind::real: return static_cast<double>(*whole);
        default: return static_cast<std::int32_t>(*whole);
        }
    }
    if (auto* real = std::get_if<double>(&cell)) return *real;
    const std::string& text = std::get<std::string>(cell);
    if (type.kind == Kind::decimal) return automation::Decimal{text};
    return text;
}

TypedCell cellOf(const Value& value) {
    struct Visitor {
        TypedCell operator()(automation::Empty) const { fail(kWrongValueType); }
        TypedCell operator()(automation::Null) const { return {}; }
        TypedCell operator()(automation::Missing) const { fail(kWrongValueType); }
        TypedCell operator()(bool v) const { return {std::int64_t(v), {Kind::bit}}; }
        TypedCell operator()(std::int16_t v) const { return {std::int64_t(v), {Kind::smallInt}}; }
        TypedCell operator()(std::int32_t v) const { return {std::int64_t(v), {Kind::integer}}; }
        TypedCell operator()(double v) const { return {v, {Kind::real}}; }
        TypedCell operator()(automation::Currency v) const { return {v.tenThousandths, {Kind::money}}; }
        TypedCell operator()(const automation::Decimal& v) const {
            const auto number = parseDecimal(v.text);
            if (!number) fail(kWrongValueType);
            return {basic::plainText(*number), {Kind::decimal, 38, static_cast<int>(number->fraction.size())}};
        }
        TypedCell operator()(automation::Date v) const { return {momentOf(v), {Kind::dateTime}}; }
        TypedCell operator()(const std::string& v) const { return {v, {Kind::text}}; }
        TypedCell operator()(const automation::Array&) const { fail(kWrongValueType); }
        TypedCell operator()(const automation::ObjectPtr& v) const {
            if (!v) fail(kWrongValueType);
            return cellOf(v->get(""));
        }
        TypedCell operator()(automation::Reference) const { fail(kWrongValueType); }
    };
    return std::visit(Visitor{}, value.storage());
}

std::string literalText(const Cell& cell, const SqlType& type) {
    if (std::holds_alternative<std::monostate>(cell)) return "NULL";
    if (type.kind == Kind::dateTime) return quotedText(momentText(std::get<std::int64_t>(cell)));
    if (type.kind == Kind::money) return basic::plainText(money(std::get<std::int64_t>(cell)));
    if (auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
    if (auto* real = std::get_if<double>(&cell)) return basic::decimalText(*real);
    const std::string& text = std::get<std::string>(cell);
    if (type.kind == Kind::decimal) return text;
    return (type.wide ? "N" : "") + quotedText(text);
}

} // namespace sandbox
