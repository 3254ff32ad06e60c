// Keys and mouse on a control's window, on their way to the model.
#include "forms/UserInput.h"
#include "win32/ControlWindow.h"
#include "win32/FormWindow.h"
#include "win32/MessageLoop.h"

namespace win32 {

using namespace forms;

int shiftState() {
    const auto held = [](int key) { return GetKeyState(key) < 0; };
    return (held(VK_SHIFT) ? kShift : 0) | (held(VK_CONTROL) ? kControl : 0) | (held(VK_MENU) ? kAlt : 0);
}

LRESULT ControlWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: return keyDown(window, message, wParam, lParam);
    case WM_CHAR: return character(window, wParam, lParam);
    case WM_SYSCHAR:
        // Handed on only for the system menu; an unknown letter would beep.
        if (wParam == VK_SPACE) return native(window, message, wParam, lParam);
        input::mnemonic(control_.form(), static_cast<char32_t>(wParam));
        return 0;
    case WM_KEYUP:
    case WM_SYSKEYUP: return keyUp(window, message, wParam, lParam);
    case WM_SETFOCUS: {
        const LRESULT result = native(window, message, wParam, lParam);
        form_.focusArrived(*this);
        return result;
    }
    case WM_MOUSEMOVE: {
        const bool left = (wParam & MK_LBUTTON) != 0;
        const bool right = (wParam & MK_RBUTTON) != 0;
        const MouseButton button = left ? MouseButton::left : right ? MouseButton::right : MouseButton::none;
        pointerAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        input::mouseMove(control_, mouseEvent(button, window, lParam));
        break;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK: return buttonDown(window, message, wParam, lParam);
    case WM_LBUTTONUP:
    case WM_RBUTTONUP: return buttonUp(window, message, wParam, lParam);
    default: break;
    }
    return native(window, message, wParam, lParam);
}

LRESULT ControlWindow::keyDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const int shift = shiftState();
    if (wParam == VK_TAB && !(shift & (kControl | kAlt))) {
        input::tab(control_.form(), (shift & kShift) != 0);
        return kKeySwallowed;
    }
    beforeInput();
    const std::int16_t left =
        input::keyDown(control_, static_cast<std::int16_t>(wParam), static_cast<std::int16_t>(shift));
    if (left == 0 || !alive()) return kKeySwallowed;
    if (left == VK_F10 && !(shift & kShift)) return 0; // A key like others here; the system would open a menu.
    if (message == WM_KEYDOWN && useKey(left, shift)) return 0;
    if (message == WM_SYSKEYDOWN && left == VK_F4) {
        DefWindowProcW(window, message, wParam,
                       lParam); // It closes the form, though a combo box may keep it to itself.
        return 0;
    }
    native(window, message, static_cast<WPARAM>(static_cast<std::uint16_t>(left)), lParam);
    return 0;
}

LRESULT ControlWindow::character(HWND window, WPARAM wParam, LPARAM lParam) {
    if (wParam == VK_TAB) return 0;
    beforeInput();
    const std::int16_t left = input::keyPress(control_, static_cast<std::int16_t>(wParam));
    if (left == 0 || !alive()) return 0;
    const auto unit = static_cast<wchar_t>(left);
    return takesCharacter(unit) ? native(window, WM_CHAR, unit, lParam) : 0;
}

LRESULT ControlWindow::keyUp(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (wParam == VK_TAB) return 0;
    const int shift = shiftState();
    // Native first: a button's Space is a click that belongs to the key's way, before the key is let go.
    const bool menuKey = wParam == VK_F10 && !(shift & kShift);
    const LRESULT result = menuKey ? 0 : native(window, message, wParam, lParam);
    if (!alive()) return result;
    beforeInput();
    input::keyUp(control_, static_cast<std::int16_t>(wParam), static_cast<std::int16_t>(shift));
    return result;
}

MouseEvent ControlWindow::mouseEvent(MouseButton button, HWND window, LPARAM lParam) const {
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (window != window_) MapWindowPoints(window, window_, &at, 1);
    return {button, static_cast<std::int16_t>(shiftState()), form_.dpi().twips(at.x), form_.dpi().twips(at.y)};
}

LRESULT ControlWindow::buttonDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool left = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
    if (control_.canTakeFocus()) {
        if (GetFocus() != window) SetFocus(window);
        if (!alive() || form_.form().activeControl() != &control_) return 0;
    }
    beforeInput();
    if (!left) rightPressed({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    pressed_ = true;
    input::mouseDown(control_, mouseEvent(left ? MouseButton::left : MouseButton::right, window, lParam));
    if (!alive()) return 0;
    // List views would keep the right button to themselves until it is let go.
    const LRESULT result = left ? native(window, message, wParam, lParam) : 0;
    const bool rows = control_.kind() == ControlKind::listView || control_.kind() == ControlKind::grid;
    if (left && rows && alive() && pressed_ && GetKeyState(VK_LBUTTON) >= 0) {
        pressed_ = false; // Lists serve the release themselves, to tell a click from a drag.
        input::mouseUp(control_, mouseEvent(MouseButton::left, window, lParam));
    }
    if (message == WM_LBUTTONDBLCLK && clicksByMouse() && alive()) input::doubleClick(control_);
    return result;
}

LRESULT ControlWindow::buttonUp(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool left = message == WM_LBUTTONUP;
    const bool pressed = pressed_;
    pressed_ = false;
    if (left && clicksByMouse()) native(window, message, wParam, lParam);
    beforeInput();
    if (pressed) input::mouseUp(control_, mouseEvent(left ? MouseButton::left : MouseButton::right, window, lParam));
    if (!alive()) return 0;
    if (left && clicksByMouse()) {
        if (pressed) input::click(control_);
        return 0;
    }
    return native(window, message, wParam, lParam);
}

} // namespace win32
