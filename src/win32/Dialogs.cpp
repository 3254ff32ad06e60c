#include "win32/Dialogs.h"

#include "win32/Guard.h"
#include "win32/OwnModule.h"
#include "win32/Owned.h"
#include "win32/Text.h"
#include "win32/WindowLog.h"

#include <functional>
#include <utility>

namespace win32 {
namespace {

using forms::Answer;
using forms::MessageButtons;

UINT iconOf(forms::MessageIcon icon) {
    switch (icon) {
    case forms::MessageIcon::information: return MB_ICONINFORMATION;
    case forms::MessageIcon::question: return MB_ICONQUESTION;
    case forms::MessageIcon::critical: return MB_ICONERROR;
    default: return 0;
    }
}

UINT buttonsOf(const forms::Message& message) {
    if (message.buttons == MessageButtons::ok) return MB_OK;
    UINT flags = message.buttons == MessageButtons::yesNo ? MB_YESNO : MB_YESNOCANCEL;
    if (message.defaultAnswer == Answer::no) flags |= MB_DEFBUTTON2;
    if (message.defaultAnswer == Answer::cancel) flags |= MB_DEFBUTTON3;
    return flags;
}

Answer answerOf(int button, MessageButtons buttons) {
    if (buttons == MessageButtons::ok) return Answer::ok;
    if (button == IDYES) return Answer::yes;
    if (buttons == MessageButtons::yesNoCancel && button != IDNO) return Answer::cancel;
    return Answer::no; // Escape counts as No, also where the system calls it Cancel.
}

const char* nameOf(Answer answer) {
    switch (answer) {
    case Answer::ok: return "ok";
    case Answer::yes: return "yes";
    case Answer::no: return "no";
    default: return "cancel";
    }
}

BOOL CALLBACK disableOther(HWND window, LPARAM state) {
    auto& [modal, disabled] = *reinterpret_cast<std::pair<HWND, std::vector<HWND>*>*>(state);
    const bool tool = GetWindow(window, GW_OWNER) == modal; // the form's own tips
    if (window == modal || tool || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    EnableWindow(window, FALSE);
    disabled->push_back(window);
    return TRUE;
}

/// Logs a line as soon as the modal loop that follows has nothing else to do. Whoever reads the log may then type: a
/// box that is answered before it has the keyboard can leave its owner without it. A timer's message comes after all
/// others.
class LogWhenIdle {
public:
    explicit LogWhenIdle(std::function<void()> log) : timer_(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, idle)) {
        waiting() = std::move(log);
    }
    ~LogWhenIdle() {
        KillTimer(nullptr, timer_);
        logNow();
    }
    LogWhenIdle(const LogWhenIdle&) = delete;
    LogWhenIdle& operator=(const LogWhenIdle&) = delete;

private:
    // A box within a box's loop is none of ours, so one line waits at most.
    static std::function<void()>& waiting() {
        static std::function<void()> log;
        return log;
    }
    static void logNow() {
        if (const auto log = std::exchange(waiting(), nullptr)) log();
    }
    static void CALLBACK idle(HWND, UINT, UINT_PTR, DWORD) {
        guarded([] {
            logNow();
            return 0;
        });
    }

    UINT_PTR timer_;
};

/// No letter answers a box while it lives: a scanner's code may hold a "Y". With Alt, letters do.
class LettersIgnored {
public:
    LettersIgnored() : hook_(SetWindowsHookExW(WH_MSGFILTER, &filter, nullptr, GetCurrentThreadId())) {}
    ~LettersIgnored() { UnhookWindowsHookEx(hook_); }
    LettersIgnored(const LettersIgnored&) = delete;
    LettersIgnored& operator=(const LettersIgnored&) = delete;

private:
    static LRESULT CALLBACK filter(int code, WPARAM wParam, LPARAM lParam) {
        const MSG& message = *reinterpret_cast<const MSG*>(lParam);
        if (code == MSGF_DIALOGBOX && message.message == WM_CHAR && message.wParam > L' ') return TRUE;
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK hook_;
};

/// A window may be destroyed at any time, and its handle be another's.
bool isOfThisThread(HWND window) { return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId(); }

} // namespace

Answer showMessage(HWND owner, const forms::Message& message) {
    const VisualStyles styles;
    if (GetCapture()) ReleaseCapture(); // A press that is still held does not follow into the box.
    int button = 0;
    {
        const LettersIgnored ignored;
        const LogWhenIdle log([&] { logText("message", message.text); });
        button = MessageBoxW(owner, wide(beginning(message.text)).c_str(), wide(message.title).c_str(),
                             iconOf(message.icon) | buttonsOf(message) | (owner ? 0 : MB_TASKMODAL) | MB_SETFOREGROUND);
    }
    const Answer answer = answerOf(button, message.buttons);
    logWindow("answered", nameOf(answer));
    return answer;
}

namespace {

std::optional<POINT>& menuPlace() {
    static std::optional<POINT> place;
    return place;
}

} // namespace

MenuPlace::MenuPlace(POINT at) { menuPlace() = at; }
MenuPlace::~MenuPlace() { menuPlace().reset(); }

std::optional<std::size_t> showMenu(HWND owner, const forms::Menu& menu) {
    const VisualStyles styles;
    const OwnedMenu popup(CreatePopupMenu());
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        const forms::MenuItem& item = *menu.items[i];
        if (item.caption == "-")
            AppendMenuW(popup.get(), MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(popup.get(), MF_STRING | (item.enabled ? 0 : MF_GRAYED), i + 1, wide(item.caption).c_str());
    }
    POINT at{};
    if (menuPlace())
        at = *menuPlace();
    else
        GetCursorPos(&at);
    if (GetCapture()) ReleaseCapture();
    std::size_t chosen = 0;
    {
        const LogWhenIdle log([&] { logWindow("menu", menu.name); });
        chosen = static_cast<std::size_t>(
            TrackPopupMenu(popup.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, owner, nullptr));
    }
    if (chosen == 0 || chosen > menu.items.size()) {
        logWindow("chosen", "");
        return std::nullopt;
    }
    logWindow("chosen", menu.items[chosen - 1]->name);
    return chosen - 1;
}

Modality::Modality(HWND modal) : modal_(modal), before_(GetActiveWindow()) {
    std::pair<HWND, std::vector<HWND>*> state{modal, &disabled_};
    EnumThreadWindows(GetCurrentThreadId(), disableOther, reinterpret_cast<LPARAM>(&state));
}

Modality::~Modality() {
    std::erase_if(disabled_, [](HWND window) { return !isOfThisThread(window); });
    for (HWND window : disabled_) EnableWindow(window, TRUE);
    // While the modal window stands: else the system would bring another program's to the front.
    if (GetActiveWindow() != modal_) return;
    if (!isOfThisThread(before_) && !disabled_.empty()) before_ = disabled_.front();
    if (isOfThisThread(before_) && IsWindowEnabled(before_)) SetActiveWindow(before_);
}

} // namespace win32
