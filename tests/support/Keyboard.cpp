#include "tests/support/Keyboard.h"

#include "basic/Text.h"

namespace support {
namespace {

using namespace forms;

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

} // namespace

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

} // namespace support
