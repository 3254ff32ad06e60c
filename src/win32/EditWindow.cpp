#include "win32/EditWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

#include <algorithm>

namespace win32 {
namespace {

constexpr WORD kKeypadDecimal = 0x53; ///< the key's scan code

DWORD styleOf(const forms::TextBox& box) {
    DWORD style = box.rightAligned() ? ES_RIGHT : ES_LEFT;
    if (box.multiLine() && box.fixedPitch() > 0) // as it is laid out, never wrapped
        style |= ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | WS_VSCROLL | WS_HSCROLL;
    else
        style |= box.multiLine() ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL : ES_AUTOHSCROLL;
    return box.locked() ? style | ES_READONLY : style;
}

std::wstring clipboardText(HWND owner) {
    std::wstring text;
    if (!OpenClipboard(owner)) return text;
    if (HANDLE data = GetClipboardData(CF_UNICODETEXT))
        if (const auto* units = static_cast<const wchar_t*>(GlobalLock(data))) {
            text.assign(units, wcsnlen(units, GlobalSize(data) / sizeof(wchar_t)));
            GlobalUnlock(data);
        }
    CloseClipboard();
    return text;
}

} // namespace

EditWindow::EditWindow(FormWindow& form, forms::TextBox& box) : ControlWindow(form, box), box_(box) {
    create(WC_EDITW, styleOf(box), WS_EX_CLIENTEDGE);
    SendMessageW(handle(), EM_LIMITTEXT, static_cast<WPARAM>(box.maxLength()), 0);
    SendMessageW(handle(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(2, 2));
    fontChanged();
    showSelection();
}

void EditWindow::fontChanged() {
    ControlWindow::fontChanged();
    if (box_.fixedPitch() <= 0) return;
    OwnedFont font(CreateFontW(-MulDiv(form_.font().lineHeight(), box_.fixedPitch(), 110), 0, 0, 0, FW_NORMAL, FALSE,
                               FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                               CLEARTYPE_QUALITY, FIXED_PITCH | FF_MODERN, L"Courier New"));
    SendMessageW(handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    fixedPitch_ = std::move(font); // The former one is not in use any more.
}

RECT EditWindow::area(RECT wanted) const {
    if (box_.multiLine()) return wanted;
    // As high as one line needs, in the middle of its place: so boxes, combo boxes and labels share one base line.
    const LONG height = form_.font().lineHeight() + form_.dpi().pixels(120);
    const LONG top = (wanted.top + wanted.bottom - height) / 2;
    return {wanted.left, top, wanted.right, top + height};
}

std::wstring EditWindow::text() const { return windowText(handle()); }

void EditWindow::apply(forms::Aspect aspect) {
    switch (aspect) {
    case forms::Aspect::text:
        updating_ = true;
        SetWindowTextW(handle(), wide(box_.text()).c_str());
        updating_ = false;
        showSelection();
        break;
    case forms::Aspect::selection: showSelection(); break;
    case forms::Aspect::font: fontChanged(); break;
    case forms::Aspect::enabled:
        SendMessageW(handle(), EM_SETREADONLY, box_.locked(), 0);
        ControlWindow::apply(aspect);
        break;
    default: ControlWindow::apply(aspect);
    }
}

void EditWindow::showSelection() {
    const std::wstring shown = text();
    const int start = unitsOf(shown, box_.selStart());
    const int end = unitsOf(shown, box_.selStart() + box_.selLength());
    SendMessageW(handle(), EM_SETSEL, static_cast<WPARAM>(start), end);
    SendMessageW(handle(), EM_SCROLLCARET, 0, 0);
}

void EditWindow::beforeInput() {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const std::wstring shown = text();
    const int first = charactersIn(shown, static_cast<int>(start));
    box_.selectionMoved(first, charactersIn(shown, static_cast<int>(end)) - first);
}

bool EditWindow::takesCharacter(wchar_t character) const {
    // An edit box beeps at what it cannot use.
    if (character == VK_ESCAPE) return false;
    if (character == VK_RETURN || character == '\n') return box_.multiLine();
    return true;
}

void EditWindow::commanded(int code) {
    if (code == EN_CHANGE && !updating_) textChanged();
}

void EditWindow::textChanged() {
    const std::wstring shown = text();
    if (hasHalfCharacter(shown)) return; // The other half follows at once.
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const int first = charactersIn(shown, static_cast<int>(start));
    forms::input::edit(box_, narrow(shown), first, charactersIn(shown, static_cast<int>(end)) - first);
}

bool EditWindow::accepts(const std::wstring& inserted) const {
    std::wstring whole = text();
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    whole.replace(start, end - start, inserted);
    return forms::input::acceptsWhole(box_, narrow(whole));
}

bool EditWindow::acceptsClipboard() const {
    std::wstring pasted = clipboardText(handle());
    if (!box_.multiLine()) pasted.resize(std::min(pasted.size(), pasted.find_first_of(L"\r\n"))); // as the system does
    return accepts(pasted);
}

LRESULT EditWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CHAR:
        if (box_.keypadPoint && (HIWORD(lParam) & (KF_EXTENDED | 0xFF)) == kKeypadDecimal) wParam = L'.';
        break;
    case WM_PASTE:
        if (!acceptsClipboard()) return 0;
        break;
    case EM_REPLACESEL:
        if (!updating_ && lParam && !accepts(reinterpret_cast<const wchar_t*>(lParam))) return 0;
        break;
    case WM_SETTEXT:
        // From outside: a screen reader or an input method sets the whole text.
        if (updating_) break;
        if (lParam && !forms::input::acceptsWhole(box_, narrow(reinterpret_cast<const wchar_t*>(lParam)))) return FALSE;
        {
            const LRESULT result = native(window, message, wParam, lParam);
            textChanged();
            return result;
        }
    default: break;
    }
    return ControlWindow::onMessage(window, message, wParam, lParam);
}

} // namespace win32
