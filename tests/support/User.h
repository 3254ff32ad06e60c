// A person at the module's screens, in the words of what a person does.
#pragma once

#include "forms/UserInput.h"
#include "tests/support/Keyboard.h"
#include "tests/support/ScriptedDesktop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace support {

/// Each act goes the way of a real key or click through the form that has the screen, and returns when the module waits
/// for the next one. What a person could not do (click a disabled button, type while a message box is up) fails the
/// test; an unexpected box is then left by its default answer, so that the test comes to its end.
class User {
public:
    explicit User(ScriptedDesktop& desktop) : desktop_(desktop) {}
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    /// A box that still waits for an answer fails the test. Forms that are left open are closed without a question.
    ~User();

    void starts(std::function<void()> module);
    /// Something that happens on its own (a timer, a call from outside) while a form waits.
    void happens(std::function<void()> act);

    void types(const std::string& text); ///< "\r" is Enter, "\n" Ctrl+Enter, "\t" Tab, "\b" Backspace
    void presses(std::int16_t keyCode, std::int16_t shift = 0);
    void tabs(bool backwards = false);
    void alt(char32_t letter);
    void pastes(const std::string& text);
    /// Moves the focus by the mouse.
    void focuses(const std::string& control);
    /// Focuses a box, selects what stands in it and types over it.
    void enters(const std::string& box, const std::string& text);
    void clicks(const std::string& control);
    void doubleClicks(const std::string& control);
    void rightClicks(const std::string& control);
    void movesOver(const std::string& control);
    void picks(const std::string& combo, const std::string& entry);
    void checks(const std::string& box, bool on = true);
    /// A row of a grid (0 is the first header row) or a line of a list (from 1).
    void selectsRow(const std::string& control, int row);
    void choosesMenu(const std::string& item);
    void dismissesMenu();
    void closesFrame();
    void answers(forms::Answer answer);
    /// The box must say exactly `text`.
    void answers(const std::string& text, forms::Answer answer);

    std::string form() const; ///< the top form's name; empty when none is shown
    std::string caption() const;
    bool ended() const { return desktop_.waiting() == Waiting::ended; }
    std::optional<forms::Message> message() const;
    std::vector<forms::MenuItem> menu() const; ///< empty when no menu is up
    std::string focus() const;                 ///< name of the control that has the focus
    std::string text(const std::string& control) const;
    bool enabled(const std::string& control) const;
    bool visible(const std::string& control) const;
    bool checked(const std::string& box) const;
    std::vector<std::string> entries(const std::string& combo) const;
    /// The data rows, hidden columns too.
    std::vector<std::vector<std::string>> grid(const std::string& control) const;
    /// Each line's text and sub-items.
    std::vector<std::vector<std::string>> list(const std::string& control) const;
    /// A control of the top form; null, with the test failed, when it has none of that name and kind.
    template <class T = forms::Control> T* control(const std::string& name) const {
        auto* found = dynamic_cast<T*>(find(name));
        if (!found) failed("There is no control of this kind: " + name);
        return found;
    }

private:
    static void failed(const std::string& text);
    forms::Control* find(const std::string& name) const;
    /// Whether a form waits; boxes and menus that are in the way are closed first.
    bool ready(const std::string& act);
    void strikes(const Stroke& stroke);
    void does(const std::string& act, std::function<void(forms::Form&)> body);
    /// An act on a control that the person can reach.
    void doesTo(const std::string& act, const std::string& name, std::function<void(forms::Control&)> body);

    ScriptedDesktop& desktop_;
};

} // namespace support
