#include "win32/RowsWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

#include <algorithm>
#include <utility>

namespace win32 {
namespace {

/// As much of a text as a cell shows, its line breaks as blanks.
std::wstring inOneLine(std::string_view text) {
    std::wstring shown = wide(beginning(text));
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] != L'\r' && shown[i] != L'\n') continue;
        if (shown[i] == L'\r' && i + 1 < shown.size() && shown[i + 1] == L'\n') shown.erase(i, 1);
        shown[i] = L' ';
    }
    return shown;
}

/// A third of `a` in `b`.
COLORREF between(COLORREF a, COLORREF b) {
    const auto mix = [](int x, int y) { return (x + 2 * y) / 3; };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

} // namespace

RowsWindow::RowsWindow(FormWindow& form, forms::Control& control) : ControlWindow(form, control) {}

void RowsWindow::createRows(bool gridLines) {
    create(WC_LISTVIEWW,
           LVS_REPORT | LVS_SHAREIMAGELISTS | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
           WS_EX_CLIENTEDGE);
    const DWORD style = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | (gridLines ? LVS_EX_GRIDLINES : 0);
    SendMessageW(handle(), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
    SendMessageW(handle(), LVM_SETTOOLTIPS, 0, 0); // The form's own tips show whole cells.
    hook(reinterpret_cast<HWND>(SendMessageW(handle(), LVM_GETHEADER, 0, 0)));
    giveHeight();
    refresh();
}

void RowsWindow::giveHeight() {
    // The only way to tell a list view its rows' height is an image that they have to hold.
    OwnedImages heights(ImageList_Create(1, form_.font().lineHeight() + form_.dpi().pixels(75), ILC_COLOR, 1, 1));
    SendMessageW(handle(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(heights.get()));
    heights_ = std::move(heights); // The former ones are not in use any more.
}

void RowsWindow::fontChanged() {
    giveHeight();
    ControlWindow::fontChanged();
}

void RowsWindow::apply(forms::Aspect aspect) {
    switch (aspect) {
    case forms::Aspect::items:
    case forms::Aspect::columns:
    case forms::Aspect::selection:
        // Cells change by the thousand: what shows them catches up once.
        if (!stale_) form_.refreshLater(*this);
        stale_ = true;
        break;
    case forms::Aspect::text: break;
    default: ControlWindow::apply(aspect);
    }
}

void RowsWindow::refresh() {
    stale_ = false;
    updating_ = true;
    showColumns();
    const int count = rowCount();
    if (SendMessageW(handle(), LVM_GETITEMCOUNT, 0, 0) != count) {
        SendMessageW(handle(), LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
        shownRow_ = -1;
    }
    showCurrent();
    followTop();
    InvalidateRect(handle(), nullptr, TRUE);
    updating_ = false;
}

void RowsWindow::showColumns() {
    const std::vector<RowsColumn> wanted = columns();
    if (wanted == shown_) return;
    const bool same =
        std::equal(wanted.begin(), wanted.end(), shown_.begin(), shown_.end(),
                   [](const RowsColumn& a, const RowsColumn& b) { return a.model == b.model && a.format == b.format; });
    SendMessageW(handle(), WM_SETREDRAW, FALSE, 0);
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    if (!same) {
        while (SendMessageW(handle(), LVM_DELETECOLUMN, 0, 0)) {
        }
        // The system keeps its first column to the left: an empty one of no width takes that place.
        column.pszText = const_cast<wchar_t*>(L"");
        SendMessageW(handle(), LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        column.fmt = wanted[i].format;
        column.cx = wanted[i].width;
        column.pszText = const_cast<wchar_t*>(wanted[i].text.c_str());
        SendMessageW(handle(), same ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, i + 1, reinterpret_cast<LPARAM>(&column));
    }
    SendMessageW(handle(), WM_SETREDRAW, TRUE, 0);
    shown_ = wanted;
}

void RowsWindow::showCurrent() {
    const int row = std::min(currentRow(), rowCount() - 1);
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    const auto selected = static_cast<int>(
        SendMessageW(handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_SELECTED, 0)));
    if (selected != row) {
        SendMessageW(handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
        state.state = LVIS_SELECTED | LVIS_FOCUSED;
        if (row >= 0) SendMessageW(handle(), LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&state));
    }
    if (row >= 0 && row != shownRow_) SendMessageW(handle(), LVM_ENSUREVISIBLE, row, FALSE);
    shownRow_ = row;
}

void RowsWindow::scrollTo(int topRow) {
    const auto now = static_cast<int>(SendMessageW(handle(), LVM_GETTOPINDEX, 0, 0));
    RECT r{};
    r.left = LVIR_BOUNDS;
    if (!SendMessageW(handle(), LVM_GETITEMRECT, static_cast<WPARAM>(now), reinterpret_cast<LPARAM>(&r))) return;
    SendMessageW(handle(), LVM_SCROLL, 0, static_cast<LPARAM>(topRow - now) * (r.bottom - r.top));
}

RowsWindow::Cell RowsWindow::cellAt(POINT point) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    const auto row = static_cast<int>(SendMessageW(handle(), LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    if (row < 0 || row >= rowCount() || hit.iSubItem < 1 || hit.iSubItem > static_cast<int>(shown_.size()))
        return {-1, -1};
    return {row, shown_[static_cast<std::size_t>(hit.iSubItem - 1)].model};
}

void RowsWindow::pointerAt(POINT point) {
    const Cell cell = cellAt(point);
    pointedAt(cell.row, cell.column);
    std::string tip = cell.row < 0 ? std::string() : cellTip(cell.row, cell.column);
    form_.toolTips().set(handle(), tip.empty() ? control().toolTip() : tip);
}

void RowsWindow::pointerOverHeader(HWND header, POINT point) {
    HDHITTESTINFO hit{};
    hit.pt = point;
    const auto at = static_cast<int>(SendMessageW(header, HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    const bool titled = at >= 1 && at <= static_cast<int>(shown_.size());
    form_.toolTips().set(header, headingPointedAt(titled ? shown_[static_cast<std::size_t>(at - 1)].model : -1));
}

void RowsWindow::rightPressed(POINT point) {
    const Cell cell = cellAt(point);
    if (cell.row < 0) return;
    column_ = cell.column;
    choose(cell.row, cell.column);
    if (alive()) form_.refreshLater(*this);
}

// As the right button would in the current row.
void RowsWindow::openMenuByKey() {
    RECT place{};
    place.left = LVIR_BOUNDS;
    const int row = currentRow();
    if (row < 0 || !SendMessageW(handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)))
        place = {};
    RECT inside{};
    GetClientRect(handle(), &inside);
    POINT at{std::max(place.left, inside.left) + form_.dpi().pixels(300),
             std::clamp((place.top + place.bottom) / 2, inside.top, inside.bottom)};
    const forms::MouseEvent event{forms::MouseButton::right, 0, form_.dpi().twips(at.x), form_.dpi().twips(at.y)};
    ClientToScreen(handle(), &at);
    const MenuPlace menus(at);
    forms::input::mouseDown(control(), event);
    if (alive()) forms::input::mouseUp(control(), event);
}

LRESULT RowsWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window != handle()) { // the header's
        if (message == WM_MOUSEMOVE) pointerOverHeader(window, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return native(window, message, wParam, lParam);
    }
    if (message == WM_CONTEXTMENU && lParam == -1) return openMenuByKey(), 0;
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
        chosen_ = false;
        const Cell cell = cellAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        if (cell.row >= 0) column_ = cell.column;
    }
    // The header reports to the list, which does not tell its own parent everything.
    const auto* header = message == WM_NOTIFY ? reinterpret_cast<const NMHDR*>(lParam) : nullptr;
    if (header && refusesOfHeader(*header)) return TRUE;
    const bool paintedBefore = std::exchange(painting_, message == WM_PAINT || message == WM_PRINTCLIENT);
    const LRESULT result = ControlWindow::onMessage(window, message, wParam, lParam);
    painting_ = paintedBefore;
    if (header && !updating_ && alive() && (header->code == HDN_ITEMCHANGEDW || header->code == HDN_ITEMCHANGEDA))
        tellWidths();
    const bool mayScroll = message == WM_VSCROLL || message == WM_MOUSEWHEEL || message == WM_KEYDOWN;
    if (mayScroll && alive()) scrolled(static_cast<int>(SendMessageW(handle(), LVM_GETTOPINDEX, 0, 0)));
    return result;
}

LRESULT RowsWindow::notified(NMHDR& header) {
    if (header.hwndFrom != handle()) return 0;
    switch (header.code) {
    case LVN_GETDISPINFOW: textOf(reinterpret_cast<NMLVDISPINFOW&>(header).item); return 0;
    case LVN_ITEMCHANGED: return itemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
    case LVN_ODFINDITEMW: return -1;
    case NM_CUSTOMDRAW: return draw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case NM_CLICK: {
        const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(header);
        if (click.iItem >= 0 && click.iItem < rowCount() && !chosen_) choose(click.iItem, column_);
        if (alive()) forms::input::click(control());
        return 0;
    }
    case NM_DBLCLK:
        if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0 || doubleClicksAnywhere())
            forms::input::doubleClick(control());
        return 0;
    default: return 0;
    }
}

LRESULT RowsWindow::itemChanged(const NMLISTVIEW& change) {
    if (updating_ || !(change.uChanged & LVIF_STATE)) return 0;
    form_.refreshLater(*this); // The model has the last word on what is selected.
    const bool selected = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
    if (!selected || change.iItem < 0 || change.iItem >= rowCount()) return 0;
    chosen_ = true;
    shownRow_ = change.iItem;
    choose(change.iItem, column_);
    return 0;
}

void RowsWindow::textOf(LVITEMW& item) const {
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0) return;
    std::wstring text;
    if (item.iItem >= 0 && item.iItem < rowCount()) {
        if (item.iSubItem >= 1 && item.iSubItem <= static_cast<int>(shown_.size()))
            text = inOneLine(cell(item.iItem, shown_[static_cast<std::size_t>(item.iSubItem - 1)].model));
        else if (item.iSubItem == 0 && !painting_)
            text = rowText(item.iItem);
    }
    // Into the asker's own place: it may look at the text when it has asked for others already.
    const std::size_t length = text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1);
    item.pszText[length] = 0;
}

std::wstring RowsWindow::rowText(int row) const {
    std::wstring text;
    for (const RowsColumn& column : shown_) {
        const std::wstring shown = inOneLine(cell(row, column.model));
        if (shown.empty()) continue;
        if (!text.empty()) text += L", ";
        text += shown;
    }
    return text;
}

LRESULT RowsWindow::draw(NMLVCUSTOMDRAW& drawing) {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const auto row = static_cast<int>(drawing.nmcd.dwItemSpec);
    if (row < 0 || row >= rowCount()) return CDRF_DODEFAULT;
    const std::int32_t colour = rowColour(row);
    if (row == currentRow()) {
        // Plain to see without the focus too, and yet other than with it; a coloured row keeps its colour.
        const bool system = systemColoursHold();
        drawing.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
        if (system || GetFocus() == handle()) {
            drawing.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
            drawing.clrTextBk = colourOf(system ? forms::kSystemColour : colour, COLOR_HIGHLIGHT);
        } else {
            drawing.clrText = colourOf(colour, COLOR_WINDOWTEXT);
            drawing.clrTextBk = between(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW));
        }
        return CDRF_NEWFONT;
    }
    if (colour == forms::kSystemColour) return CDRF_DODEFAULT;
    drawing.clrText = colourOf(colour, COLOR_WINDOWTEXT);
    return CDRF_NEWFONT;
}

bool RowsWindow::refusesOfHeader(const NMHDR& header) const {
    const auto& change = reinterpret_cast<const NMHEADERW&>(header);
    switch (header.code) {
    case HDN_ITEMCHANGINGW: // Ctrl and "+" of the keypad widen every column
    case HDN_ITEMCHANGINGA:
        return !updating_ && change.iItem == 0 && change.pitem && change.pitem->mask & HDI_WIDTH &&
               change.pitem->cxy > 0;
    case HDN_BEGINTRACKW:
    case HDN_BEGINTRACKA:
    case HDN_DIVIDERDBLCLICKW:
    case HDN_DIVIDERDBLCLICKA: return change.iItem == 0; // The column of no width stays so.
    default: return false;
    }
}

void RowsWindow::tellWidths() {
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const auto width = std::max(4, static_cast<int>(SendMessageW(handle(), LVM_GETCOLUMNWIDTH, i + 1, 0)));
        if (width == shown_[i].width) continue;
        shown_[i].width = width;
        widthChanged(shown_[i].model, width);
    }
}

} // namespace win32
