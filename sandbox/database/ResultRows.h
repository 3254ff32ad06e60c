// The rows of a query, kept whole in a few large pieces of memory.
#pragma once

#include "automation/Value.h"

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace sandbox {

class ResultRows {
public:
    ResultRows() = default;
    /// Rows of so many values.
    explicit ResultRows(std::size_t width) : width_(width) {}

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    std::span<automation::Value> operator[](std::size_t row) {
        return std::span(blocks_[row / kRowsOfBlock]).subspan(row % kRowsOfBlock * width_, width_);
    }
    std::span<const automation::Value> operator[](std::size_t row) const {
        return std::span(blocks_[row / kRowsOfBlock]).subspan(row % kRowsOfBlock * width_, width_);
    }

    /// Begins a row; `width` calls of `append` fill it.
    void beginRow() {
        if (size_ % kRowsOfBlock == 0) blocks_.emplace_back();
        // Most queries give a row or two, so the first block grows with them.
        if (size_ == 0)
            blocks_.back().reserve(width_);
        else if (size_ % kRowsOfBlock == 0)
            blocks_.back().reserve(kRowsOfBlock * width_);
        ++size_;
    }
    void append(automation::Value value) { blocks_.back().push_back(std::move(value)); }

private:
    static constexpr std::size_t kRowsOfBlock = 128;

    std::size_t width_ = 0;
    std::size_t size_ = 0;
    std::vector<std::vector<automation::Value>> blocks_;
};

} // namespace sandbox
