#include "com/DecimalText.h"

#include "automation/RunTimeError.h"

#include <array>
#include <cstdint>

namespace com {
namespace {

constexpr int kMostDecimals = 28;

// The number's 96 bits, most significant word first.
using Words = std::array<std::uint32_t, 3>;

std::uint32_t divideByTen(Words& words) {
    std::uint64_t remainder = 0;
    for (std::uint32_t& word : words) {
        const std::uint64_t part = remainder << 32 | word;
        word = static_cast<std::uint32_t>(part / 10);
        remainder = part % 10;
    }
    return static_cast<std::uint32_t>(remainder);
}

void appendDigit(Words& words, std::uint32_t digit) {
    std::uint64_t carry = digit;
    for (auto word = words.rbegin(); word != words.rend(); ++word) {
        const std::uint64_t part = std::uint64_t{*word} * 10 + carry;
        *word = static_cast<std::uint32_t>(part);
        carry = part >> 32;
    }
    if (carry) automation::raise(automation::kOverflow);
}

} // namespace

std::string decimalText(const DECIMAL& number) {
    Words words{number.Hi32, number.Mid32, number.Lo32};
    std::string reversed;
    while (words != Words{}) reversed += static_cast<char>('0' + divideByTen(words));
    const std::size_t scale = number.scale;
    while (reversed.size() <= scale) reversed += '0';
    std::string text(reversed.rbegin(), reversed.rend());
    if (scale) text.insert(text.size() - scale, 1, '.');
    const bool zero = !number.Hi32 && !number.Mid32 && !number.Lo32;
    return number.sign & DECIMAL_NEG && !zero ? "-" + text : text;
}

DECIMAL decimalNumber(std::string_view text) {
    DECIMAL number{};
    if (text.starts_with('-')) {
        number.sign = DECIMAL_NEG;
        text.remove_prefix(1);
    }
    Words words{};
    bool afterPoint = false, digits = false;
    int decimals = 0;
    for (const char c : text) {
        if (c == '.' && !afterPoint) {
            afterPoint = true;
        } else if (c >= '0' && c <= '9') {
            appendDigit(words, static_cast<std::uint32_t>(c - '0'));
            digits = true;
            if (afterPoint && ++decimals > kMostDecimals) automation::raise(automation::kOverflow);
        } else {
            automation::raise(automation::kTypeMismatch);
        }
    }
    if (!digits) automation::raise(automation::kTypeMismatch);
    number.scale = static_cast<BYTE>(decimals);
    number.Hi32 = words[0];
    number.Mid32 = words[1];
    number.Lo32 = words[2];
    return number;
}

} // namespace com
