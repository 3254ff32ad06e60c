// A Desktop without windows: wherever the module needs a person, it waits for a script.
#pragma once

#include "forms/Desktop.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace support {

/// What the module waits for.
enum class Waiting {
    nothing, ///< it was not started
    form,    ///< the person's next act on the top form
    message, ///< an answer to a message box
    menu,    ///< a choice from a popup menu
    ended,   ///< nothing more: it has returned
};

/// The module runs on a thread of its own, the script on the test's. Only one of them runs at a time, so the script may
/// read forms and controls directly while the module waits. A hand-over that takes longer than 30 seconds ends the test
/// program.
class ScriptedDesktop : public forms::Desktop {
public:
    ScriptedDesktop() = default;
    ~ScriptedDesktop() override { abandon(); }

    /// Runs `module` until it waits or has ended. One that ran before is abandoned.
    void start(std::function<void()> module);
    Waiting waiting() const { return waiting_; }
    /// Runs `act` on the module's thread until it waits again; only while it waits for an act on a form.
    void perform(std::function<void()> act);
    /// The box that waits for an answer.
    const forms::Message& message() const { return *message_; }
    void answer(forms::Answer answer);
    /// The menu that waits for a choice.
    const forms::Menu& menu() const { return *menu_; }
    void choose(std::optional<std::size_t> item);
    /// Closes every box and form without a question and waits for the module's end.
    void abandon();
    /// How a box is left that nobody answers.
    static forms::Answer defaultAnswer(const forms::Message& message);

    automation::Date time{45382.4375}; ///< 2024-03-31 10:30
    basic::Locale userLocale;
    forms::Pointer pointer = forms::Pointer::normal;
    std::vector<forms::Pointer> pointers; ///< each one set, in order
    std::vector<std::string> programs;    ///< each that was started, with its arguments, in order
    std::string missingProgram;           ///< what a command line holds that cannot be started
    int refusals = 0;                     ///< so many of the next boxes and menus cannot be shown
    std::vector<forms::Message> messages; ///< each box shown, in order

    forms::Answer messageBox(const forms::Message& message) override;
    void setPointer(forms::Pointer pointer) override;
    void startProgram(const std::string& program, const std::string& arguments, forms::WindowStyle style) override;
    automation::Date now() override { return time; }
    const basic::Locale& locale() override { return userLocale; }

protected:
    void runModal(forms::Form& form, forms::Form* owner, const std::function<void()>& shown) override;
    std::optional<std::size_t> chooseFromMenu(forms::Form& form, const forms::Menu& menu) override;

private:
    struct Reply {
        std::function<void()> act{};
        forms::Answer answer = forms::Answer::ok;
        std::optional<std::size_t> item{};
    };
    void refuse();
    /// On the module's thread: gives the turn to the script. None once the desktop is abandoned.
    std::optional<Reply> await(Waiting what);
    /// On the test's thread: gives the turn to the module and waits until it comes back.
    void handOver(Reply reply);
    /// Whether the script may do this now; otherwise the test fails.
    bool waitsFor(Waiting what) const;
    /// Whether the module itself shows this; otherwise the test fails.
    bool comesUp(const std::string& what) const;

    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool modulesTurn_ = false;
    bool abandoned_ = false;
    Waiting waiting_ = Waiting::nothing;
    Reply reply_;
    const forms::Message* message_ = nullptr;
    const forms::Menu* menu_ = nullptr;
};

} // namespace support
