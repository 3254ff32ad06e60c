// What a form needs of the world: modal showing, message boxes, menus, keystrokes, programs, time and locale.
#pragma once

#include "automation/Value.h"
#include "basic/Locale.h"
#include "forms/Events.h"
#include "forms/Menu.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace forms {

class Form;

class Desktop {
public:
    virtual ~Desktop() = default;

    virtual Answer messageBox(const Message& message) = 0;
    virtual void setPointer(Pointer pointer) = 0;
    /// Starts the program of this full path without waiting for it. Error 53 when it is not found.
    virtual void startProgram(const std::string& program, const std::string& arguments, WindowStyle style) = 0;
    virtual automation::Date now() = 0;
    virtual const basic::Locale& locale() = 0;

    /// Shows the menu at the pointer and runs the command chosen.
    void popupMenu(Form& form, const Menu& menu);
    /// Queues keystrokes for the window that is active when the running handler has returned: "{TAB}" (any case) moves
    /// the focus on, "{Home}+{End}" selects a box's whole text. They act before any key that is typed later.
    void sendKeys(std::string_view keys);

    /// Runs one event handler. Nothing escapes from it: what its own traps let through is shown in a message box.
    void handle(const std::function<void()>& handler);

    /// The form that has the screen now, or null.
    Form* topForm() const { return levels_.empty() ? nullptr : levels_.back().form; }

protected:
    friend class Form;
    /// Shows `form`'s window (owned by `owner`'s) and serves the person until `form.showing()` changes. `shown` runs
    /// once the window stands and before the first input.
    virtual void runModal(Form& form, Form* owner, const std::function<void()>& shown) = 0;
    /// The person's choice, or none.
    virtual std::optional<std::size_t> chooseFromMenu(Form& form, const Menu& menu) = 0;

private:
    struct Level {
        Form* form = nullptr;
        int depth = 0;
        std::vector<std::string> keys;
    };
    void show(Form& form, Form* owner);
    void playKeys();

    std::vector<Level> levels_;
    Level ground_; ///< handlers that run while no form is shown
};

/// Shows the hourglass until its end.
class HourGlass {
public:
    explicit HourGlass(Desktop& desktop) : desktop_(desktop) { desktop_.setPointer(Pointer::hourglass); }
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;
    ~HourGlass() { desktop_.setPointer(Pointer::normal); }

private:
    Desktop& desktop_;
};

} // namespace forms
