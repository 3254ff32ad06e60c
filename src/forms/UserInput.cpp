#include "forms/UserInput.h"

#include "forms/Desktop.h"

#include <algorithm>
#include <optional>

namespace forms::input {
namespace {

/// Whether the form is still in the showing in which the person began.
class Showing {
public:
    explicit Showing(Form& form) : form_(form), began_(form.showing()) {}
    bool lasts() const { return began_ != 0 && form_.showing() == began_; }

private:
    Form& form_;
    int began_;
};

bool responds(const Control& control) { return control.form().visible() && control.enabled() && control.visible(); }

CommandButton* cancelButton(Form& form) {
    for (Control* control : form.controls()) {
        auto* button = dynamic_cast<CommandButton*>(control);
        if (button && button->isCancel() && responds(*button)) return button;
    }
    return nullptr;
}

/// Code points below 128 and the letters of Latin-1 without case; mnemonics use no others.
char32_t withoutCase(char32_t c) {
    const bool upper = (c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    return upper ? c + 32 : c;
}

/// The code point at `at`, or none where the text ends or is no UTF-8.
std::optional<char32_t> codePointAt(const std::string& text, std::size_t at) {
    if (at >= text.size()) return std::nullopt;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(i < text.size() ? text[i] : 0); };
    const char32_t first = byte(at);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    if (more == 0) return std::nullopt;
    char32_t value = first & (0x3Fu >> more);
    for (int i = 1; i <= more; ++i) value = value << 6 | (byte(at + static_cast<std::size_t>(i)) & 0x3Fu);
    return value;
}

std::optional<char32_t> markedLetter(const std::string& caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return codePointAt(caption, i + 1);
        ++i; // "&&" shows the sign itself.
    }
    return std::nullopt;
}

bool showsCaption(const Control& control) {
    switch (control.kind()) {
    case ControlKind::label:
    case ControlKind::frame:
    case ControlKind::commandButton:
    case ControlKind::checkBox:
    case ControlKind::optionButton: return true;
    default: return false;
    }
}

/// Where the focus goes for a marked control: to itself, or from a label or frame to the control that follows.
Control* mnemonicTarget(const std::vector<Control*>& controls, std::size_t at) {
    const ControlKind kind = controls[at]->kind();
    if (kind != ControlKind::label && kind != ControlKind::frame) return controls[at];
    for (std::size_t next = at + 1; next < controls.size(); ++next)
        if (controls[next]->canTakeFocus() && controls[next]->tabStop()) return controls[next];
    return nullptr;
}

} // namespace

std::int16_t keyDown(Control& control, std::int16_t keyCode, std::int16_t shift) {
    Form& form = control.form();
    const Showing showing(form);
    if (!showing.lasts()) return 0;
    if (form.onKeyDown) form.desktop().handle([&] { form.onKeyDown(keyCode, shift); });
    if (keyCode == 0 || !showing.lasts()) return 0;
    if (control.onKeyDown && responds(control)) form.desktop().handle([&] { control.onKeyDown(keyCode, shift); });
    if (keyCode == 0 || !showing.lasts()) return 0;
    if (keyCode == kKeyEscape)
        if (CommandButton* button = cancelButton(form)) {
            click(*button);
            return 0;
        }
    return keyCode;
}

std::int16_t keyPress(Control& control, std::int16_t character) {
    Form& form = control.form();
    const Showing showing(form);
    if (!showing.lasts()) return 0;
    if (form.onKeyPress) form.desktop().handle([&] { form.onKeyPress(character); });
    if (character == 0 || !showing.lasts()) return 0;
    if (control.onKeyPress && responds(control)) form.desktop().handle([&] { control.onKeyPress(character); });
    if (character == 0 || !showing.lasts()) return 0;
    if (character == kKeyReturn && control.kind() == ControlKind::commandButton) {
        click(control);
        return 0;
    }
    return character;
}

void keyUp(Control& control, std::int16_t keyCode, std::int16_t shift) {
    if (control.onKeyUp && responds(control)) control.form().desktop().handle([&] { control.onKeyUp(keyCode, shift); });
}

void edit(TextBox& box, std::string text, int selStart, int selLength) {
    if (!responds(box) || box.locked()) return;
    if (text == box.text()) return;
    box.edited(std::move(text), selStart, selLength);
}

void edit(ComboBox& box, std::string text) {
    if (responds(box) && box.style() == ComboBox::Style::editable) box.edited(std::move(text));
}

bool acceptsWhole(TextBox& box, const std::string& whole) {
    if (!responds(box) || box.locked()) return false;
    if (!box.acceptsWhole) return true;
    bool accepted = false;
    box.form().desktop().handle([&] { accepted = box.acceptsWhole(whole); });
    return accepted;
}

bool focus(Control& control) {
    Form& form = control.form();
    form.moveFocus(control);
    return form.visible() && form.activeControl() == &control;
}

void tab(Form& form, bool backwards) {
    if (form.visible()) form.tab(backwards);
}

bool mnemonic(Form& form, char32_t letter) {
    if (!form.visible()) return false;
    const std::vector<Control*>& controls = form.controls();
    // Several controls with one letter take turns, from the one that has the focus on.
    const auto active = std::find(controls.begin(), controls.end(), form.activeControl());
    const std::size_t start = active == controls.end() ? 0 : static_cast<std::size_t>(active - controls.begin()) + 1;
    for (std::size_t step = 0; step < controls.size(); ++step) {
        const std::size_t at = (start + step) % controls.size();
        Control& marked = *controls[at];
        if (!showsCaption(marked) || !responds(marked)) continue;
        const std::optional<char32_t> mark = markedLetter(marked.text());
        if (!mark || withoutCase(*mark) != withoutCase(letter)) continue;
        Control* target = mnemonicTarget(controls, at);
        if (!target) continue;
        if (focus(*target) && target == &marked) click(*target);
        return true;
    }
    return false;
}

void click(Control& control) {
    if (!responds(control)) return;
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        box->setValue(1 - box->value());
    else if (auto* option = dynamic_cast<OptionButton*>(&control); option && !option->value())
        option->setValue(true);
    else
        control.fire(control.onClick);
}

void choose(ComboBox& box, int index) {
    if (!responds(box) || index < -1 || index >= box.listCount()) return;
    if (index >= 0 && index == box.listIndex())
        box.fire(box.onClick);
    else
        box.setListIndex(index);
}

void doubleClick(Control& control) {
    if (responds(control)) control.fire(control.onDblClick);
}

void selectItem(ListView& list, int index) {
    if (!responds(list) || index < 1 || index > list.count()) return;
    const std::shared_ptr<ListItem> item = list.itemPtr(index);
    list.select(index);
    list.fire([&] {
        if (list.onItemClick) list.onItemClick(*item);
    });
}

void selectCell(Grid& grid, int row, int col) {
    if (!responds(grid) || row < grid.fixedRows() || row >= grid.rows() || col < 0 || col >= grid.cols()) return;
    grid.selectRow(row);
}

void mouseDown(Control& control, const MouseEvent& event) {
    if (responds(control))
        control.fire([&] {
            if (control.onMouseDown) control.onMouseDown(event);
        });
}

void mouseMove(Control& control, const MouseEvent& event) {
    if (responds(control))
        control.fire([&] {
            if (control.onMouseMove) control.onMouseMove(event);
        });
}

void mouseUp(Control& control, const MouseEvent& event) {
    if (responds(control))
        control.fire([&] {
            if (control.onMouseUp) control.onMouseUp(event);
        });
}

void closeBox(Form& form) {
    if (form.visible()) form.unload(CloseReason::frame);
}

bool holdsWork(Form& form) {
    bool holds = false;
    if (form.visible()) form.desktop().handle([&] { holds = form.holdsWork(); });
    return holds;
}

} // namespace forms::input
