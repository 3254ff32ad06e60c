#include "sandbox/database/DecimalText.h"

#include "automation/Ascii.h"

#include <algorithm>
#include <vector>

namespace sandbox {
namespace {

/// The number as digits without point: value = sign * digits / 10^scale.
struct Parts {
    bool negative = false;
    std::string digits;
    int scale = 0;
};

Parts split(std::string_view text) {
    Parts parts;
    if (!text.empty() && text.front() == '-') {
        parts.negative = true;
        text.remove_prefix(1);
    }
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) {
        parts.digits = text;
    } else {
        parts.digits = std::string(text.substr(0, point)) + std::string(text.substr(point + 1));
        parts.scale = static_cast<int>(text.size() - point - 1);
    }
    return parts;
}

std::string join(Parts parts) {
    if (static_cast<int>(parts.digits.size()) <= parts.scale)
        parts.digits.insert(0, static_cast<std::size_t>(parts.scale) + 1 - parts.digits.size(), '0');
    std::string whole = parts.digits.substr(0, parts.digits.size() - static_cast<std::size_t>(parts.scale));
    const std::string fraction = parts.digits.substr(whole.size());
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
    const bool zero = whole == "0" && fraction.find_first_not_of('0') == std::string::npos;
    std::string text = parts.negative && !zero ? "-" : "";
    text += whole;
    if (parts.scale > 0) text += "." + fraction;
    return text;
}

void align(Parts& a, Parts& b) {
    const int scale = std::max(a.scale, b.scale);
    for (Parts* parts : {&a, &b}) {
        parts->digits.append(static_cast<std::size_t>(scale - parts->scale), '0');
        parts->scale = scale;
    }
    const std::size_t length = std::max(a.digits.size(), b.digits.size());
    for (Parts* parts : {&a, &b}) parts->digits.insert(0, length - parts->digits.size(), '0');
}

std::string addDigits(const std::string& a, const std::string& b) {
    std::string sum(a.size() + 1, '0');
    int carry = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        const int digit = (a[i] - '0') + (b[i] - '0') + carry;
        sum[i + 1] = static_cast<char>('0' + digit % 10);
        carry = digit / 10;
    }
    sum[0] = static_cast<char>('0' + carry);
    return sum;
}

/// a >= b, both of one length.
std::string subtractDigits(const std::string& a, const std::string& b) {
    std::string difference(a.size(), '0');
    int borrow = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        int digit = (a[i] - '0') - (b[i] - '0') - borrow;
        borrow = digit < 0 ? 1 : 0;
        difference[i] = static_cast<char>('0' + digit + borrow * 10);
    }
    return difference;
}

} // namespace

std::optional<std::string> parseDecimal(std::string_view text) {
    text = automation::trimmed(text);
    Parts parts;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        parts.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    bool point = false;
    for (char c : text) {
        if (c == '.' && !point) {
            point = true;
        } else if (automation::isDigit(c)) {
            parts.digits += c;
            if (point) ++parts.scale;
        } else {
            return std::nullopt;
        }
    }
    if (parts.digits.empty()) return std::nullopt;
    return join(std::move(parts));
}

int compareDecimals(std::string_view left, std::string_view right) {
    Parts a = split(left);
    Parts b = split(right);
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    align(a, b);
    const int order = a.digits.compare(b.digits);
    return a.negative ? -order : order;
}

std::string addDecimals(std::string_view left, std::string_view right) {
    Parts a = split(left);
    Parts b = split(right);
    align(a, b);
    Parts sum{a.negative, {}, a.scale};
    if (a.negative == b.negative) {
        sum.digits = addDigits(a.digits, b.digits);
    } else if (a.digits >= b.digits) {
        sum.digits = subtractDigits(a.digits, b.digits);
    } else {
        sum.negative = b.negative;
        sum.digits = subtractDigits(b.digits, a.digits);
    }
    return join(std::move(sum));
}

std::string negateDecimal(std::string_view a) {
    Parts parts = split(a);
    parts.negative = !parts.negative;
    return join(std::move(parts));
}

std::string roundDecimal(std::string_view number, int scale) {
    Parts parts = split(number);
    if (parts.scale <= scale) {
        parts.digits.append(static_cast<std::size_t>(scale - parts.scale), '0');
        parts.scale = scale;
        return join(std::move(parts));
    }
    const std::size_t kept = parts.digits.size() - static_cast<std::size_t>(parts.scale - scale);
    const bool up = parts.digits[kept] >= '5';
    parts.digits.erase(kept);
    parts.scale = scale;
    if (up) {
        std::string one(parts.digits.size(), '0');
        if (one.empty()) {
            parts.digits = one = "0";
        }
        one.back() = '1';
        parts.digits = addDigits(parts.digits, one);
    }
    return join(std::move(parts));
}

std::string truncateDecimal(std::string_view number) {
    Parts parts = split(number);
    parts.digits.resize(parts.digits.size() - static_cast<std::size_t>(parts.scale));
    parts.scale = 0;
    if (parts.digits.empty()) parts.digits = "0";
    return join(std::move(parts));
}

int wholeDigits(std::string_view number) {
    if (!number.empty() && number.front() == '-') number.remove_prefix(1);
    const std::string_view whole = number.substr(0, number.find('.'));
    return whole == "0" ? 0 : static_cast<int>(whole.size());
}

int decimalScale(std::string_view number) { return split(number).scale; }

} // namespace sandbox
