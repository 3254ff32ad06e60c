#include "tests/support/ScriptedDesktop.h"

#include "automation/RunTimeError.h"
#include "forms/Form.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace support {

void ScriptedDesktop::start(std::function<void()> module) {
    abandon();
    abandoned_ = false;
    waiting_ = Waiting::nothing;
    // The thread may look at thread_ only once it is set: it starts with the first turn.
    thread_ = std::thread([this, module = std::move(module)] {
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return modulesTurn_; });
        }
        try {
            module();
        } catch (const std::exception& error) {
            ADD_FAILURE() << "The module let an error out: " << error.what();
        } catch (...) {
            ADD_FAILURE() << "The module let an unknown error out";
        }
        const std::lock_guard lock(mutex_);
        waiting_ = Waiting::ended;
        modulesTurn_ = false;
        changed_.notify_all();
    });
    handOver({});
}

bool ScriptedDesktop::waitsFor(Waiting what) const {
    if (waiting_ != what) ADD_FAILURE() << "No form, message box or menu waits for this";
    return waiting_ == what;
}

void ScriptedDesktop::perform(std::function<void()> act) {
    if (waitsFor(Waiting::form)) handOver({.act = std::move(act)});
}

void ScriptedDesktop::answer(forms::Answer answer) {
    if (waitsFor(Waiting::message)) handOver({.answer = answer});
}

void ScriptedDesktop::choose(std::optional<std::size_t> item) {
    if (waitsFor(Waiting::menu)) handOver({.item = item});
}

void ScriptedDesktop::abandon() {
    if (!thread_.joinable()) return;
    if (waiting_ != Waiting::ended) {
        {
            const std::lock_guard lock(mutex_);
            abandoned_ = true;
        }
        handOver({});
    }
    thread_.join();
    thread_ = {};
}

forms::Answer ScriptedDesktop::defaultAnswer(const forms::Message& message) {
    if (message.buttons == forms::MessageButtons::ok) return forms::Answer::ok;
    return message.defaultAnswer == forms::Answer::ok ? forms::Answer::yes : message.defaultAnswer;
}

bool ScriptedDesktop::comesUp(const std::string& what) const {
    const bool onModuleThread = std::this_thread::get_id() == thread_.get_id();
    if (!onModuleThread) ADD_FAILURE() << "Outside a running module came up the " << what;
    return onModuleThread;
}

forms::Answer ScriptedDesktop::messageBox(const forms::Message& message) {
    if (!comesUp("message box " + message.text)) return defaultAnswer(message);
    refuse();
    messages.push_back(message);
    message_ = &message;
    const std::optional<Reply> reply = await(Waiting::message);
    message_ = nullptr;
    return reply ? reply->answer : defaultAnswer(message);
}

void ScriptedDesktop::refuse() {
    if (refusals > 0 && refusals--) automation::raise(automation::kInvalidCall);
}

void ScriptedDesktop::setPointer(forms::Pointer wanted) {
    pointer = wanted;
    pointers.push_back(wanted);
}

void ScriptedDesktop::startProgram(const std::string& program, const std::string& arguments, forms::WindowStyle style) {
    if (!missingProgram.empty() && program.find(missingProgram) != std::string::npos)
        automation::raise(automation::kFileNotFound);
    programs.push_back(program + " " + arguments + (style == forms::WindowStyle::maximised ? "" : " (not maximised)"));
}

void ScriptedDesktop::runModal(forms::Form& form, forms::Form*, const std::function<void()>& shown) {
    if (!comesUp("form " + form.name())) return;
    const int showing = form.showing();
    if (showing == 0) return;
    shown();
    while (form.showing() == showing) {
        const std::optional<Reply> reply = await(Waiting::form);
        if (!reply) return;
        if (reply->act) reply->act();
    }
}

std::optional<std::size_t> ScriptedDesktop::chooseFromMenu(forms::Form&, const forms::Menu& menu) {
    if (!comesUp("menu " + menu.name)) return std::nullopt;
    refuse();
    menu_ = &menu;
    const std::optional<Reply> reply = await(Waiting::menu);
    menu_ = nullptr;
    return reply ? reply->item : std::nullopt;
}

std::optional<ScriptedDesktop::Reply> ScriptedDesktop::await(Waiting what) {
    std::unique_lock lock(mutex_);
    if (abandoned_) return std::nullopt;
    waiting_ = what;
    modulesTurn_ = false;
    changed_.notify_all();
    changed_.wait(lock, [this] { return modulesTurn_; });
    if (abandoned_) return std::nullopt;
    return std::exchange(reply_, {});
}

void ScriptedDesktop::handOver(Reply reply) {
    std::unique_lock lock(mutex_);
    reply_ = std::move(reply);
    modulesTurn_ = true;
    changed_.notify_all();
    if (changed_.wait_for(lock, std::chrono::seconds(30), [this] { return !modulesTurn_; })) return;
    // The module's thread cannot be ended from outside, and its stack holds what the test would destroy.
    std::fputs("The module did not come back to the person within 30 seconds\n", stderr);
    std::abort();
}

} // namespace support
