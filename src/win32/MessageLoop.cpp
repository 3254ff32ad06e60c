#include "win32/MessageLoop.h"

#include "automation/OutsideCall.h"
#include "win32/FormWindow.h"
#include "win32/InputGate.h"

namespace win32 {
namespace {

bool isKeyDown(const MSG& message) { return message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN; }
bool isKeyUp(const MSG& message) { return message.message == WM_KEYUP || message.message == WM_SYSKEYUP; }

/// Dispatches the characters that the last translated key made. A request to quit, which the system hands out whatever
/// is asked for, stays for the loops.
void dispatchCharacters() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_CHAR, WM_DEADCHAR, PM_REMOVE) ||
           PeekMessageW(&message, nullptr, WM_SYSCHAR, WM_SYSDEADCHAR, PM_REMOVE)) {
        if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
        DispatchMessageW(&message);
    }
}

void dispatch(MSG message) {
    const bool key = isKeyDown(message) || isKeyUp(message);
    if (!key || !FormWindow::owns(message.hwnd)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
        return;
    }
    if (HWND focus = GetFocus(); focus && FormWindow::owns(focus)) message.hwnd = focus;
    if (isKeyUp(message)) {
        // Letting Alt go makes the character whose number was keyed meanwhile, as many scanners do.
        TranslateMessage(&message);
        DispatchMessageW(&message);
    } else {
        const LRESULT answer = DispatchMessageW(&message);
        if (answer == kKeySwallowed || !IsWindow(message.hwnd)) return;
        TranslateMessage(&message);
    }
    dispatchCharacters();
}

} // namespace

void serve(const std::function<bool()>& goesOn) {
    const automation::OwnStretch own;
    while (goesOn()) {
        if (handleKeptKey(dispatch)) continue;
        MSG message;
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0) return PostQuitMessage(static_cast<int>(message.wParam));
        if (got < 0) return;
        dispatch(message);
    }
}

} // namespace win32
