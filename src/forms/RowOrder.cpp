#include "forms/RowOrder.h"

#include "automation/Value.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

#include <algorithm>
#include <optional>
#include <string>

namespace forms {
namespace {

struct NumberKey {
    double value = 0;
    std::uint32_t row = 0;
};

/// Made once a row, since a comparison is made many times; small, since a sort moves it as often. Many comparisons are
/// decided by `start`.
struct TextKey {
    std::uint64_t start = 0; ///< the first bytes of the text in capitals, as a number that rises with them
    const char* upper = nullptr;
    std::uint32_t length = 0; ///< bytes in capitals
    std::uint32_t index = 0;  ///< of the text
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The value of a text like "-12.5"; none where reading it takes the language's full rules.
std::optional<double> plainNumber(std::string_view text) {
    constexpr std::size_t kExactDigits = 15; // A double holds so many, and the powers of ten up to there.
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    if (text.empty() || text.size() > kExactDigits || !isDigit(text.front()) || !isDigit(text.back()))
        return std::nullopt;
    std::int64_t digits = 0;
    std::size_t decimals = 0;
    bool point = false;
    for (char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (!isDigit(c)) return std::nullopt;
        digits = digits * 10 + (c - '0');
        decimals += point;
    }
    const double value = static_cast<double>(digits) / kPowers[decimals];
    return negative ? -value : value;
}

std::optional<double> numberOf(std::string_view text) {
    if (const std::optional<double> plain = plainNumber(text)) return plain;
    const automation::Value value(text);
    if (!basic::isNumeric(value)) return std::nullopt;
    return basic::cDbl(value);
}

std::uint64_t startOf(std::string_view text) {
    std::uint64_t start = 0;
    for (std::size_t i = 0; i < sizeof start; ++i)
        start = start << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0);
    return start;
}

template <class Key, class Less> void sortKeys(std::vector<Key>& keys, bool descending, Less less) {
    if (descending)
        std::stable_sort(keys.begin(), keys.end(), [less](const Key& a, const Key& b) { return less(b, a); });
    else
        std::stable_sort(keys.begin(), keys.end(), less);
}

/// Texts with their keys.
class Texts {
public:
    void reserve(std::size_t count) {
        texts_.reserve(count);
        ends_.reserve(count);
    }

    void add(std::string_view text, std::uint32_t row) {
        basic::appendUpper(upper_, text);
        ends_.push_back(upper_.size());
        texts_.push_back({text, row});
    }

    /// The rows of the texts in their order.
    template <class Take> void inOrder(bool descending, Take take) const {
        std::vector<TextKey> keys;
        keys.reserve(texts_.size());
        std::size_t begin = 0;
        for (const std::size_t end : ends_) {
            const std::string_view upper = std::string_view(upper_).substr(begin, end - begin);
            keys.push_back({startOf(upper), upper.data(), static_cast<std::uint32_t>(upper.size()),
                            static_cast<std::uint32_t>(keys.size())});
            begin = end;
        }
        sortKeys(keys, descending, [this](const TextKey& a, const TextKey& b) {
            if (a.start != b.start) return a.start < b.start;
            const std::string_view upperA(a.upper, a.length), upperB(b.upper, b.length);
            if (const int byLetters = upperA.compare(upperB)) return byLetters < 0;
            return texts_[a.index].text < texts_[b.index].text;
        });
        for (const TextKey& key : keys) take(texts_[key.index].row);
    }

private:
    struct Text {
        std::string_view text;
        std::uint32_t row = 0;
    };
    std::vector<Text> texts_;
    std::string upper_; ///< of all texts, one behind the other
    std::vector<std::size_t> ends_;
};

} // namespace

std::vector<std::uint32_t> sortedOrder(std::size_t count, const std::function<std::string_view(std::size_t)>& cellAt,
                                       bool generic, bool descending) {
    std::vector<NumberKey> numbers;
    Texts texts;
    if (generic)
        numbers.reserve(count);
    else
        texts.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view cell = cellAt(i);
        const auto row = static_cast<std::uint32_t>(i);
        if (const std::optional<double> number = generic ? numberOf(cell) : std::nullopt)
            numbers.push_back({*number, row});
        else
            texts.add(cell, row);
    }
    sortKeys(numbers, descending, [](const NumberKey& a, const NumberKey& b) { return a.value < b.value; });

    std::vector<std::uint32_t> order;
    order.reserve(count);
    const auto addNumbers = [&] {
        for (const NumberKey& key : numbers) order.push_back(key.row);
    };
    if (!descending) addNumbers();
    texts.inOrder(descending, [&](std::uint32_t row) { order.push_back(row); });
    if (descending) addNumbers();
    return order;
}

int compareText(std::string_view a, std::string_view b) {
    // Bytes of UTF-8 order as their characters' codes do.
    if (const int byLetters = basic::ucase(a).compare(basic::ucase(b))) return byLetters;
    return a.compare(b);
}

} // namespace forms
