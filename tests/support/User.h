// A person at the module's screens, in the words of what a person does.
#pragma once

#include "forms/UserInput.h"
#include "tests/support/ScriptedDesktop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace support {

struct Stroke;
using Rows = std::vector<std::vector<std::string>>;
/// A grid's data rows, hidden columns too, or the text and the sub-items of each line of a list.
Rows rowsOf(const forms::Control& control);

/// Each act goes the way of a real key or click through the form that has the screen, and returns, to be gone on with,
/// when the module waits for the next one. What a person could not do (click a disabled button, type while a message
/// box is up) fails the test; an unexpected box is then left by its default answer, so that the test comes to its end.
class User {
public:
    explicit User(ScriptedDesktop& desktop) : desktop_(desktop) {}
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    /// A box that still waits for an answer fails the test. Forms that are left open are closed without a question.
    ~User();

    User& starts(std::function<void()> module);
    /// Something that happens on its own (a timer, a call from outside) while a form waits.
    User& happens(std::function<void()> act);

    User& types(const std::string& text); ///< "\r" is Enter, "\n" Ctrl+Enter, "\t" Tab, "\b" Backspace
    User& presses(std::int16_t keyCode, std::int16_t shift = 0);
    User& tabs(bool backwards = false);
    User& alt(char32_t letter);
    User& pastes(const std::string& text);
    /// Moves the focus by the mouse.
    User& focuses(const std::string& control);
    /// Focuses a box, selects what stands in it and types over it.
    User& enters(const std::string& box, const std::string& text);
    User& clicks(const std::string& control);
    User& doubleClicks(const std::string& control);
    User& rightClicks(const std::string& control);
    User& movesOver(const std::string& control);
    User& picks(const std::string& combo, const std::string& entry);
    User& checks(const std::string& box, bool on = true);
    /// A row of a grid (0 is the first header row) or a line of a list (from 1).
    User& selectsRow(const std::string& control, int row);
    User& choosesMenu(const std::string& item);
    User& dismissesMenu();
    User& closesFrame();
    User& answers(forms::Answer answer);
    /// The box must say exactly `text`.
    User& answers(const std::string& text, forms::Answer answer);

    /// The top form's name; empty when none is shown.
    std::string form() const { return desktop_.topForm() ? desktop_.topForm()->name() : std::string(); }
    std::string caption() const { return desktop_.topForm() ? desktop_.topForm()->caption() : std::string(); }
    bool ended() const { return desktop_.waiting() == Waiting::ended; }
    std::optional<forms::Message> message() const;
    std::vector<forms::MenuItem> menu() const; ///< empty when no menu is up
    std::string focus() const;                 ///< name of the control that has the focus
    std::string text(const std::string& name) const { return of(control(name), &forms::Control::text); }
    bool enabled(const std::string& name) const { return of(control(name), &forms::Control::enabled); }
    bool visible(const std::string& name) const { return of(control(name), &forms::Control::visible); }
    bool checked(const std::string& box) const {
        return of(control<forms::CheckBox>(box), &forms::CheckBox::value) != 0;
    }
    std::vector<std::string> entries(const std::string& combo) const;
    /// Of a grid or a list.
    Rows rows(const std::string& name) const {
        const auto* found = control(name);
        return found ? rowsOf(*found) : Rows();
    }
    std::vector<std::string> column(const std::string& name, int index) const;
    /// A control of the top form; null, with the test failed, when it has none of that name and kind.
    template <class T = forms::Control> T* control(const std::string& name) const {
        auto* found = dynamic_cast<T*>(find(name));
        if (!found) failed("There is no control of this kind: " + name);
        return found;
    }

private:
    static void failed(const std::string& text);
    /// What a control that is there says of itself.
    template <class Result, class T> static std::decay_t<Result> of(const T* control, Result (T::*says)() const) {
        return control ? (control->*says)() : std::decay_t<Result>();
    }
    forms::Control* find(const std::string& name) const;
    /// Whether a form waits; boxes and menus that are in the way are closed first.
    bool ready(const std::string& act);
    void strikes(const Stroke& stroke);
    User& does(const std::string& act, std::function<void(forms::Form&)> body);
    /// An act on a control that the person can reach.
    User& doesTo(const std::string& act, const std::string& name, std::function<void(forms::Control&)> body);

    ScriptedDesktop& desktop_;
};

} // namespace support
