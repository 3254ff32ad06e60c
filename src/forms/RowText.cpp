#include "forms/RowText.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

namespace forms {

void RowText::setNumber(std::size_t at, std::size_t number) {
    const auto stored = static_cast<std::uint32_t>(number);
    std::memcpy(block_.get() + at * sizeof stored, &stored, sizeof stored);
}

void RowText::reserve(std::size_t count, std::size_t length) {
    if (length > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc(); // it counts in 32 bits
    block_ = std::make_unique_for_overwrite<char[]>((count + 1) * sizeof(std::uint32_t) + length);
    setNumber(0, count);
}

void RowText::append(std::size_t index, std::string_view text) {
    const std::size_t begin = index == 0 ? 0 : number(index);
    std::copy(text.begin(), text.end(), block_.get() + (count() + 1) * sizeof(std::uint32_t) + begin);
    setNumber(index + 1, begin + text.size());
}

void RowText::setCell(std::size_t index, std::string_view text) {
    std::vector<std::string_view> cells(std::max(count(), index + 1));
    for (std::size_t i = 0; i < count(); ++i) cells[i] = cell(i);
    cells[index] = text;
    *this = RowText(cells.size(), cells.begin());
}

void RowText::shorten(std::size_t count) {
    if (count >= this->count()) return;
    std::vector<std::string_view> cells(count);
    for (std::size_t i = 0; i < count; ++i) cells[i] = cell(i);
    *this = RowText(count, cells.begin());
}

} // namespace forms
