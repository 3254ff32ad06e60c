// A person at real windows: keys that go through the system's own queue, clicks, and looks at what is shown.
#pragma once

#include "forms/Desktop.h"
#include "forms/Form.h"
#include "tests/windows/Ear.h"

#include <functional>
#include <string>

namespace support {

/// Acts from a thread of its own while the module runs on the test's thread, as a person does.
class Person {
public:
    /// Runs `module` here and `script` beside it. When the script has ended, what is still shown is closed.
    static void sits(forms::Desktop& desktop, const std::function<void()>& module,
                     const std::function<void(Person&)>& script);
    /// The same beside a module in a DLL, whose forms cannot be looked into: the script has keys alone.
    static void sits(const std::function<void()>& module, const std::function<void()>& script);

    /// Runs `body` on the module's thread, between its messages. Fails the test when that thread does not answer.
    void look(const std::function<void()>& body);
    /// Waits until `seen` (looked at on the module's thread) is true; fails the test after ten seconds.
    bool sees(const char* what, const std::function<bool()>& seen);
    /// Waits until the form of this name has the keyboard.
    bool seesForm(const std::string& name);

    /// All keys are queued before the first is handled. "\r" is Enter, "\t" Tab, "\b" Backspace.
    static void types(const std::string& ascii);
    static void presses(int key, int withKey = 0);
    void clicks(forms::Control& control);
    /// Clicks at a point in pixels of the control's window.
    void clicksAt(forms::Control& control, int x, int y);
    /// Presses and lets go the button of the message box on top.
    static void answers(int button);

    /// The window that shows a control, or null.
    static HWND windowOf(const forms::Control& control);
    static std::string shownText(const forms::Control& control);

private:
    Person(forms::Desktop& desktop, const Ear& ear) : desktop_(desktop), ear_(ear) {}

    forms::Desktop& desktop_;
    const Ear& ear_; ///< of the module's thread
};

/// Puts text on the clipboard.
void copyToClipboard(const std::string& text);

} // namespace support
