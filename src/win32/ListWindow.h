// A list view.
#pragma once

#include "forms/ListView.h"
#include "win32/RowsWindow.h"

namespace win32 {

class ListWindow : public RowsWindow {
public:
    ListWindow(FormWindow& form, forms::ListView& list);

protected:
    int rowCount() const override { return list_.count(); }
    std::vector<RowsColumn> columns() const override;
    std::string_view cell(int row, int column) const override;
    int currentRow() const override { return list_.selectedIndex() - 1; }
    void choose(int row, int column) override;
    void widthChanged(int column, int pixels) override;
    std::string cellTip(int row, int column) const override;
    void followTop() override;
    bool doubleClicksAnywhere() const override { return true; }

private:
    forms::ListView& list_;
};

} // namespace win32
