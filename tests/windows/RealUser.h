// A person at real windows, who acts from a thread of their own while the module runs on the test's thread.
#pragma once

#include "forms/Desktop.h"
#include "forms/Form.h"
#include "win32/Platform.h"

#include <atomic>
#include <functional>
#include <string>

namespace support {

/// A window that nobody sees, of the thread that calls this. Through it other threads have something done there.
HWND makeEar();
/// Runs `body` on the ear's thread, between two messages of it, and waits for its end. False when that does not come
/// about within that many milliseconds.
bool hears(HWND ear, const std::function<void()>& body, UINT patience);
/// Has `body` run after what has been posted to the ear's thread by now. Both must live until then.
void hearsLater(HWND ear, const std::function<void()>& body);

/// Has a DLL's windows logged from now on, as long as none of them has been shown before.
void beginLog();
/// The file of that log.
std::string logFile();

/// What does not come about within ten seconds ends the script by an exception.
class RealUser {
public:
    using Script = std::function<void(RealUser&)>;

    /// Runs `module` here and `script` beside it. When the script has ended, what is still shown is closed; what the
    /// script threw is thrown then. Without a desktop the module is a DLL's, whose forms cannot be looked into: only
    /// their log tells what happens.
    static void sits(const std::function<void()>& module, const Script& script, forms::Desktop* desktop = nullptr);

    // At the forms of this program.

    /// Runs `body` on the module's thread, between its messages.
    void look(const std::function<void()>& body);
    /// Waits until `seen` (looked at on the module's thread) is true.
    void sees(const char* what, const std::function<bool()>& seen);
    /// Waits until the form of this name, or the control, has the keyboard.
    void seesForm(const std::string& name);
    void seesFocus(const forms::Control& control);
    /// Waits until the module has ended by itself.
    void seesTheEnd();
    /// At a point in pixels of the control's window.
    void clicks(forms::Control& control, int x = 8, int y = 8);

    // With keys through the system's own queue, to the window that has the keyboard.

    /// All keys are queued before the first is handled. "\r" is Enter, "\t" Tab, "\b" Backspace.
    static void types(const std::string& ascii);
    static void presses(int key, int withKey = 0);
    /// Presses and lets go the button of the message box on top.
    static void answers(int button);

    // At the windows of a DLL. Keys go to the control itself, as which window of the screen has the keyboard changes
    // some time after one has closed, and at once: what a key starts may last as long as a window stays open. Where
    // `then` is given, the line is awaited.

    /// Waits for the next line `text` of the log. A message box that comes first ends the script too.
    void awaits(const std::string& text);
    /// Waits for the message box with that text, and presses the button of that id.
    void answers(const std::string& text, int button);
    void sendsKey(int key, const std::string& then = "");
    void sendsText(const std::string& ascii, const std::string& then = ""); ///< "\r" is Enter, "\n" Ctrl+Enter
    void sendsAlt(char letter, const std::string& then = "");
    /// The window that has the keyboard.
    HWND window() const { return GetAncestor(focus(), GA_ROOT); }

private:
    explicit RealUser(forms::Desktop* desktop) : desktop_(desktop) {}

    void closes();
    HWND focus() const;

    forms::Desktop* desktop_;
    const DWORD thread_ = GetCurrentThreadId(); ///< the module's
    const HWND ear_ = makeEar();
    std::atomic<bool> ended_ = false;
    std::streamoff seen_ = 0; ///< of the log
};

/// The window that shows a control, or null.
HWND windowOf(const forms::Control& control);
std::string shownText(const forms::Control& control);

/// Puts text on the clipboard.
void copyToClipboard(const std::string& text);

} // namespace support
