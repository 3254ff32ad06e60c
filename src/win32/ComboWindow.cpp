#include "win32/ComboWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"
#include "win32/MessageLoop.h"
#include "win32/Text.h"

#include <algorithm>
#include <utility>

namespace win32 {
namespace {

constexpr int kVisibleEntries = 12;

bool editable(const forms::ComboBox& box) { return box.style() == forms::ComboBox::Style::editable; }

} // namespace

ComboWindow::ComboWindow(FormWindow& form, forms::ComboBox& box) : ControlWindow(form, box), box_(box) {
    create(WC_COMBOBOXW, (editable(box) ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST) | WS_VSCROLL, 0);
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    if (editable(box) && GetComboBoxInfo(handle(), &parts) && parts.hwndItem) hook(parts.hwndItem);
    SendMessageW(handle(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), fieldHeight());
    SendMessageW(handle(), CB_SETMINVISIBLE, kVisibleEntries, 0);
    place();
    fill();
    showChoice();
}

int ComboWindow::fieldHeight() const { return form_.font().lineHeight() + form_.dpi().pixels(30); }

RECT ComboWindow::area(RECT wanted) const {
    // The field's height is the font's; the list below it takes what it needs.
    const LONG height = form_.font().lineHeight() + form_.dpi().pixels(120);
    const LONG top = (wanted.top + wanted.bottom - height) / 2;
    const LONG list = (form_.font().lineHeight() + 2) * kVisibleEntries;
    return {wanted.left, top, wanted.right, top + height + list};
}

void ComboWindow::fill() {
    updating_ = true;
    SendMessageW(handle(), WM_SETREDRAW, FALSE, 0);
    SendMessageW(handle(), CB_RESETCONTENT, 0, 0);
    LONG widest = 0;
    std::size_t longest = 0;
    for (const forms::ComboBox::Entry& entry : box_.entries()) {
        const std::wstring text = wide(beginning(entry.text));
        SendMessageW(handle(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        if (text.size() <= longest) continue;
        longest = text.size();
        widest = form_.font().widthOf(text.c_str());
    }
    SendMessageW(handle(), CB_SETDROPPEDWIDTH,
                 static_cast<WPARAM>(widest + GetSystemMetrics(SM_CXVSCROLL) + form_.dpi().pixels(150)), 0);
    SendMessageW(handle(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(handle(), nullptr, TRUE);
    updating_ = false;
    entriesStale_ = false;
}

void ComboWindow::showChoice() {
    // The arrows may have moved on in an open list.
    const bool moved = !open_ && SendMessageW(handle(), CB_GETCURSEL, 0, 0) != box_.listIndex();
    if (moved && box_.listIndex() < 0) fill(); // anew, or the next arrow goes on from where the last one was
    updating_ = true;
    if (moved) SendMessageW(handle(), CB_SETCURSEL, static_cast<WPARAM>(box_.listIndex()), 0);
    if (editable(box_)) {
        const std::wstring text = wide(box_.text());
        if (windowText(handle()) != text) SetWindowTextW(handle(), text.c_str());
    }
    updating_ = false;
}

void ComboWindow::refresh() {
    if (entriesStale_) fill();
    showChoice();
}

void ComboWindow::fontChanged() {
    SendMessageW(handle(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), fieldHeight());
    ControlWindow::fontChanged();
}

void ComboWindow::apply(forms::Aspect aspect) {
    switch (aspect) {
    case forms::Aspect::items:
        // Entries come one by one, thousands at times: they are taken over together.
        if (!entriesStale_) form_.refreshLater(*this);
        entriesStale_ = true;
        break;
    case forms::Aspect::text:
    case forms::Aspect::selection:
        if (!entriesStale_) showChoice();
        break;
    default: ControlWindow::apply(aspect);
    }
}

void ComboWindow::commanded(int code) {
    if (code == CBN_DROPDOWN) {
        open_ = true;
        accepted_ = false;
    }
    const bool closed = code == CBN_CLOSEUP && std::exchange(open_, false);
    if (updating_ || entriesStale_) return;
    // An arrow key in a closed box chooses at once. While the list is open it only moves on: the choice is made when it
    // is accepted, by the mouse, Enter or Tab.
    switch (code) {
    case CBN_SELENDOK: accepted_ = true; break;
    case CBN_CLOSEUP:
        form_.refreshLater(*this);
        if (closed && accepted_) chooseShown();
        break;
    case CBN_SELCHANGE:
        // The mouse closes the list first and reports the change then.
        if (open_) break;
        form_.refreshLater(*this);
        if (SendMessageW(handle(), CB_GETCURSEL, 0, 0) != box_.listIndex()) chooseShown();
        break;
    case CBN_EDITCHANGE: forms::input::edit(box_, narrow(windowText(handle()))); break;
    default: break;
    }
}

void ComboWindow::chooseShown() {
    forms::input::choose(box_, static_cast<int>(SendMessageW(handle(), CB_GETCURSEL, 0, 0)));
    if (alive() && !entriesStale_) showChoice(); // a handler may have taken the choice back
}

void ComboWindow::closeList(bool accepts) {
    accepted_ = accepts;
    SendMessageW(handle(), CB_SHOWDROPDOWN, FALSE, 0);
}

bool ComboWindow::isOpen() const { return SendMessageW(handle(), CB_GETDROPPEDSTATE, 0, 0) != 0; }

LRESULT ComboWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The wheel scrolls an open list; on a closed one it would choose, and is the form's.
    if (message == WM_MOUSEWHEEL && !isOpen()) return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_KEYDOWN && isOpen()) {
        if (wParam == VK_ESCAPE) { // closes the list and not the form behind it
            closeList(false);
            return kKeySwallowed;
        }
        if (wParam == VK_TAB) closeList(true);
    }
    if (message == WM_SYSKEYDOWN && (wParam == VK_UP || wParam == VK_DOWN) && isOpen()) {
        closeList(true);
        return kKeySwallowed;
    }
    return ControlWindow::onMessage(window, message, wParam, lParam);
}

bool ComboWindow::useKey(int keyCode, int) {
    if ((keyCode != VK_RETURN && keyCode != VK_F4) || !isOpen()) return false;
    closeList(true);
    return true;
}

bool ComboWindow::takesCharacter(wchar_t character) const {
    return character != VK_RETURN && character != VK_ESCAPE && character != '\n';
}

} // namespace win32
