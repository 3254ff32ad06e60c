#include "tests/support/User.h"

#include "basic/Text.h"

#include <gtest/gtest.h>

namespace support {

using namespace forms;

User::~User() {
    if (desktop_.waiting() == Waiting::message) failed("Nobody answered the message box: " + desktop_.message().text);
    desktop_.abandon();
}

void User::failed(const std::string& text) { ADD_FAILURE() << text; }

bool User::ready(const std::string& act) {
    for (int closed = 0; desktop_.waiting() == Waiting::message || desktop_.waiting() == Waiting::menu; ++closed) {
        if (desktop_.waiting() == Waiting::menu) {
            desktop_.choose(std::nullopt); // Acting elsewhere closes a menu.
            continue;
        }
        failed(act + ": a message box is in the way: " + desktop_.message().text);
        if (closed == 50) return false;
        desktop_.answer(ScriptedDesktop::defaultAnswer(desktop_.message()));
    }
    if (desktop_.waiting() == Waiting::form && desktop_.topForm()) return true;
    failed(act + ": no form is shown");
    return false;
}

void User::does(const std::string& act, std::function<void(Form&)> body) {
    if (ready(act)) desktop_.perform([form = desktop_.topForm(), body = std::move(body)] { body(*form); });
}

void User::doesTo(const std::string& act, const std::string& name, std::function<void(Control&)> body) {
    if (!ready(act)) return;
    Control* found = find(name);
    if (!found) return failed(act + ": " + desktop_.topForm()->name() + " has no control " + name);
    if (!found->visible()) return failed(act + ": " + name + " is hidden");
    if (!found->enabled()) return failed(act + ": " + name + " is disabled");
    desktop_.perform([found, body = std::move(body)] { body(*found); });
}

Control* User::find(const std::string& name) const {
    Form* form = desktop_.topForm();
    return form ? form->find(name) : nullptr;
}

void User::starts(std::function<void()> module) { desktop_.start(std::move(module)); }

void User::happens(std::function<void()> act) {
    if (ready("happens")) desktop_.perform(std::move(act));
}

void User::strikes(const Stroke& stroke) {
    if (!ready("key " + std::to_string(stroke.keyCode))) return;
    if (!desktop_.topForm()->activeControl()) return failed("No control has the focus for the key");
    desktop_.perform([form = desktop_.topForm(), stroke] { press(*form, stroke); });
    // The key is let go on whatever has the focus by now; a message box keeps it for itself.
    Form* form = desktop_.topForm();
    if (stroke.keyCode == kKeyTab || desktop_.waiting() != Waiting::form || !form || !form->activeControl()) return;
    desktop_.perform([form, stroke] { input::keyUp(*form->activeControl(), stroke.keyCode, stroke.shift); });
}

void User::types(const std::string& text) {
    for (const Stroke& stroke : strokesOf(text)) strikes(stroke);
}

void User::presses(std::int16_t keyCode, std::int16_t shift) { strikes(strokeOf(keyCode, shift)); }

void User::tabs(bool backwards) {
    does("tabs", [backwards](Form& form) { input::tab(form, backwards); });
}

void User::alt(char32_t letter) {
    does("alt", [letter](Form& form) {
        if (!input::mnemonic(form, letter)) failed("No control answers to this letter");
    });
}

void User::pastes(const std::string& text) {
    does("pastes", [text](Form& form) {
        auto* box = dynamic_cast<TextBox*>(form.activeControl());
        if (!box) return failed("The focus is in no text box to paste into");
        if (input::acceptsWhole(*box, afterInsertion(*box, text))) insert(*box, text);
    });
}

void User::focuses(const std::string& control) {
    doesTo("focuses", control, [](Control& c) {
        if (!c.canTakeFocus())
            failed(c.name() + " cannot take the focus");
        else
            input::focus(c);
    });
}

void User::enters(const std::string& box, const std::string& text) {
    focuses(box);
    doesTo("enters", box, [](Control& c) {
        if (auto* found = dynamic_cast<TextBox*>(&c))
            found->selectionMoved(0, basic::len(found->text()));
        else
            failed(c.name() + " is no text box");
    });
    types(text.empty() ? "\b" : text);
}

void User::clicks(const std::string& control) {
    doesTo("clicks", control, [](Control& c) {
        if (c.canTakeFocus() && !input::focus(c)) return;
        const MouseEvent left{MouseButton::left, 0, 15, 15};
        input::mouseDown(c, left);
        input::mouseUp(c, left);
        input::click(c);
    });
}

void User::doubleClicks(const std::string& control) {
    doesTo("doubleClicks", control, [](Control& c) {
        if (!c.canTakeFocus() || input::focus(c)) input::doubleClick(c);
    });
}

void User::rightClicks(const std::string& control) {
    doesTo("rightClicks", control, [](Control& c) {
        if (c.canTakeFocus() && !input::focus(c)) return;
        const MouseEvent right{MouseButton::right, 0, 15, 15};
        input::mouseDown(c, right);
        input::mouseUp(c, right);
    });
}

void User::movesOver(const std::string& control) {
    doesTo("movesOver", control, [](Control& c) { input::mouseMove(c, {MouseButton::none, 0, 15, 15}); });
}

void User::picks(const std::string& combo, const std::string& entry) {
    doesTo("picks", combo, [entry](Control& c) {
        auto* box = dynamic_cast<ComboBox*>(&c);
        if (!box) return failed(c.name() + " is no combo box");
        if (!input::focus(c)) return;
        for (int i = 0; i < box->listCount(); ++i)
            if (box->entries()[static_cast<std::size_t>(i)].text == entry) return input::choose(*box, i);
        failed(c.name() + " has no entry " + entry);
    });
}

void User::checks(const std::string& box, bool on) {
    doesTo("checks", box, [on](Control& c) {
        auto* check = dynamic_cast<CheckBox*>(&c);
        if (!check) return failed(c.name() + " is no check box");
        if (input::focus(c) && (check->value() != 0) != on) input::click(c);
    });
}

void User::selectsRow(const std::string& control, int row) {
    doesTo("selectsRow", control, [row](Control& c) {
        if (!input::focus(c)) return;
        if (auto* grid = dynamic_cast<Grid*>(&c)) {
            if (row < grid->fixedRows() || row >= grid->rows()) return failed(c.name() + " has no such row");
            input::selectCell(*grid, row, 0);
        } else if (auto* list = dynamic_cast<ListView*>(&c)) {
            if (row < 1 || row > list->count()) return failed(c.name() + " has no such line");
            input::selectItem(*list, row);
        } else {
            failed(c.name() + " has no rows");
        }
    });
}

void User::choosesMenu(const std::string& item) {
    if (desktop_.waiting() != Waiting::menu) return failed("No menu is up to choose " + item);
    const std::vector<MenuItem*>& items = desktop_.menu().items;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i]->name != item) continue;
        if (!items[i]->enabled) failed("The menu's " + item + " is disabled");
        return desktop_.choose(items[i]->enabled ? std::optional(i) : std::nullopt);
    }
    failed("The menu has no " + item);
    desktop_.choose(std::nullopt);
}

void User::dismissesMenu() { desktop_.choose(std::nullopt); }

void User::closesFrame() { does("closesFrame", input::closeBox); }

void User::answers(Answer answer) {
    if (desktop_.waiting() != Waiting::message) return failed("No message box is up");
    const MessageButtons buttons = desktop_.message().buttons;
    bool offered = answer == Answer::yes || answer == Answer::no;
    if (buttons == MessageButtons::ok) offered = answer == Answer::ok;
    if (buttons == MessageButtons::yesNoCancel) offered = offered || answer == Answer::cancel;
    if (!offered) failed("The box does not offer this answer: " + desktop_.message().text);
    desktop_.answer(offered ? answer : ScriptedDesktop::defaultAnswer(desktop_.message()));
}

void User::answers(const std::string& text, Answer answer) {
    if (desktop_.waiting() != Waiting::message) return failed("No message box is up, expected: " + text);
    EXPECT_EQ(desktop_.message().text, text);
    answers(answer);
}

std::string User::form() const { return desktop_.topForm() ? desktop_.topForm()->name() : std::string(); }

std::string User::caption() const { return desktop_.topForm() ? desktop_.topForm()->caption() : std::string(); }

std::optional<Message> User::message() const {
    if (desktop_.waiting() != Waiting::message) return std::nullopt;
    return desktop_.message();
}

std::vector<MenuItem> User::menu() const {
    std::vector<MenuItem> items;
    if (desktop_.waiting() != Waiting::menu) return items;
    for (const MenuItem* item : desktop_.menu().items) items.push_back(*item);
    return items;
}

std::string User::focus() const {
    Form* form = desktop_.topForm();
    return form && form->activeControl() ? form->activeControl()->name() : std::string();
}

std::string User::text(const std::string& name) const {
    const auto* found = control(name);
    return found ? found->text() : std::string();
}

bool User::enabled(const std::string& name) const {
    const auto* found = control(name);
    return found && found->enabled();
}

bool User::visible(const std::string& name) const {
    const auto* found = control(name);
    return found && found->visible();
}

bool User::checked(const std::string& box) const {
    const auto* found = control<CheckBox>(box);
    return found && found->value() != 0;
}

std::vector<std::string> User::entries(const std::string& combo) const {
    std::vector<std::string> texts;
    if (const auto* found = control<ComboBox>(combo))
        for (const ComboBox::Entry& entry : found->entries()) texts.push_back(entry.text);
    return texts;
}

std::vector<std::vector<std::string>> User::grid(const std::string& name) const {
    std::vector<std::vector<std::string>> rows;
    const auto* found = control<Grid>(name);
    for (int row = found ? found->fixedRows() : 0; found && row < found->rows(); ++row) {
        rows.emplace_back();
        for (int col = 0; col < found->cols(); ++col) rows.back().emplace_back(found->cell(row, col));
    }
    return rows;
}

std::vector<std::vector<std::string>> User::list(const std::string& name) const {
    std::vector<std::vector<std::string>> lines;
    const auto* found = control<ListView>(name);
    for (int i = 1; found && i <= found->count(); ++i) {
        lines.push_back({found->item(i).text()});
        for (std::size_t column = 1; column < found->columns().size(); ++column)
            lines.back().push_back(found->item(i).subItem(static_cast<int>(column)));
    }
    return lines;
}

} // namespace support
