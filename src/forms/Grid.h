// A read-only grid of text cells with fixed header rows, a current cell and a selected range.
#pragma once

#include "forms/Control.h"
#include "forms/RowOrder.h"

#include <string>
#include <utility>
#include <vector>

namespace forms {

enum class SortOrder : std::int16_t {
    none = 0,
    genericAscending = 1,
    genericDescending = 2,
    stringAscending = 7,
    stringDescending = 8,
};

class Grid : public Control {
public:
    Grid(Form& form, std::string name) : Control(form, std::move(name), ControlKind::grid) {}

    int rows() const { return static_cast<int>(cells_.size()); }
    int cols() const { return static_cast<int>(widths_.size()); }
    int fixedRows() const { return fixedRows_; }
    int fixedCols() const { return fixedCols_; }
    /// More than these are a mistake of the caller's that would only use up the memory.
    static constexpr int kMostRows = 1'000'000;
    static constexpr int kMostCols = 10'000;
    /// Error 5 out of range.
    void setRows(int rows);
    void setCols(int cols);
    void setFixedRows(int rows);
    void setFixedCols(int cols);
    /// Empties every cell; rows and columns stay.
    void clear();
    /// Takes all data rows at once (below the fixed ones); each has at most cols() cells.
    void setDataRows(std::vector<std::vector<std::string>> data);
    /// Adds a row at the end; cells are parted by tabs.
    void addItem(std::string_view cells);
    void removeItem(int row);
    /// Headings for the columns from the first on, parted by "|", with the columns' widths: each is as wide as its
    /// heading with the blanks behind it, so an empty one hides its column. Missing columns are added. A "<", "^" or
    /// ">" before a heading (left, centred, right) is taken; cells stand at the left. Error 9 without a first row.
    void setFormat(std::string_view format);
    /// Writes into the selected cells; rows are parted by carriage returns, cells by tabs. What is too much is left
    /// out.
    void setClip(std::string_view text);

    /// Valid until the grid changes. Error 9 out of range.
    std::string_view cell(int row, int col) const;
    void setCell(int row, int col, std::string_view text);
    int colWidth(int col) const; ///< twips; 0 hides the column
    void setColWidth(int col, int twips);
    std::int32_t rowColour(int row) const; ///< foreground 0x00BBGGRR, or kSystemColour
    void setRowColour(int row, std::int32_t colour);

    int row() const { return row_; }
    int col() const { return col_; }
    int rowSel() const { return rowSel_; }
    int colSel() const { return colSel_; }
    /// Moves the current cell, takes the selection along, and raises RowColChange when it moved.
    void setCurrent(int row, int col);
    void setRow(int row) { setCurrent(row, col_); }
    void setCol(int col) { setCurrent(row_, col); }
    /// Makes `row` current and selects it from column 0 to the last.
    void selectRow(int row);
    void setColSel(int col);
    void setRowSel(int row);
    int topRow() const { return topRow_; }
    /// Scrolls; rows out of range go to the nearest. The view is told with Aspect::selection.
    void setTopRow(int row);
    /// The row the view shows first; raises nothing.
    void scrolledTo(int row) { topRow_ = row; }

    /// Sorts the data rows by one column, stably. The current row stays at its number. Rows that stand in that order
    /// already, from the sort before, are left alone. Returns the number at which the row stands that was current.
    int sort(int column, SortOrder order);

    /// Cell under the pointer, as the view last saw it; the row of the headings is 0. -1 where there is no cell.
    int mouseRow() const { return mouseRow_; }
    int mouseCol() const { return mouseCol_; }
    void pointedAt(int row, int col);

    std::function<void()> onRowColChange;

    void reset() override;
    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;

private:
    struct Row {
        std::vector<std::string> cells; ///< those behind the last are empty
        std::int32_t colour = kSystemColour;
    };
    Row& rowAt(int row);
    const Row& rowAt(int row) const;
    void checkCol(int col) const;
    void put(Row& row, int col, std::string_view text);
    void keepCurrentInside();
    /// Rows came, or changed in ways that may part them from the order they were sorted in.
    void orderLost() { sortedBy_ = {-1, SortOrder::none}; }

    std::vector<Row> cells_{2};
    std::vector<int> widths_{960, 960};
    int fixedRows_ = 1;
    int fixedCols_ = 1;
    int row_ = 1;
    int col_ = 1;
    int rowSel_ = 1;
    int colSel_ = 1;
    int topRow_ = 1;
    int mouseRow_ = -1;
    int mouseCol_ = -1;
    std::pair<int, SortOrder> sortedBy_{-1, SortOrder::none}; ///< the column and order in which the data rows stand
};

} // namespace forms
