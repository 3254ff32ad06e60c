#include "basic/Digits.h"

#include "automation/Ascii.h"
#include "automation/RunTimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace basic {
namespace {

/// Exponents are held within this, far beyond a double's range, so that no text can ask for gigabytes of zeros.
constexpr int kLargestExponent = 5000;

using automation::isDigit;

/// -1 for what is no digit in any radix up to 16.
int digitValue(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

void normalise(Digits& number) {
    number.whole.erase(0, std::min(number.whole.find_first_not_of('0'), number.whole.size()));
    number.fraction.erase(number.fraction.find_last_not_of('0') + 1);
    if (number.whole.empty() && number.fraction.empty()) number.negative = false;
}

/// Adds one in the last place of `digits`; true when it carries out of the first.
bool increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return false;
        }
        digits[i] = '0';
    }
    return true;
}

void incrementWhole(std::string& whole) {
    if (increment(whole)) whole.insert(whole.begin(), '1');
}

} // namespace

Digits scaled(bool negative, std::string whole, std::string fraction, int exponent) {
    if (exponent > 0) {
        const std::size_t shift = static_cast<std::size_t>(exponent);
        if (fraction.size() < shift) fraction.resize(shift, '0');
        whole.append(fraction, 0, shift);
        fraction.erase(0, shift);
    } else if (exponent < 0) {
        const std::size_t shift = static_cast<std::size_t>(-exponent);
        if (whole.size() < shift) whole.insert(0, shift - whole.size(), '0');
        fraction.insert(0, whole, whole.size() - shift);
        whole.erase(whole.size() - shift);
    }
    Digits number{negative, std::move(whole), std::move(fraction)};
    normalise(number);
    return number;
}

RadixNumber parseRadixNumber(std::string_view text) {
    if (text.size() < 3 || text[0] != '&') return {};
    const bool hexadecimal = text[1] == 'H' || text[1] == 'h';
    if (!hexadecimal && text[1] != 'O' && text[1] != 'o') return {};
    const int radix = hexadecimal ? 16 : 8;
    std::size_t at = 2;
    std::uint64_t value = 0;
    for (; at < text.size(); ++at) {
        const int digit = digitValue(text[at]);
        if (digit < 0 || digit >= radix) break;
        value = value * radix + digit;
        if (value > 0xFFFFFFFFu) automation::raise(automation::kOverflow);
    }
    if (at == 2) return {};
    if (at < text.size() && text[at] == '&') return {static_cast<std::int32_t>(value), at + 1};
    if (value <= 0xFFFF) return {static_cast<std::int16_t>(value), at};
    return {static_cast<std::int32_t>(value), at};
}

std::optional<Digits> parseNumber(std::string_view text) {
    text = automation::trimmed(text, automation::kBlanks);
    if (RadixNumber radix = parseRadixNumber(text); radix.length > 0 && radix.length == text.size())
        return digitsOf(std::int64_t{radix.value});

    bool negative = false;
    if (text.size() > 1 && text.front() == '(' && text.back() == ')') {
        negative = true;
        text = text.substr(1, text.size() - 2);
    } else if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    } else if (!text.empty() && (text.back() == '-' || text.back() == '+')) {
        negative = text.back() == '-';
        text.remove_suffix(1);
    }
    text = automation::trimmed(text, automation::kBlanks);

    std::size_t at = 0;
    std::string whole, fraction;
    for (; at < text.size() && (isDigit(text[at]) || (text[at] == ',' && at > 0)); ++at)
        if (text[at] != ',') whole += text[at];
    if (at < text.size() && text[at] == '.')
        for (++at; at < text.size() && isDigit(text[at]); ++at) fraction += text[at];
    if (whole.empty() && fraction.empty()) return std::nullopt;

    int exponent = 0;
    if (at < text.size() && std::string_view("eEdD").find(text[at]) != std::string_view::npos) {
        ++at;
        const bool down = at < text.size() && text[at] == '-';
        if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
        if (at == text.size()) return std::nullopt;
        for (; at < text.size() && isDigit(text[at]); ++at)
            exponent = std::min(exponent * 10 + (text[at] - '0'), kLargestExponent);
        if (down) exponent = -exponent;
    }
    if (at != text.size()) return std::nullopt;
    return scaled(negative, std::move(whole), std::move(fraction), exponent);
}

Digits digitsOf(double number) {
    if (!std::isfinite(number)) automation::raise(automation::kOverflow);
    std::array<char, 32> buffer;
    const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                                    std::chars_format::scientific, 14)
                          .ptr;
    // d.dddddddddddddde+xx
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = text.find('e');
    int exponent = 0;
    const char* first = text.data() + mark + 1;
    std::from_chars(*first == '+' ? first + 1 : first, end, exponent);
    return scaled(number < 0, std::string(text.substr(0, 1)), std::string(text.substr(2, mark - 2)), exponent);
}

Digits digitsOf(std::int64_t number) {
    std::string text = std::to_string(number);
    const bool negative = text.front() == '-';
    return scaled(negative, text.substr(negative ? 1 : 0), "", 0);
}

Digits digitsOf(automation::Currency amount) {
    Digits number = digitsOf(amount.tenThousandths);
    return scaled(number.negative, std::move(number.whole), "", -4);
}

Digits sum(const Digits& a, const Digits& b) {
    const std::size_t places = std::max(a.fraction.size(), b.fraction.size());
    const std::size_t length = std::max(a.whole.size(), b.whole.size()) + 1 + places; // one for a carry
    const auto aligned = [&](const Digits& number) {
        std::string digits(length - places - number.whole.size(), '0');
        digits += number.whole + number.fraction;
        digits.resize(length, '0');
        return digits;
    };
    std::string result = aligned(a), other = aligned(b);
    const bool subtracts = a.negative != b.negative;
    const bool swaps = subtracts && result < other;
    if (swaps) std::swap(result, other);
    int carry = 0;
    for (std::size_t i = length; i-- > 0;) {
        const int digit = (result[i] - '0') + (subtracts ? '0' - other[i] : other[i] - '0') + carry;
        carry = digit < 0 ? -1 : digit / 10;
        result[i] = static_cast<char>('0' + (digit + 10) % 10);
    }
    return scaled(swaps ? b.negative : a.negative, result.substr(0, length - places), result.substr(length - places),
                  0);
}

int compare(const Digits& a, const Digits& b) {
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    int order = a.whole.size() < b.whole.size() ? -1 : a.whole.size() > b.whole.size() ? 1 : a.whole.compare(b.whole);
    if (order == 0) order = a.fraction.compare(b.fraction);
    return a.negative ? -order : order;
}

void roundToPlaces(Digits& number, std::size_t places) {
    if (number.fraction.size() <= places) return;
    const bool up = number.fraction[places] >= '5';
    number.fraction.resize(places);
    if (up && increment(number.fraction)) incrementWhole(number.whole);
    normalise(number);
}

std::optional<std::int64_t> roundedHalfToEven(const Digits& number) {
    std::string whole = number.whole.empty() ? "0" : number.whole;
    const bool odd = (whole.back() - '0') % 2 != 0;
    // Without trailing zeros exactly a half is the one digit 5.
    if (number.fraction == "5" ? odd : !number.fraction.empty() && number.fraction.front() >= '5')
        incrementWhole(whole);
    if (number.negative) whole.insert(whole.begin(), '-');
    std::int64_t rounded = 0;
    if (std::from_chars(whole.data(), whole.data() + whole.size(), rounded).ec != std::errc()) return std::nullopt;
    return rounded;
}

double toDouble(const Digits& number) {
    // A double holds nothing above 309 digits before the point, and nothing after a few hundred zeros behind it.
    if (number.whole.size() > 309) automation::raise(automation::kOverflow);
    const std::string text = plainText(number);
    double result = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), result).ec == std::errc()) return result;
    if (number.whole.empty()) return 0;
    automation::raise(automation::kOverflow);
}

std::string plainText(const Digits& number, std::size_t places) {
    std::string text = number.negative ? "-" : "";
    text += number.whole.empty() ? "0" : number.whole;
    if (!number.fraction.empty() || places > 0) text += "." + number.fraction;
    if (number.fraction.size() < places) text.append(places - number.fraction.size(), '0');
    return text;
}

} // namespace basic
