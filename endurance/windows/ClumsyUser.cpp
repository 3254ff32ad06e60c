// Someone who hits every key and every spot, and pastes what happens to be on the clipboard.
#include "endurance/Endurance.h"
#include "tests/windows/Session.h"
#include "tests/windows/TopWindow.h"
#include "win32/ControlWindow.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>

namespace endurance {
namespace {

using support::RealUser;

constexpr ULONGLONG kPatience = 20000; ///< milliseconds until the windows count as hanging
constexpr ULONGLONG kAway = 300;       ///< milliseconds without the keyboard until the user clicks into the module

/// Waits until the windows of the ear's thread have taken all input. False when that does not come about.
bool catchesUp(HWND ear) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    for (bool busy = true; busy;) {
        const auto look = [&] { busy = HIWORD(GetQueueStatus(QS_INPUT | QS_POSTMESSAGE)) != 0; };
        if (!support::hears(ear, look, kPatience)) return false;
        if (GetTickCount64() > end) return false;
        if (busy) SwitchToThread();
    }
    return true;
}

struct Front {
    HWND window = nullptr; ///< the module's window that has the keyboard; null where none has
    bool menu = false;
    bool box = false; ///< a message box
};

// clang-format off
/// What is pressed how often out of a hundred: one of the keys, with one of the others held down.
const struct { unsigned often; std::vector<int> keys, with; } kKeys[] = {
    {10, {VK_RETURN}, {0}}, {6, {VK_TAB}, {0, 0, 0, VK_SHIFT}}, {4, {VK_ESCAPE}, {0}},
    {7, {VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_PRIOR, VK_NEXT}, {0}},
    {4, {VK_DELETE, VK_BACK, VK_INSERT, VK_SPACE}, {0}}, {4, {VK_F1, VK_F3, VK_F4, VK_F5, VK_F10, VK_F11, VK_F12}, {0}},
    {7, {'A', 'B', 'C', 'D', 'E', 'F', 'L', 'N', 'O', 'P', 'R', 'S', 'T', VK_F4, VK_SPACE}, {VK_MENU}},
    {3, {VK_RETURN, 'A', 'C', 'D', 'V', 'X', 'Z'}, {VK_CONTROL}}};
const std::vector<std::string> kPasted{
    "12", "-5", "1e9", "99999999999999999999", "two\r\nlines", "'; delete aitem --", std::string(5000, 'p'),
    "\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80", "31/02/2026", "0.0005", ""};
// clang-format on

class Clumsy {
public:
    Clumsy(unsigned seed, DWORD thread, HWND ear, std::vector<std::string> barcodes)
        : random_(seed), thread_(thread), ear_(ear), barcodes_(std::move(barcodes)) {}

    /// One random input. False when the windows hang.
    bool acts() {
        Front at = front();
        for (const ULONGLONG end = GetTickCount64() + kPatience; !at.window; at = front()) {
            if (!catchesUp(ear_) || GetTickCount64() > end) return false;
            Sleep(1);
        }
        const unsigned dice = random_() % 100;
        if (at.menu)
            press(any({VK_DOWN, VK_UP, VK_RETURN, VK_ESCAPE}));
        else if (at.box)
            press(any({VK_RETURN, VK_ESCAPE, VK_TAB, VK_LEFT, 'Y', 'N'}), any({0, VK_MENU}));
        else if (dice < 34)
            RealUser::types(std::string(1, any(std::string("012359.-aEx'% /"))));
        else if (dice < 40)
            RealUser::types(any(barcodes_) + "\r");
        else if (dice < 52)
            click(at.window, dice < 44, dice >= 44 && dice < 46);
        else if (dice < 55)
            support::copyToClipboard(any(kPasted)), press('V', VK_CONTROL);
        else
            pressAny(dice - 55);
        return catchesUp(ear_);
    }

    /// Goes out the way a person would until the register has closed. False when there is no such way.
    bool leaves(const std::atomic<int>& shows) {
        const int before = shows;
        for (int step = 0; shows == before && step < 200; ++step) {
            const Front at = front();
            if (!at.window)
                Sleep(5);
            else if (at.box && random_() % 3 == 0) // by chance, as boxes may lead to one another in a circle
                press('N', VK_MENU);
            else if (at.box && random_() % 2 == 0)
                press(VK_RETURN);
            else if (at.box || at.menu || random_() % 2 == 0)
                press(VK_ESCAPE);
            else
                press(VK_F4, VK_MENU);
            if (!catchesUp(ear_)) return false;
        }
        return shows != before;
    }

    std::string where() { return win32::narrow(win32::windowText(front().window)); }

private:
    Front front() {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        Front found;
        if (!GetGUIThreadInfo(thread_, &info)) return found;
        found.menu = (info.flags & GUI_INMENUMODE) != 0;
        HWND window = info.hwndActive;
        if (!window || GetForegroundWindow() != window) {
            if (GetTickCount64() - present_ > kAway) comesBack();
            return found;
        }
        present_ = GetTickCount64();
        if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return found;
        found.window = window;
        found.box = support::classOf(window) == L"#32770";
        return found;
    }

    /// The viewer of a slip has come in front; nobody would type on behind it. Under Wine, a box that is answered
    /// before it has the keyboard can leave it to the desktop.
    void comesBack() {
        if (HWND viewer = FindWindowW(L"Notepad", nullptr)) PostMessageW(viewer, WM_CLOSE, 0, 0);
        SetForegroundWindow(support::usableWindow(thread_));
    }

    template <class List = std::vector<int>> typename List::value_type any(const List& choices) {
        return choices[random_() % choices.size()];
    }

    static void press(int key, int withKey = 0) { RealUser::presses(key, withKey); }

    void pressAny(unsigned dice) {
        for (const auto& [often, keys, with] : kKeys) {
            if (dice < often) return press(any(keys), any(with));
            dice -= often;
        }
    }

    void click(HWND window, bool right, bool twice) {
        RECT area{};
        GetWindowRect(window, &area);
        SetCursorPos(std::uniform_int_distribution<int>(area.left, area.right)(random_),
                     std::uniform_int_distribution<int>(area.top, area.bottom)(random_));
        INPUT down{}, up{};
        down.type = up.type = INPUT_MOUSE;
        down.mi.dwFlags = right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
        up.mi.dwFlags = right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
        INPUT inputs[] = {down, up, down, up};
        SendInput(twice ? 4 : 2, inputs, sizeof(INPUT));
    }

    std::mt19937 random_;
    DWORD thread_;
    HWND ear_;
    std::vector<std::string> barcodes_;
    ULONGLONG present_ = GetTickCount64(); ///< when a window of the module last had the keyboard
};

} // namespace

void actClumsily(const Options& options, const std::string& dialog, Report& report) {
    const int inputs = options.quick ? 200 : 10000; // twice, with either dialog
    SetEnvironmentVariableA("GOODSREQ_OPEN", dialog.c_str());
    constexpr int kUntilLeaving = 500;
    const std::string file = support::sampleCompany("clumsy.db");
    const automation::ObjectPtr connection = support::openConnection(file);
    const int oldId = 899; // the sample's requests lie below
    HWND const ear = support::makeEar();
    std::atomic<int> shows = 0;
    std::atomic<bool> done = false, over = false, gone = false;
    int acted = 0;
    Clumsy clumsy(options.seed, GetCurrentThreadId(), ear, support::requestableBarcodes(*connection));
    const std::string name = "a clumsy user, " + dialog + ": ";
    const auto reportInputs = [&] {
        report.add({name + "inputs that could not be made", static_cast<double>(inputs - acted), 0,
                    "of " + std::to_string(inputs) + ", " + std::to_string(shows) + " times shown"});
    };
    // The thread of the windows cannot be ended in any other way.
    const auto gives = [&](const char* what) {
        std::printf("%s after %d inputs, at %s\n", what, acted, clumsy.where().c_str());
        reportInputs();
        std::_Exit(1);
    };
    std::thread acting([&] {
        for (; acted < inputs; ++acted) {
            if (!clumsy.acts()) gives("hangs");
            if (acted % kUntilLeaving == kUntilLeaving - 1 && !clumsy.leaves(shows)) gives("no way out");
        }
        done = true;
        while (!over)
            if (!clumsy.leaves(shows) && !over) {
                --acted; // The last one led there.
                gives("no way out at the end");
            }
        gone = true;
    });
    while (!done) {
        // Users with every right, without deleting, and of the other kind of request.
        const int turn = shows % 4;
        const automation::ObjectPtr module =
            support::makeModule(connection, turn == 2 ? 2 : 1, turn == 3 ? 1611 : 1507);
        module->call("Show");
        ++shows;
    }
    over = true;
    for (MSG message; !gone; Sleep(1)) // What the other thread still sends is answered.
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    acting.join();
    reportInputs();
    Cases cases;
    cases.run("the clumsy user's requests", [&] { EXPECT_EQ(brokenRequests(file, oldId), ""); });
    report.add(cases.row(name + "what holds of every request", "company"));
}

} // namespace endurance
