#include "tests/windows/Ear.h"

namespace support {
namespace {

constexpr UINT kRun = WM_APP + 7;

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kRun) return DefWindowProcW(window, message, wParam, lParam);
    (*reinterpret_cast<const std::function<void()>*>(lParam))();
    return 1;
}

LPARAM asParameter(const std::function<void()>& body) { return reinterpret_cast<LPARAM>(&body); }

} // namespace

Ear::Ear() : window_(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&listen));
}

Ear::~Ear() { DestroyWindow(window_); }

bool Ear::hears(const std::function<void()>& body, UINT patience) const {
    DWORD_PTR done = 0;
    return SendMessageTimeoutW(window_, kRun, 0, asParameter(body), SMTO_NORMAL, patience, &done) && done;
}

void Ear::hearsLater(const std::function<void()>& body) const { PostMessageW(window_, kRun, 0, asParameter(body)); }

} // namespace support
