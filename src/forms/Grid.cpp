#include "forms/Grid.h"

#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

#include <algorithm>
#include <numeric>

namespace forms {
namespace {

constexpr int kColumnWidth = 960;
const std::string kNoText;

/// What one row sorts by; made once a row, since a comparison is made many times.
struct SortKey {
    bool number = false;
    double value = 0;
    std::string upper;
    const std::string* text = &kNoText;
};

SortKey keyOf(const std::string& text, bool generic) {
    SortKey key;
    key.text = &text;
    if (generic && basic::isNumeric(automation::Value(text))) {
        key.number = true;
        key.value = basic::cDbl(automation::Value(text));
    } else {
        key.upper = basic::ucase(text);
    }
    return key;
}

int compareKeys(const SortKey& a, const SortKey& b) {
    if (a.number != b.number) return a.number ? -1 : 1;
    if (a.number) return a.value < b.value ? -1 : a.value > b.value ? 1 : 0;
    if (const int byLetters = a.upper.compare(b.upper)) return byLetters;
    return a.text->compare(*b.text);
}

} // namespace

int compareText(std::string_view a, std::string_view b) {
    // Bytes of UTF-8 order as their characters' codes do.
    if (const int byLetters = basic::ucase(a).compare(basic::ucase(b))) return byLetters;
    return a.compare(b);
}

void Grid::setRows(int rows) {
    if (rows < 0) automation::raise(automation::kInvalidCall);
    cells_.resize(static_cast<std::size_t>(rows));
    fixedRows_ = std::min(fixedRows_, rows);
    keepCurrentInside();
    notify(Aspect::items);
}

void Grid::setCols(int cols) {
    if (cols < 0) automation::raise(automation::kInvalidCall);
    widths_.resize(static_cast<std::size_t>(cols), kColumnWidth);
    for (Row& row : cells_)
        if (row.cells.size() > widths_.size()) row.cells.resize(widths_.size());
    fixedCols_ = std::min(fixedCols_, cols);
    keepCurrentInside();
    notify(Aspect::columns);
}

void Grid::setFixedRows(int rows) {
    if (rows < 0 || rows > this->rows()) automation::raise(automation::kInvalidCall);
    fixedRows_ = rows;
    keepCurrentInside();
    notify(Aspect::items);
}

void Grid::setFixedCols(int cols) {
    if (cols < 0 || cols > this->cols()) automation::raise(automation::kInvalidCall);
    fixedCols_ = cols;
    notify(Aspect::columns);
}

void Grid::clear() {
    for (Row& row : cells_) row = Row{};
    notify(Aspect::items);
}

void Grid::setDataRows(std::vector<std::vector<std::string>> data) {
    const auto tooWide = [&](const std::vector<std::string>& row) { return row.size() > widths_.size(); };
    if (std::any_of(data.begin(), data.end(), tooWide)) automation::raise(automation::kSubscriptOutOfRange);
    cells_.resize(static_cast<std::size_t>(fixedRows_));
    cells_.reserve(cells_.size() + data.size());
    for (std::vector<std::string>& row : data) cells_.push_back({std::move(row), kSystemColour});
    keepCurrentInside();
    notify(Aspect::items);
}

void Grid::addItem(std::string_view cells) {
    Row row;
    while (row.cells.size() < widths_.size()) {
        const std::size_t end = cells.find('\t');
        row.cells.emplace_back(cells.substr(0, end));
        if (end == std::string_view::npos) break;
        cells.remove_prefix(end + 1);
    }
    cells_.push_back(std::move(row));
    notify(Aspect::items);
}

void Grid::removeItem(int row) {
    rowAt(row);
    if (row < fixedRows_) automation::raise(automation::kInvalidCall);
    cells_.erase(cells_.begin() + row);
    keepCurrentInside();
    notify(Aspect::items);
}

const std::string& Grid::cell(int row, int col) const {
    const Row& found = rowAt(row);
    checkCol(col);
    const auto at = static_cast<std::size_t>(col);
    return at < found.cells.size() ? found.cells[at] : kNoText;
}

void Grid::setCell(int row, int col, std::string text) {
    Row& found = rowAt(row);
    checkCol(col);
    const auto at = static_cast<std::size_t>(col);
    if (at >= found.cells.size()) found.cells.resize(at + 1);
    found.cells[at] = std::move(text);
    notify(Aspect::items);
}

int Grid::colWidth(int col) const {
    checkCol(col);
    return widths_[static_cast<std::size_t>(col)];
}

void Grid::setColWidth(int col, int twips) {
    checkCol(col);
    if (twips == -1) twips = kColumnWidth; // -1 asks for the width a new column has.
    if (twips < 0) automation::raise(automation::kInvalidCall);
    widths_[static_cast<std::size_t>(col)] = twips;
    notify(Aspect::columns);
}

std::int32_t Grid::rowColour(int row) const { return rowAt(row).colour; }

void Grid::setRowColour(int row, std::int32_t colour) {
    rowAt(row).colour = colour;
    notify(Aspect::items);
}

void Grid::setCurrent(int row, int col) {
    rowAt(row);
    checkCol(col);
    const bool moved = row != row_ || col != col_;
    row_ = rowSel_ = row;
    col_ = colSel_ = col;
    notify(Aspect::selection);
    if (moved) fire(onRowColChange);
}

void Grid::selectRow(int row) {
    rowAt(row);
    checkCol(0);
    const bool moved = row != row_ || col_ != 0;
    row_ = rowSel_ = row;
    col_ = 0;
    colSel_ = cols() - 1;
    notify(Aspect::selection);
    if (moved) fire(onRowColChange);
}

void Grid::setColSel(int col) {
    checkCol(col);
    colSel_ = col;
    notify(Aspect::selection);
}

void Grid::setRowSel(int row) {
    rowAt(row);
    rowSel_ = row;
    notify(Aspect::selection);
}

void Grid::setTopRow(int row) {
    topRow_ = std::clamp(row, std::min(fixedRows_, std::max(rows() - 1, 0)), std::max(rows() - 1, 0));
    notify(Aspect::selection);
}

void Grid::sort(int column, SortOrder order) {
    checkCol(column);
    if (order == SortOrder::none) return;
    const bool generic = order == SortOrder::genericAscending || order == SortOrder::genericDescending;
    const bool descending = order == SortOrder::genericDescending || order == SortOrder::stringDescending;
    const auto first = static_cast<std::size_t>(fixedRows_);
    std::vector<SortKey> keys;
    keys.reserve(cells_.size() - first);
    for (std::size_t row = first; row < cells_.size(); ++row)
        keys.push_back(keyOf(cell(static_cast<int>(row), column), generic));
    std::vector<std::size_t> sequence(keys.size());
    std::iota(sequence.begin(), sequence.end(), std::size_t{0});
    std::stable_sort(sequence.begin(), sequence.end(), [&](std::size_t a, std::size_t b) {
        const int order = compareKeys(keys[a], keys[b]);
        return descending ? order > 0 : order < 0;
    });
    std::vector<Row> sorted;
    sorted.reserve(sequence.size());
    for (std::size_t from : sequence) sorted.push_back(std::move(cells_[first + from]));
    std::move(sorted.begin(), sorted.end(), cells_.begin() + fixedRows_);
    notify(Aspect::items);
}

void Grid::pointedAt(int row, int col) {
    mouseRow_ = row;
    mouseCol_ = col;
}

void Grid::reset() {
    Control::reset();
    cells_.assign(2, Row{});
    widths_.assign(2, kColumnWidth);
    fixedRows_ = fixedCols_ = 1;
    row_ = col_ = rowSel_ = colSel_ = topRow_ = 1;
    mouseRow_ = mouseCol_ = 0;
}

Grid::Row& Grid::rowAt(int row) {
    if (row < 0 || row >= rows()) automation::raise(automation::kSubscriptOutOfRange);
    return cells_[static_cast<std::size_t>(row)];
}

const Grid::Row& Grid::rowAt(int row) const { return const_cast<Grid*>(this)->rowAt(row); }

void Grid::checkCol(int col) const {
    if (col < 0 || col >= cols()) automation::raise(automation::kSubscriptOutOfRange);
}

void Grid::keepCurrentInside() {
    const int lastRow = std::max(rows() - 1, 0);
    const int lastCol = std::max(cols() - 1, 0);
    row_ = std::clamp(row_, std::min(fixedRows_, lastRow), lastRow);
    rowSel_ = std::clamp(rowSel_, std::min(fixedRows_, lastRow), lastRow);
    topRow_ = std::clamp(topRow_, std::min(fixedRows_, lastRow), lastRow);
    col_ = std::min(col_, lastCol);
    colSel_ = std::min(colSel_, lastCol);
}

} // namespace forms
