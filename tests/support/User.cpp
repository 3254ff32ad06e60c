#include "tests/support/User.h"

#include "basic/Text.h"

#include <gtest/gtest.h>

namespace support {

using namespace forms;

/// One key with what it types.
struct Stroke {
    std::int16_t keyCode = 0;
    std::int16_t shift = 0;
    std::int16_t character = 0; ///< 0 for a key that types nothing
    std::string text;           ///< the character as UTF-8, where it is a printable one
};

namespace {

/// The key that types an ASCII character, as Windows numbers them.
std::int16_t codeOf(char c) {
    switch (c) {
    case '.': return 190;
    case ',': return 188;
    case '-': return 189;
    case '/': return 191;
    default:
        if (c >= 'a' && c <= 'z') return static_cast<std::int16_t>(c - 32);
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ') return c;
        return 229; // A key that only the input method knows.
    }
}

Stroke printable(const std::string& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (text.size() == 1) {
        const bool capital = text[0] >= 'A' && text[0] <= 'Z';
        return {codeOf(text[0]), static_cast<std::int16_t>(capital * kShift), byte(0), text};
    }
    // Handlers see the character's code; two bytes of UTF-8 reach as far as any they compare with.
    const int character = text.size() == 2 ? (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F) : 0x7FFF;
    return {229, 0, static_cast<std::int16_t>(character), text};
}

Stroke strokeOf(std::int16_t keyCode, std::int16_t shift) {
    Stroke stroke{keyCode, shift, 0, {}};
    const bool control = (shift & kControl) != 0;
    if (keyCode == kKeyReturn)
        stroke.character = control ? kKeyLineFeed : kKeyReturn;
    else if (keyCode == kKeyEscape || keyCode == kKeyBack)
        stroke.character = keyCode;
    else if (keyCode == kKeySpace)
        return printable(" ");
    else if (control && keyCode >= 'A' && keyCode <= 'Z')
        stroke.character = static_cast<std::int16_t>(keyCode - 64);
    return stroke;
}

/// "\r" is Enter, "\n" Ctrl+Enter, "\t" Tab, "\b" Backspace.
std::vector<Stroke> strokesOf(const std::string& text) {
    std::vector<Stroke> strokes;
    for (int i = 1; i <= basic::len(text); ++i) {
        const std::string c = basic::mid(text, i, 1);
        strokes.push_back(c == "\r"   ? strokeOf(kKeyReturn, 0)
                          : c == "\n" ? strokeOf(kKeyReturn, kControl)
                          : c == "\t" ? strokeOf(kKeyTab, 0)
                          : c == "\b" ? strokeOf(kKeyBack, 0)
                                      : printable(c));
    }
    return strokes;
}

/// The text that stands in the box when `text` takes the selection's place.
std::string afterInsertion(const TextBox& box, const std::string& text) {
    const std::string before = basic::left(box.text(), box.selStart());
    const std::string after = basic::mid(box.text(), box.selStart() + box.selLength() + 1);
    if (box.maxLength() == 0) return before + text + after;
    return before + basic::left(text, std::max(box.maxLength() - basic::len(before + after), 0)) + after;
}

void insert(TextBox& box, const std::string& text) {
    const std::string whole = afterInsertion(box, text);
    const int taken = basic::len(whole) - (basic::len(box.text()) - box.selLength());
    const int caret = box.selStart() + taken;
    if (whole == box.text())
        box.selectionMoved(caret, 0);
    else
        input::edit(box, whole, caret, 0);
}

void moveCaret(TextBox& box, std::int16_t keyCode, std::int16_t shift) {
    const int end = box.selStart() + box.selLength();
    const int all = basic::len(box.text());
    const bool extends = (shift & kShift) != 0;
    if (keyCode == kKeyHome) box.selectionMoved(0, extends ? end : 0);
    if (keyCode == kKeyEnd) box.selectionMoved(extends ? box.selStart() : all, extends ? all : 0);
}

void onTextBox(TextBox& box, const Stroke& stroke, std::int16_t character) {
    if (character == kKeyBack) {
        if (box.selLength() == 0 && box.selStart() > 0) box.selectionMoved(box.selStart() - 1, 1);
        insert(box, "");
    } else if (character == kKeyReturn) {
        if (box.multiLine()) insert(box, "\r\n");
    } else if (character >= kKeySpace && character != 127) {
        // A handler may have put another character in its place.
        const bool same = character == stroke.character || character > 127;
        insert(box, same ? stroke.text : std::string(1, static_cast<char>(character)));
    } else if (character == 0) {
        moveCaret(box, stroke.keyCode, stroke.shift);
    }
}

/// A key on the control that has the focus: KeyDown, KeyPress and what a real window's control makes of it, as far as
/// tests press keys, but not KeyUp.
void press(Form& form, const Stroke& stroke) {
    if (stroke.keyCode == kKeyTab) return input::tab(form, (stroke.shift & kShift) != 0);
    Control* control = form.activeControl();
    if (!control || input::keyDown(*control, stroke.keyCode, stroke.shift) == 0) return;
    std::int16_t character = stroke.character;
    // The character belongs to the control that the key was pressed on, wherever the focus went meanwhile.
    if (character != 0 && (character = input::keyPress(*control, character)) == 0) return;
    if (!form.visible()) return;
    if (auto* box = dynamic_cast<TextBox*>(control)) return onTextBox(*box, stroke, character);
    const bool down = stroke.keyCode == kKeyDown;
    if (auto* combo = dynamic_cast<ComboBox*>(control)) {
        if (combo->style() == ComboBox::Style::editable && character >= kKeySpace)
            input::edit(*combo, combo->text() + stroke.text);
    } else if (auto* list = dynamic_cast<ListView*>(control)) {
        if (down && list->selectedIndex() < list->count()) input::selectItem(*list, list->selectedIndex() + 1);
    } else if (auto* grid = dynamic_cast<Grid*>(control)) {
        if (down && grid->row() + 1 < grid->rows()) input::selectCell(*grid, grid->row() + 1, 0);
    } else if (character == kKeySpace) {
        input::click(*control);
    }
}

/// The control as what it has to be for an act; null, with the test failed, where it is something else.
template <class T> T* as(Control& control, const char* kind) {
    auto* found = dynamic_cast<T*>(&control);
    if (!found) ADD_FAILURE() << control.name() << " is no " << kind;
    return found;
}

/// Whether the mouse may go on with a control: what can have the focus has got it.
bool reaches(Control& control) { return !control.canTakeFocus() || input::focus(control); }

void presses(Control& control, MouseButton button) {
    input::mouseDown(control, {button, 0, 15, 15});
    input::mouseUp(control, {button, 0, 15, 15});
}

} // namespace

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

User& User::does(const std::string& act, std::function<void(Form&)> body) {
    if (ready(act)) desktop_.perform([form = desktop_.topForm(), body = std::move(body)] { body(*form); });
    return *this;
}

User& User::doesTo(const std::string& act, const std::string& name, std::function<void(Control&)> body) {
    // A message box may come before the act ends, so that it outlives this call.
    return does(act, [act, name, body = std::move(body)](Form& form) {
        Control* found = form.find(name);
        if (!found) return failed(act + ": " + form.name() + " has no control " + name);
        if (!found->visible()) return failed(act + ": " + name + " is hidden");
        if (!found->enabled()) return failed(act + ": " + name + " is disabled");
        body(*found);
    });
}

Control* User::find(const std::string& name) const {
    Form* form = desktop_.topForm();
    return form ? form->find(name) : nullptr;
}

User& User::starts(std::function<void()> module) {
    desktop_.start(std::move(module));
    return *this;
}

User& User::happens(std::function<void()> act) {
    return does("happens", [act = std::move(act)](Form&) { act(); });
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

User& User::types(const std::string& text) {
    for (const Stroke& stroke : strokesOf(text)) strikes(stroke);
    return *this;
}

User& User::presses(std::int16_t keyCode, std::int16_t shift) {
    strikes(strokeOf(keyCode, shift));
    return *this;
}

User& User::tabs(bool backwards) {
    return does("tabs", [backwards](Form& form) { input::tab(form, backwards); });
}

User& User::alt(char32_t letter) {
    return does("alt", [letter](Form& form) {
        if (!input::mnemonic(form, letter)) failed("No control answers to this letter");
    });
}

User& User::pastes(const std::string& text) {
    return does("pastes", [text](Form& form) {
        auto* box = dynamic_cast<TextBox*>(form.activeControl());
        if (!box) return failed("The focus is in no text box to paste into");
        if (input::acceptsWhole(*box, afterInsertion(*box, text))) insert(*box, text);
    });
}

User& User::focuses(const std::string& control) {
    return doesTo("focuses", control, [](Control& c) {
        if (!c.canTakeFocus()) return failed(c.name() + " cannot take the focus");
        input::focus(c);
    });
}

User& User::enters(const std::string& box, const std::string& text) {
    focuses(box).doesTo("enters", box, [](Control& c) {
        if (auto* found = as<TextBox>(c, "text box")) found->selectionMoved(0, basic::len(found->text()));
    });
    return types(text.empty() ? "\b" : text);
}

User& User::clicks(const std::string& control) {
    return doesTo("clicks", control, [](Control& c) {
        if (!reaches(c)) return;
        support::presses(c, MouseButton::left);
        input::click(c);
    });
}

User& User::doubleClicks(const std::string& control) {
    return doesTo("doubleClicks", control, [](Control& c) {
        if (reaches(c)) input::doubleClick(c);
    });
}

User& User::rightClicks(const std::string& control) {
    return doesTo("rightClicks", control, [](Control& c) {
        if (reaches(c)) support::presses(c, MouseButton::right);
    });
}

User& User::movesOver(const std::string& control) {
    return doesTo("movesOver", control, [](Control& c) { input::mouseMove(c, {MouseButton::none, 0, 15, 15}); });
}

User& User::picks(const std::string& combo, const std::string& entry) {
    return doesTo("picks", combo, [entry](Control& c) {
        auto* box = as<ComboBox>(c, "combo box");
        if (!box || !input::focus(c)) return;
        for (int i = 0; i < box->listCount(); ++i)
            if (box->entries()[static_cast<std::size_t>(i)].text == entry) return input::choose(*box, i);
        failed(c.name() + " has no entry " + entry);
    });
}

User& User::checks(const std::string& box, bool on) {
    return doesTo("checks", box, [on](Control& c) {
        auto* check = as<CheckBox>(c, "check box");
        if (check && input::focus(c) && (check->value() != 0) != on) input::click(c);
    });
}

User& User::selectsRow(const std::string& control, int row) {
    return doesTo("selectsRow", control, [row](Control& c) {
        if (!input::focus(c)) return;
        if (auto* grid = dynamic_cast<Grid*>(&c)) {
            if (row < grid->fixedRows() || row >= grid->rows()) return failed(c.name() + " has no such row");
            input::selectCell(*grid, row, 0);
        } else if (auto* list = as<ListView>(c, "list")) {
            if (row < 1 || row > list->count()) return failed(c.name() + " has no such line");
            input::selectItem(*list, row);
        }
    });
}

User& User::choosesMenu(const std::string& item) {
    std::optional<std::size_t> chosen;
    const std::vector<MenuItem> items = menu();
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].name == item && items[i].enabled) chosen = i;
    if (!chosen) failed("No menu offers " + item);
    if (!items.empty()) desktop_.choose(chosen);
    return *this;
}

User& User::dismissesMenu() {
    desktop_.choose(std::nullopt);
    return *this;
}

User& User::closesFrame() { return does("closesFrame", input::closeBox); }

User& User::answers(Answer answer) {
    const std::optional<Message> box = message();
    if (!box) failed("No message box is up");
    if (!box) return *this;
    bool offered = answer == Answer::yes || answer == Answer::no;
    if (box->buttons == MessageButtons::ok) offered = answer == Answer::ok;
    if (box->buttons == MessageButtons::yesNoCancel) offered = offered || answer == Answer::cancel;
    if (!offered) failed("The box does not offer this answer: " + box->text);
    desktop_.answer(offered ? answer : ScriptedDesktop::defaultAnswer(*box));
    return *this;
}

User& User::answers(const std::string& text, Answer answer) {
    EXPECT_EQ(message() ? message()->text : "no message box", text);
    return answers(answer);
}

std::optional<Message> User::message() const {
    return desktop_.waiting() == Waiting::message ? std::optional(desktop_.message()) : std::nullopt;
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

std::vector<std::string> User::entries(const std::string& combo) const {
    std::vector<std::string> texts;
    if (const auto* found = control<ComboBox>(combo))
        for (const ComboBox::Entry& entry : found->entries()) texts.push_back(entry.text);
    return texts;
}

std::vector<std::string> User::column(const std::string& name, int index) const {
    std::vector<std::string> cells;
    for (const auto& row : rows(name)) cells.push_back(row.at(static_cast<std::size_t>(index)));
    return cells;
}

Rows rowsOf(const Control& control) {
    Rows rows;
    if (const auto* grid = dynamic_cast<const Grid*>(&control))
        for (int row = grid->fixedRows(); row < grid->rows(); ++row) {
            rows.emplace_back();
            for (int col = 0; col < grid->cols(); ++col) rows.back().emplace_back(grid->cell(row, col));
        }
    if (const auto* list = dynamic_cast<const ListView*>(&control))
        for (int i = 1; i <= list->count(); ++i) {
            rows.push_back({list->item(i).text()});
            for (int column = 1; column < static_cast<int>(list->columns().size()); ++column)
                rows.back().push_back(list->item(i).subItem(column));
        }
    return rows;
}

} // namespace support
