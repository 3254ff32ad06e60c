#include "forms/RowOrder.h"

#include "automation/Value.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

namespace forms {
namespace {

// Keys are made once a cell, since a sort compares each many times; and they are small, since it moves each as often.
struct NumberKey {
    double number;
    std::size_t row;
};

struct TextKey {
    std::size_t begin; ///< of the cell in capitals, within those of all cells
    std::uint32_t length;
    std::uint32_t row;
};

constexpr std::size_t kAhead = 16;

std::optional<double> numberOf(std::string_view text) {
    // Ids and counts mean the same without the language's rules, which take their time.
    std::int64_t digits = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), digits);
    if (read.ec == std::errc() && read.ptr == text.data() + text.size()) return static_cast<double>(digits);
    const automation::Value value(text);
    if (!basic::isNumeric(value)) return std::nullopt;
    return basic::cDbl(value);
}

template <class Key, class Less>
void addSorted(std::vector<std::size_t>& order, std::vector<Key>& keys, bool descending, Less less) {
    if (descending)
        std::stable_sort(keys.begin(), keys.end(), [&](const Key& a, const Key& b) { return less(b, a); });
    else
        std::stable_sort(keys.begin(), keys.end(), less);
    for (const Key& key : keys) order.push_back(key.row);
}

} // namespace

std::vector<std::size_t> sortedOrder(const std::vector<std::string_view>& cells, bool generic, bool descending) {
    std::vector<NumberKey> numbers;
    std::vector<TextKey> texts;
    std::string capitals;
    if (generic) numbers.reserve(cells.size());
    for (std::size_t row = 0; row < cells.size(); ++row) {
        // Texts of rows that were sorted before lie anywhere in memory; to wait for each would double the time.
        if (row + kAhead < cells.size()) __builtin_prefetch(cells[row + kAhead].data());
        if (const std::optional<double> number = generic ? numberOf(cells[row]) : std::nullopt) {
            numbers.push_back({*number, row});
            continue;
        }
        const std::size_t begin = capitals.size();
        basic::appendUpper(capitals, cells[row]);
        texts.push_back({begin, static_cast<std::uint32_t>(capitals.size() - begin), static_cast<std::uint32_t>(row)});
    }
    const auto capitalsOf = [&](const TextKey& key) {
        return std::string_view(capitals.data() + key.begin, key.length);
    };
    const auto addNumbers = [&](std::vector<std::size_t>& order) {
        addSorted(order, numbers, descending, [](const auto& a, const auto& b) { return a.number < b.number; });
    };
    std::vector<std::size_t> order;
    order.reserve(cells.size());
    if (!descending) addNumbers(order);
    addSorted(order, texts, descending, [&](const TextKey& a, const TextKey& b) {
        const int byLetters = capitalsOf(a).compare(capitalsOf(b));
        return byLetters < 0 || (byLetters == 0 && cells[a.row] < cells[b.row]);
    });
    if (descending) addNumbers(order);
    return order;
}

int compareText(std::string_view a, std::string_view b) {
    // Bytes of UTF-8 order as their characters' codes do.
    if (const int byLetters = basic::ucase(a).compare(basic::ucase(b))) return byLetters;
    return a.compare(b);
}

} // namespace forms
