#include "forms/Grid.h"

#include "automation/RunTimeError.h"

#include <algorithm>

namespace forms {
namespace {

constexpr int kColumnWidth = 960;
} // namespace

void Grid::setRows(int rows) {
    if (rows < 0 || rows > kMostRows) automation::raise(automation::kInvalidCall);
    orderLost();
    cells_.resize(static_cast<std::size_t>(rows));
    fixedRows_ = std::min(fixedRows_, rows);
    keepCurrentInside();
    notify(Aspect::items);
}

void Grid::setCols(int cols) {
    if (cols < 0 || cols > kMostCols) automation::raise(automation::kInvalidCall);
    widths_.resize(static_cast<std::size_t>(cols), kColumnWidth);
    for (Row& row : cells_) row.cells.resize(std::min(row.cells.size(), widths_.size()));
    fixedCols_ = std::min(fixedCols_, cols);
    keepCurrentInside();
    notify(Aspect::columns);
}

void Grid::setFixedRows(int rows) {
    if (rows < 0 || rows > this->rows()) automation::raise(automation::kInvalidCall);
    orderLost();
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
    orderLost();
    for (Row& row : cells_) row = Row{};
    notify(Aspect::items);
}

void Grid::setDataRows(std::vector<std::vector<std::string>> data) {
    const auto tooWide = [&](const auto& row) { return row.size() > widths_.size(); };
    if (std::any_of(data.begin(), data.end(), tooWide)) automation::raise(automation::kSubscriptOutOfRange);
    orderLost();
    cells_.resize(static_cast<std::size_t>(fixedRows_));
    cells_.reserve(cells_.size() + data.size());
    for (auto& row : data) cells_.push_back({std::move(row), kSystemColour});
    keepCurrentInside();
    notify(Aspect::items);
}

void Grid::addItem(std::string_view cells) {
    Row row;
    for (std::size_t col = 0; col < widths_.size(); ++col) {
        const std::size_t end = cells.find('\t');
        row.cells.emplace_back(cells.substr(0, end));
        if (end == std::string_view::npos) break;
        cells.remove_prefix(end + 1);
    }
    orderLost();
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

std::string_view Grid::cell(int row, int col) const {
    const Row& found = rowAt(row);
    checkCol(col);
    const auto at = static_cast<std::size_t>(col);
    return at < found.cells.size() ? std::string_view(found.cells[at]) : "";
}

void Grid::setCell(int row, int col, std::string_view text) {
    Row& found = rowAt(row);
    checkCol(col);
    put(found, col, text);
    if (row >= fixedRows_ && col == sortedBy_.first) orderLost();
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
    widths_[static_cast<std::size_t>(col)] = withinTwips(twips);
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

int Grid::sort(int column, SortOrder order) {
    checkCol(column);
    if (order == SortOrder::none || sortedBy_ == std::pair(column, order)) return row_;
    const bool generic = order == SortOrder::genericAscending || order == SortOrder::genericDescending;
    const bool descending = order == SortOrder::genericDescending || order == SortOrder::stringDescending;
    std::vector<std::string_view> texts;
    texts.reserve(cells_.size());
    for (int row = fixedRows_; row < rows(); ++row) texts.push_back(cell(row, column));
    std::vector<Row> sorted;
    sorted.reserve(texts.size());
    int current = row_;
    for (const std::size_t place : sortedOrder(texts, generic, descending)) {
        const int from = fixedRows_ + static_cast<int>(place);
        if (from == row_) current = fixedRows_ + static_cast<int>(sorted.size());
        sorted.push_back(std::move(rowAt(from)));
    }
    std::move(sorted.begin(), sorted.end(), cells_.begin() + fixedRows_);
    sortedBy_ = {column, order};
    notify(Aspect::items);
    return current;
}

void Grid::pointedAt(int row, int col) {
    mouseRow_ = row;
    mouseCol_ = col;
}

void Grid::reset() {
    Control::reset();
    orderLost();
    cells_.clear();
    cells_.resize(2);
    widths_.assign(2, kColumnWidth);
    fixedRows_ = fixedCols_ = 1;
    row_ = col_ = rowSel_ = colSel_ = topRow_ = 1;
    mouseRow_ = mouseCol_ = -1;
}

Grid::Row& Grid::rowAt(int row) {
    if (row < 0 || row >= rows()) automation::raise(automation::kSubscriptOutOfRange);
    return cells_[static_cast<std::size_t>(row)];
}

const Grid::Row& Grid::rowAt(int row) const { return const_cast<Grid*>(this)->rowAt(row); }

void Grid::checkCol(int col) const {
    if (col < 0 || col >= cols()) automation::raise(automation::kSubscriptOutOfRange);
}

void Grid::put(Row& row, int col, std::string_view text) {
    const auto at = static_cast<std::size_t>(col);
    if (at >= row.cells.size()) row.cells.resize(at + 1);
    row.cells[at] = text;
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
