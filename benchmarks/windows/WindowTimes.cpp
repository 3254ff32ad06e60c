#include "benchmarks/windows/WindowTimes.h"

#include "win32/Platform.h"

#include <stdexcept>

namespace bench {
namespace {

WindowTimes* watching = nullptr;

bool isForm(HWND window) {
    wchar_t name[32];
    return GetClassNameW(window, name, 32) > 0 && lstrcmpW(name, L"GoodsreqForm") == 0;
}

LRESULT CALLBACK see(int code, WPARAM wParam, LPARAM lParam) {
    double* const moment = code == HCBT_CREATEWND  ? &watching->made
                           : code == HCBT_ACTIVATE ? &watching->activated
                                                   : nullptr;
    if (moment && *moment == 0 && isForm(reinterpret_cast<HWND>(wParam))) *moment = seconds();
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

double seconds() {
    LARGE_INTEGER now, frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

WindowTimes::WindowTimes() : hook_(SetWindowsHookExW(WH_CBT, &see, nullptr, GetCurrentThreadId())) {
    if (!hook_) throw std::runtime_error("The windows cannot be watched");
    watching = this;
}

WindowTimes::~WindowTimes() { UnhookWindowsHookEx(static_cast<HHOOK>(hook_)); }

} // namespace bench
