// What the list view and the grid share: rows and columns that the control asks for as it shows them.
#pragma once

#include "win32/ControlWindow.h"
#include "win32/Owned.h"

#include <string>
#include <string_view>
#include <vector>

namespace win32 {

struct RowsColumn {
    int model = 0; ///< its number in the model; hidden columns have no window's column at all
    int width = 0; ///< pixels
    int format = LVCFMT_LEFT;
    std::wstring text;
    bool operator==(const RowsColumn&) const = default;
};

/// Rows count from 0 here, columns as the model counts them.
class RowsWindow : public ControlWindow {
public:
    RowsWindow(FormWindow& form, forms::Control& control);
    LRESULT notified(NMHDR& header) override;
    void refresh() override;
    void fontChanged() override;

protected:
    void createRows(bool gridLines);

    virtual int rowCount() const = 0;
    /// The columns to show, in order.
    virtual std::vector<RowsColumn> columns() const = 0;
    virtual std::string_view cell(int row, int column) const = 0;
    virtual int currentRow() const = 0; ///< -1 for none
    virtual std::int32_t rowColour(int row) const { return (void)row, forms::kSystemColour; }
    /// The person chose a cell.
    virtual void choose(int row, int column) = 0;
    virtual void widthChanged(int column, int pixels) = 0;
    virtual std::string cellTip(int row, int column) const { return (void)row, (void)column, std::string(); }
    /// The pointer is over a cell; -1 where there is none.
    virtual void pointedAt(int row, int column) { (void)row, (void)column; }
    /// The pointer is over the heading of a column; -1 beside the headings. Returns its tip.
    virtual std::string headingPointedAt(int column) { return (void)column, std::string(); }
    virtual void followTop() {}
    virtual void scrolled(int topRow) { (void)topRow; }
    /// Whether a double click beside the rows counts.
    virtual bool doubleClicksAnywhere() const { return false; }
    void scrollTo(int topRow);

    void apply(forms::Aspect aspect) override;
    LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void pointerAt(POINT point) override;
    void rightPressed(POINT point) override;

private:
    struct Cell {
        int row;
        int column;
    };
    Cell cellAt(POINT point) const;
    void pointerOverHeader(HWND header, POINT point);
    void openMenuByKey();
    void showColumns();
    void showCurrent();
    void tellWidths();
    void giveHeight();
    LRESULT itemChanged(const NMLISTVIEW& change);
    LRESULT draw(NMLVCUSTOMDRAW& drawing);
    bool refusesOfHeader(const NMHDR& header) const;
    void textOf(LVITEMW& item) const;
    /// What a screen reader says for a row: the text of the column of no width.
    std::wstring rowText(int row) const;

    std::vector<RowsColumn> shown_;
    OwnedImages heights_;
    int shownRow_ = -1;
    int column_ = 0; ///< where the pointer last chose
    bool stale_ = false;
    bool chosen_ = false; ///< the press in hand has already chosen its row
    bool painting_ = false;
};

} // namespace win32
