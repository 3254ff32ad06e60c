#include "win32/ListWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

namespace win32 {
namespace {

int formatOf(forms::ColumnAlignment alignment) {
    switch (alignment) {
    case forms::ColumnAlignment::right: return LVCFMT_RIGHT;
    case forms::ColumnAlignment::centre: return LVCFMT_CENTER;
    default: return LVCFMT_LEFT;
    }
}

} // namespace

ListWindow::ListWindow(FormWindow& form, forms::ListView& list) : RowsWindow(form, list), list_(list) {
    createRows(true);
}

std::vector<RowsColumn> ListWindow::columns() const {
    std::vector<RowsColumn> shown;
    for (std::size_t i = 0; i < list_.columns().size(); ++i) {
        const forms::ListColumn& column = list_.columns()[i];
        if (column.width > 0)
            shown.push_back({static_cast<int>(i), form_.dpi().pixels(column.width), formatOf(column.alignment),
                             wide(beginning(column.text))});
    }
    return shown;
}

std::string_view ListWindow::cell(int row, int column) const {
    const forms::ListItem& item = list_.item(row + 1);
    return column == 0 ? item.text() : item.subItem(column);
}

void ListWindow::choose(int row, int) { forms::input::selectItem(list_, row + 1); }

void ListWindow::followTop() {
    if (const int line = list_.takeRevealed(); line > 0 && line <= list_.count())
        SendMessageW(handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(line - 1), FALSE);
}

void ListWindow::widthChanged(int column, int pixels) { list_.setColumnWidth(column + 1, form_.dpi().twips(pixels)); }

std::string ListWindow::cellTip(int row, int column) const { return list_.item(row + 1).toolTip(column); }

} // namespace win32
