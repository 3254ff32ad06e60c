// The grid, shown as a list of its data rows under the texts of its header row.
#pragma once

#include "forms/Grid.h"
#include "win32/RowsWindow.h"

namespace win32 {

class GridWindow : public RowsWindow {
public:
    GridWindow(FormWindow& form, forms::Grid& grid);

protected:
    int rowCount() const override { return grid_.rows() - grid_.fixedRows(); }
    std::vector<RowsColumn> columns() const override;
    std::string_view cell(int row, int column) const override { return grid_.cell(row + grid_.fixedRows(), column); }
    int currentRow() const override { return grid_.row() - grid_.fixedRows(); }
    std::int32_t rowColour(int row) const override { return grid_.rowColour(row + grid_.fixedRows()); }
    void choose(int row, int column) override;
    void widthChanged(int column, int pixels) override;
    void pointedAt(int row, int column) override;
    std::string headingPointedAt(int column) override;
    void followTop() override;
    void scrolled(int topRow) override;

private:
    forms::Grid& grid_;
    int knownTop_ = -1; ///< the model's top row when window and model last agreed
};

} // namespace win32
