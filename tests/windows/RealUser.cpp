#include "tests/windows/RealUser.h"

#include "tests/support/Scratch.h"
#include "tests/windows/TopWindow.h"
#include "win32/ControlWindow.h"
#include "win32/Text.h"

#include <cstring>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace support {
namespace {

constexpr int kPatience = 10000; ///< milliseconds
constexpr UINT kRun = WM_APP + 7;

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kRun) return DefWindowProcW(window, message, wParam, lParam);
    (*reinterpret_cast<const std::function<void()>*>(lParam))();
    return 1;
}

LPARAM asParameter(const std::function<void()>& body) { return reinterpret_cast<LPARAM>(&body); }

/// This process's message box on top, or null.
HWND messageBox() {
    return topWindow(
        [](HWND window) { return processOf(window) == GetCurrentProcessId() && classOf(window) == L"#32770"; });
}

void until(const std::string& what, const std::function<bool()>& seen) {
    for (const ULONGLONG end = GetTickCount64() + kPatience; !seen(); Sleep(2))
        if (GetTickCount64() > end) throw std::runtime_error("Not seen: " + what + ", after\n" + readAll(logFile()));
}

/// Queues keys, each with one that is held meanwhile or 0.
void send(const std::vector<std::pair<int, int>>& strokes) {
    std::vector<INPUT> inputs;
    const auto add = [&](int key, DWORD flags) {
        if (!key) return;
        INPUT& input = inputs.emplace_back();
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = static_cast<WORD>(key);
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(input.ki.wVk, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = flags;
    };
    for (const auto& [key, withKey] : strokes) {
        add(withKey, 0);
        add(key, 0);
        add(key, KEYEVENTF_KEYUP);
        add(withKey, KEYEVENTF_KEYUP);
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

} // namespace

HWND makeEar() {
    HWND ear = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(ear, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&listen));
    return ear;
}

bool hears(HWND ear, const std::function<void()>& body, UINT patience) {
    DWORD_PTR done = 0;
    return SendMessageTimeoutW(ear, kRun, 0, asParameter(body), SMTO_NORMAL, patience, &done) && done;
}

void hearsLater(HWND ear, const std::function<void()>& body) { PostMessageW(ear, kRun, 0, asParameter(body)); }

void beginLog() {
    writeAll(logFile(), "");
    SetEnvironmentVariableW(L"GOODSREQ_WINDOW_LOG", win32::wide(logFile()).c_str());
    SetEnvironmentVariableW(L"GOODSREQ_WINDOW_TEXTS", L"1");
}

std::string logFile() { return scratch("windows.log"); }

void RealUser::sits(const std::function<void()>& module, const Script& script, forms::Desktop* desktop) {
    if (!desktop) beginLog();
    RealUser user(desktop);
    std::exception_ptr failure;
    std::thread acting([&] {
        try {
            script(user);
        } catch (...) {
            failure = std::current_exception();
        }
        for (; !user.ended_; Sleep(20)) user.closes();
    });
    module();
    user.ended_ = true;
    // What the other thread sent last is still served.
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
    acting.join();
    DestroyWindow(user.ear_);
    if (failure) std::rethrow_exception(failure);
}

void RealUser::closes() {
    if (HWND box = messageBox()) PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    const std::function<void()> closeForm = [this] {
        if (forms::Form* form = desktop_->topForm()) form->unload();
    };
    if (desktop_)
        hears(ear_, closeForm, 200);
    else
        PostMessageW(usableWindow(thread_), WM_CLOSE, 0, 0);
    PostThreadMessageW(thread_, WM_LBUTTONUP, 0, 0); // wakes a loop whose window is gone
}

void RealUser::look(const std::function<void()>& body) {
    if (!hears(ear_, body, kPatience)) throw std::runtime_error("The module's thread does not answer");
}

void RealUser::sees(const char* what, const std::function<bool()>& seen) {
    bool now = false;
    until(what, [&] {
        look([&] { now = seen(); });
        return now;
    });
}

void RealUser::seesForm(const std::string& name) {
    sees(name.c_str(), [&] {
        const forms::Form* form = desktop_->topForm();
        if (!form || form->name() != name || !form->activeControl()) return false;
        HWND window = windowOf(*form->activeControl());
        return window && (GetFocus() == window || IsChild(window, GetFocus()));
    });
}

void RealUser::seesFocus(const forms::Control& control) {
    sees(control.name().c_str(), [&] { return GetFocus() == windowOf(control); });
}

void RealUser::seesTheEnd() {
    until("the end of the module", [this] { return ended_.load(); });
}

void RealUser::types(const std::string& ascii) {
    std::vector<std::pair<int, int>> strokes;
    for (const char c : ascii) {
        const SHORT place = VkKeyScanW(static_cast<wchar_t>(c));
        strokes.emplace_back(place & 0xFF, place & 0x100 ? VK_SHIFT : 0);
    }
    send(strokes);
}

void RealUser::presses(int key, int withKey) { send({{key, withKey}}); }

void RealUser::clicks(forms::Control& control, int x, int y) {
    HWND window = nullptr;
    look([&] { window = windowOf(control); });
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void RealUser::answers(int button) {
    HWND box = nullptr;
    until("a message box", [&] { return (box = messageBox()) != nullptr; });
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    until("the end of the message box", [&] { return !IsWindow(box); });
}

void RealUser::awaits(const std::string& text) {
    if (text.empty()) return;
    until(text, [&] {
        std::ifstream log(std::filesystem::path(logFile()), std::ios::binary);
        log.seekg(seen_);
        for (std::string line; std::getline(log, line) && !log.eof();) {
            seen_ = log.tellg();
            if (line == text) return true;
            if (line.starts_with("message")) throw std::runtime_error(line + ", before " + text);
        }
        return false;
    });
}

void RealUser::answers(const std::string& text, int button) {
    awaits("message " + text);
    answers(button);
}

void RealUser::sendsKey(int key, const std::string& then) {
    SendNotifyMessageW(focus(), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    awaits(then);
}

void RealUser::sendsText(const std::string& ascii, const std::string& then) {
    for (const char c : ascii) PostMessageW(focus(), WM_CHAR, static_cast<WPARAM>(c), 1);
    awaits(then);
}

void RealUser::sendsAlt(char letter, const std::string& then) {
    PostMessageW(focus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29 | 1);
    awaits(then);
}

HWND RealUser::focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    const ULONGLONG begin = GetTickCount64();
    until("a focus", [&] {
        // Another program's window may have come in front, and took the keyboard with it.
        if (GetTickCount64() - begin > 1000) SetForegroundWindow(usableWindow(thread_));
        return GetGUIThreadInfo(thread_, &info) && info.hwndFocus &&
               IsWindowEnabled(GetAncestor(info.hwndFocus, GA_ROOT));
    });
    return info.hwndFocus;
}

HWND windowOf(const forms::Control& control) {
    const auto* view = static_cast<const win32::ControlWindow*>(control.view());
    return view ? view->handle() : nullptr;
}

std::string shownText(const forms::Control& control) { return win32::narrow(win32::windowText(windowOf(control))); }

void copyToClipboard(const std::string& text) {
    const std::wstring units = win32::wide(text);
    const std::size_t bytes = (units.size() + 1) * sizeof(wchar_t);
    until("the clipboard", [] { return OpenClipboard(nullptr); });
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), units.c_str(), bytes);
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

} // namespace support
