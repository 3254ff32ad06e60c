// What the window of a form does with its messages.
#include "automation/OutsideCall.h"
#include "forms/UserInput.h"
#include "win32/Environment.h"
#include "win32/FormWindow.h"
#include "win32/Guard.h"
#include "win32/InputGate.h"
#include "win32/WindowLog.h"

namespace win32 {
namespace {

constexpr UINT kDpiChanged = 0x02E0; ///< WM_DPICHANGED, which the headers know only for newer systems

/// Whether a window of this thread is one that Modality has switched off, yet can be chosen from the taskbar.
bool isSwitchedOff(HWND window) {
    return window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() && !IsWindowEnabled(window);
}

} // namespace

LRESULT CALLBACK FormWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<FormWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    if (isHeldBack(window, message, wParam, lParam)) return 0;
    return guarded([&] { return self->handle(message, wParam, lParam); });
}

LRESULT FormWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!alive_) {
        if (message == WM_CLOSE) return 0;
        return DefWindowProcW(window_, message, wParam, lParam);
    }
    switch (message) {
    case WM_COMMAND:
        if (lParam)
            if (ControlWindow* control = windowOf(reinterpret_cast<HWND>(lParam))) control->commanded(HIWORD(wParam));
        return 0;
    case WM_NOTIFY: {
        NMHDR& header = *reinterpret_cast<NMHDR*>(lParam);
        ControlWindow* control = windowOf(header.hwndFrom);
        return control ? control->notified(header) : 0;
    }
    case WM_CLOSE:
        // A disabled window waits for a message box or another form; the taskbar closes nothing behind their back.
        if (IsWindowEnabled(window_)) forms::input::closeBox(form_);
        return 0;
    case WM_QUERYENDSESSION: return !automation::OutsideCall::lasts() && !forms::input::holdsWork(form_);
    case WM_ACTIVATE:
        // Nothing is left to the system here: it would put the focus on the form instead of the control that had it.
        if (LOWORD(wParam) == WA_INACTIVE) {
            if (isSwitchedOff(reinterpret_cast<HWND>(lParam))) PostMessageW(window_, kComeForward, 0, 0);
            return 0;
        }
        if (!HIWORD(wParam)) restoreFocus();
        if (announced_) logWindow("active", form_.name());
        return 0;
    case WM_ACTIVATEAPP:
        if (wParam) PostMessageW(window_, kComeForward, 0, 0); // once the window that was chosen is active
        break;
    case kComeForward: comeForward(); return 0;
    case WM_SETFOCUS:
        if (form_.activeControl()) restoreFocus();
        return 0;
    case WM_SIZE: resized(); return 0;
    case WM_SETTINGCHANGE: userLocaleChanged(); break;
    case WM_SYSCOLORCHANGE:
        // Only windows without a parent are told, and controls keep colours and pictures of their own.
        for (const auto& control : controls_) {
            control->followSystemColours();
            SendMessageW(control->handle(), message, wParam, lParam);
        }
        coloursChanged();
        return 0;
    case WM_DISPLAYCHANGE: keepOnScreen(); break;
    case WM_GETMINMAXINFO:
        if (designed_.cx > 0 && form_.resizable()) {
            const SIZE smallest = fittingSize(workAreaOf(window_));
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
        }
        return 0;
    case WM_DESTROY: destroyed(); return 0;
    case WM_SETCURSOR:
        if (!hourglass_) break;
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        return TRUE;
    case WM_SYSCOMMAND:
        // Alt on its own, and F10, would start a menu that there is none of and swallow the next key.
        if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0) return 0;
        break;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX: return coloursOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
    case WM_ERASEBKGND: eraseBackground(reinterpret_cast<HDC>(wParam)); return 1;
    case kRefresh: {
        auto* waiting = reinterpret_cast<ControlWindow*>(lParam);
        for (const auto& control : controls_)
            if (control.get() == waiting) waiting->refresh();
        return 0;
    }
    case kDpiChanged: dpiChanged(Dpi(LOWORD(wParam)), reinterpret_cast<const RECT*>(lParam)); return 0;
    default: break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT FormWindow::coloursOf(HWND window, HDC dc) {
    const ControlWindow* found = windowOf(window);
    if (!found) { // The list of a combo box is a window of its own.
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        SetBkColor(dc, GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    const forms::Control& control = found->control();
    const bool box = control.kind() == forms::ControlKind::textBox || control.kind() == forms::ControlKind::comboBox;
    const bool writable = box && control.enabled() && !found->readOnly();
    const bool system = systemColoursHold();
    COLORREF back = box ? GetSysColor(COLOR_WINDOW) : backgroundOf(control);
    if (control.backColor() != forms::kSystemColour && !system)
        back = colourOf(control.backColor(), COLOR_WINDOW);
    else if (box && !writable)
        back = GetSysColor(COLOR_BTNFACE);
    SetBkColor(dc, back);
    const std::int32_t text = system ? forms::kSystemColour : control.foreColor();
    SetTextColor(dc, control.enabled() ? colourOf(text, writable ? COLOR_WINDOWTEXT : COLOR_BTNTEXT)
                                       : GetSysColor(COLOR_GRAYTEXT));
    return reinterpret_cast<LRESULT>(brush(back));
}

void FormWindow::eraseBackground(HDC dc) {
    const int saved = SaveDC(dc);
    // What paints its whole area itself is left out, so that it does not flicker.
    for (const auto& control : controls_) {
        const forms::ControlKind kind = control->control().kind();
        const bool opaque = kind == forms::ControlKind::grid || kind == forms::ControlKind::listView ||
                            kind == forms::ControlKind::textBox;
        if (!opaque || !control->control().visible()) continue;
        RECT r{};
        GetWindowRect(control->handle(), &r);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&r), 2);
        ExcludeClipRect(dc, r.left, r.top, r.right, r.bottom);
    }
    RECT inside{};
    GetClientRect(window_, &inside);
    const bool system = systemColoursHold();
    FillRect(dc, &inside, brush(colourOf(system ? forms::kSystemColour : form_.backColor(), COLOR_BTNFACE)));
    for (const forms::Control* control : form_.controls()) {
        const bool coloured = !system && control->kind() == forms::ControlKind::frame && control->visible() &&
                              control->backColor() != forms::kSystemColour;
        if (!coloured) continue;
        const RECT area = dpi_.pixels(control->bounds());
        FillRect(dc, &area, brush(colourOf(control->backColor(), COLOR_BTNFACE)));
    }
    RestoreDC(dc, saved);
}

} // namespace win32
