#include "tests/windows/Person.h"

#include "win32/ControlWindow.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

namespace support {
namespace {

constexpr int kPatience = 10000; ///< milliseconds

INPUT stroke(WORD key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    return input;
}

/// Runs `module` here and `script` in a thread beside it; after the script, `close` again and again until `module`
/// ends.
void beside(const std::function<void()>& module, const std::function<void()>& script,
            const std::function<void()>& close) {
    std::atomic<bool> ended = false;
    std::thread acting([&] {
        script();
        while (!ended) {
            if (HWND box = FindWindowW(L"#32770", nullptr)) PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
            close();
            Sleep(20);
        }
    });
    module();
    ended = true;
    // What the other thread sent last is still served.
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
    acting.join();
}

void send(std::vector<INPUT> inputs) { SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)); }

} // namespace

void Person::sits(forms::Desktop& desktop, const std::function<void()>& module,
                  const std::function<void(Person&)>& script) {
    const Ear ear;
    const std::function<void()> closeForm = [&] {
        if (forms::Form* form = desktop.topForm()) form->unload();
    };
    beside(
        module,
        [&] {
            Person person(desktop, ear);
            script(person);
        },
        [&] { ear.hears(closeForm, 200); });
}

void Person::sits(const std::function<void()>& module, const std::function<void()>& script) {
    const DWORD thread = GetCurrentThreadId();
    beside(module, script, [thread] {
        EnumThreadWindows(
            thread,
            [](HWND window, LPARAM) CALLBACK -> BOOL {
                if (IsWindowVisible(window) && IsWindowEnabled(window)) PostMessageW(window, WM_CLOSE, 0, 0);
                return TRUE;
            },
            0);
    });
}

void Person::look(const std::function<void()>& body) {
    if (!ear_.hears(body, kPatience)) ADD_FAILURE() << "The module's thread does not answer";
}

bool Person::sees(const char* what, const std::function<bool()>& seen) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    for (;;) {
        bool now = false;
        look([&] { now = seen(); });
        if (now) return true;
        if (GetTickCount64() > end) break;
        Sleep(5);
    }
    ADD_FAILURE() << "Not seen: " << what;
    return false;
}

bool Person::seesForm(const std::string& name) {
    return sees(name.c_str(), [&] {
        const forms::Form* form = desktop_.topForm();
        if (!form || form->name() != name || !form->activeControl()) return false;
        HWND window = windowOf(*form->activeControl());
        HWND focus = GetFocus();
        return window && (focus == window || IsChild(window, focus));
    });
}

void Person::types(const std::string& ascii) {
    std::vector<INPUT> inputs;
    for (const char c : ascii) {
        const SHORT place = VkKeyScanW(static_cast<wchar_t>(c));
        const auto key = static_cast<WORD>(place & 0xFF);
        const bool shift = (place & 0x100) != 0;
        if (shift) inputs.push_back(stroke(VK_SHIFT, false));
        inputs.push_back(stroke(key, false));
        inputs.push_back(stroke(key, true));
        if (shift) inputs.push_back(stroke(VK_SHIFT, true));
    }
    send(inputs);
}

void Person::presses(int key, int withKey) {
    std::vector<INPUT> inputs;
    if (withKey) inputs.push_back(stroke(static_cast<WORD>(withKey), false));
    inputs.push_back(stroke(static_cast<WORD>(key), false));
    inputs.push_back(stroke(static_cast<WORD>(key), true));
    if (withKey) inputs.push_back(stroke(static_cast<WORD>(withKey), true));
    send(inputs);
}

void Person::clicksAt(forms::Control& control, int x, int y) {
    HWND window = nullptr;
    look([&] { window = windowOf(control); });
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void Person::clicks(forms::Control& control) { clicksAt(control, 8, 8); }

void Person::answers(int button) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    HWND box = nullptr;
    while (!(box = FindWindowW(L"#32770", nullptr)) && GetTickCount64() < end) Sleep(5);
    if (!box) {
        ADD_FAILURE() << "No message box is up";
        return;
    }
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    while (IsWindow(box) && GetTickCount64() < end) Sleep(5);
}

HWND Person::windowOf(const forms::Control& control) {
    const auto* view = static_cast<const win32::ControlWindow*>(control.view());
    return view ? view->handle() : nullptr;
}

std::string Person::shownText(const forms::Control& control) {
    return win32::narrow(win32::windowText(windowOf(control)));
}

void copyToClipboard(const std::string& text) {
    const std::wstring units = win32::wide(text);
    const std::size_t bytes = (units.size() + 1) * sizeof(wchar_t);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), units.c_str(), bytes);
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

} // namespace support
