#include "win32/GridWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

namespace win32 {

GridWindow::GridWindow(FormWindow& form, forms::Grid& grid) : RowsWindow(form, grid), grid_(grid) { createRows(true); }

std::vector<RowsColumn> GridWindow::columns() const {
    std::vector<RowsColumn> shown;
    for (int column = 0; column < grid_.cols(); ++column) {
        const int width = grid_.colWidth(column);
        if (width <= 0) continue;
        const bool titled = grid_.fixedRows() > 0;
        shown.push_back({column, form_.dpi().pixels(width), LVCFMT_LEFT,
                         titled ? wide(beginning(grid_.cell(0, column))) : std::wstring()});
    }
    return shown;
}

void GridWindow::choose(int row, int column) { forms::input::selectCell(grid_, row + grid_.fixedRows(), column); }

void GridWindow::widthChanged(int column, int pixels) { grid_.setColWidth(column, form_.dpi().twips(pixels)); }

void GridWindow::pointedAt(int row, int column) { grid_.pointedAt(row < 0 ? -1 : row + grid_.fixedRows(), column); }

std::string GridWindow::headingPointedAt(int column) {
    grid_.pointedAt(column < 0 ? -1 : 0, column);
    forms::input::mouseMove(grid_, {});
    return grid_.toolTip();
}

void GridWindow::followTop() {
    if (grid_.topRow() == knownTop_) return;
    scrollTo(grid_.topRow() - grid_.fixedRows());
    knownTop_ = grid_.topRow();
}

void GridWindow::scrolled(int topRow) {
    knownTop_ = topRow + grid_.fixedRows();
    grid_.scrolledTo(knownTop_);
}

} // namespace win32
