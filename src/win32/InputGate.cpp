#include "win32/InputGate.h"

#include "automation/OutsideCall.h"

#include <array>
#include <deque>

namespace win32 {
namespace {

struct KeptKey {
    MSG message{};
    std::array<BYTE, 256> keyboard{};
};

// Only the thread of the windows comes here.
std::deque<KeptKey>& keptKeys() {
    static std::deque<KeptKey>& kept = *new std::deque<KeptKey>;
    return kept;
}

} // namespace

bool isHeldBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool key = message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
    // A character is made once more when its key is handled.
    const bool character =
        message == WM_CHAR || message == WM_SYSCHAR || message == WM_DEADCHAR || message == WM_SYSDEADCHAR;
    const bool mouse = message > WM_MOUSEMOVE && message <= WM_MOUSELAST;
    const bool command = message == WM_CLOSE || message == WM_CONTEXTMENU;
    if (!(key || character || mouse || command) || !automation::OutsideCall::lasts()) return false;
    if (key) {
        KeptKey kept;
        kept.message.hwnd = window;
        kept.message.message = message;
        kept.message.wParam = wParam;
        kept.message.lParam = lParam;
        GetKeyboardState(kept.keyboard.data());
        keptKeys().push_back(kept);
    }
    return true;
}

bool handleKeptKey(const std::function<void(const MSG&)>& handle) {
    if (keptKeys().empty()) return false;
    KeptKey kept = keptKeys().front();
    keptKeys().pop_front();
    if (HWND focus = GetFocus()) kept.message.hwnd = focus; // the window of then may be gone
    std::array<BYTE, 256> now{};
    GetKeyboardState(now.data());
    SetKeyboardState(kept.keyboard.data());
    handle(kept.message);
    SetKeyboardState(now.data());
    return true;
}

void forgetKeptKeys() { keptKeys().clear(); }

} // namespace win32
