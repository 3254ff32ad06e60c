// The cells of one grid row in one piece of memory: a register has a hundred thousand of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace forms {

class RowText {
public:
    RowText() = default;
    explicit RowText(std::span<const std::string> cells) : RowText(cells.size(), cells.begin()) {}
    RowText(std::initializer_list<std::string_view> cells) : RowText(cells.size(), cells.begin()) {}

    std::size_t count() const { return block_ ? number(0) : 0; }
    /// Empty for a cell that the row does not have. Valid until the row changes.
    std::string_view cell(std::size_t index) const {
        if (index >= count()) return {};
        const std::size_t begin = index == 0 ? 0 : number(index);
        return {text() + begin, number(index + 1) - begin};
    }
    /// Asks the machine to fetch what `cell` is going to read: rows that were sorted lie anywhere in memory.
    void prefetch() const { __builtin_prefetch(block_.get()); }
    /// Adds empty cells up to that one where the row is shorter.
    void setCell(std::size_t index, std::string_view text);
    /// Drops the cells from the `count`th on.
    void shorten(std::size_t count);

private:
    template <class Cells> RowText(std::size_t count, Cells cells) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < count; ++i) length += cells[static_cast<std::ptrdiff_t>(i)].size();
        reserve(count, length);
        for (std::size_t i = 0; i < count; ++i) append(i, cells[static_cast<std::ptrdiff_t>(i)]);
    }
    /// Makes a block for so many cells; they are then appended in their order.
    void reserve(std::size_t count, std::size_t length);
    void append(std::size_t index, std::string_view text);

    // The block: how many cells, where the text of each ends, and the texts themselves.
    std::uint32_t number(std::size_t at) const {
        std::uint32_t number;
        std::memcpy(&number, block_.get() + at * sizeof number, sizeof number);
        return number;
    }
    void setNumber(std::size_t at, std::size_t number);
    const char* text() const { return block_.get() + (count() + 1) * sizeof(std::uint32_t); }

    std::unique_ptr<char[]> block_;
};

} // namespace forms
