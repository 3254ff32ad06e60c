// Looks for a window among those on the screen.
#pragma once

#include "win32/Platform.h"

#include <string>

namespace support {

/// The first from the top that fits, or null.
template <class Fits> HWND topWindow(const Fits& fits) {
    HWND window = GetTopWindow(nullptr);
    while (window && !fits(window)) window = GetWindow(window, GW_HWNDNEXT);
    return window;
}

inline DWORD processOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

inline std::wstring classOf(HWND window) {
    wchar_t name[64] = L"";
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 64))};
}

/// The thread's window that a person can work in, or null. Tips, menus and dropped lists have no title.
inline HWND usableWindow(DWORD thread) {
    return topWindow([thread](HWND window) {
        return GetWindowThreadProcessId(window, nullptr) == thread && IsWindowVisible(window) &&
               IsWindowEnabled(window) && (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    });
}

} // namespace support
