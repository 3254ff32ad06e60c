#include "tests/support/Keyboard.h"

#include "basic/Text.h"

#include <algorithm>

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
    case '=':
    case '+': return 187;
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

void erase(TextBox& box, int start, int length) {
    if (length <= 0 || start < 0) return;
    input::edit(box, basic::left(box.text(), start) + basic::mid(box.text(), start + length + 1), start, 0);
}

void moveCaret(TextBox& box, std::int16_t keyCode, std::int16_t shift) {
    const int end = box.selStart() + box.selLength();
    const int all = basic::len(box.text());
    const bool extends = (shift & kShift) != 0;
    switch (keyCode) {
    case kKeyHome: box.selectionMoved(0, extends ? end : 0); break;
    case kKeyEnd: box.selectionMoved(extends ? box.selStart() : all, extends ? all : 0); break;
    case kKeyLeft: box.selectionMoved(std::max(box.selStart() - 1, 0), extends ? box.selLength() + 1 : 0); break;
    case kKeyRight: box.selectionMoved(extends ? box.selStart() : end + 1, extends ? box.selLength() + 1 : 0); break;
    default: break;
    }
}

void onTextBox(TextBox& box, const Stroke& stroke, std::int16_t character) {
    if (stroke.keyCode == kKeyDelete) {
        erase(box, box.selStart(), std::max(box.selLength(), 1));
    } else if (character == kKeyBack) {
        if (box.selLength() > 0)
            erase(box, box.selStart(), box.selLength());
        else
            erase(box, box.selStart() - 1, 1);
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

void onComboBox(ComboBox& combo, const Stroke& stroke, std::int16_t character) {
    if (stroke.keyCode == kKeyDown && combo.listIndex() + 1 < combo.listCount())
        return input::choose(combo, combo.listIndex() + 1);
    if (stroke.keyCode == kKeyUp && combo.listIndex() > 0) return input::choose(combo, combo.listIndex() - 1);
    if (combo.style() == ComboBox::Style::editable) {
        if (character == kKeyBack)
            input::edit(combo, basic::left(combo.text(), std::max(basic::len(combo.text()) - 1, 0)));
        else if (character >= kKeySpace)
            input::edit(combo, combo.text() + stroke.text);
        return;
    }
    if (character < kKeySpace) return;
    // A letter goes on to the next entry that begins with it.
    for (int step = 1; step <= combo.listCount(); ++step) {
        const int index = (combo.listIndex() + step) % combo.listCount();
        if (!basic::startsWithNoCase(combo.entries()[static_cast<std::size_t>(index)].text, stroke.text)) continue;
        input::choose(combo, index);
        return;
    }
}

/// The line that a key moves to, or `current`.
int moved(std::int16_t keyCode, int current, int first, int last) {
    switch (keyCode) {
    case kKeyDown: return std::min(current + 1, last);
    case kKeyUp: return std::max(current - 1, first);
    case kKeyPageDown: return std::min(current + 10, last);
    case kKeyPageUp: return std::max(current - 10, first);
    case kKeyHome: return first;
    case kKeyEnd: return last;
    default: return current;
    }
}

void onOption(OptionButton& option, std::int16_t keyCode) {
    const bool forward = keyCode == kKeyDown || keyCode == kKeyRight;
    if (!forward && keyCode != kKeyUp && keyCode != kKeyLeft) return;
    std::vector<OptionButton*> group;
    for (Control* control : option.form().controls())
        if (auto* other = dynamic_cast<OptionButton*>(control); other && other->group() == option.group())
            group.push_back(other);
    const auto at = static_cast<std::size_t>(std::find(group.begin(), group.end(), &option) - group.begin());
    OptionButton& next = *group[(at + (forward ? 1 : group.size() - 1)) % group.size()];
    if (input::focus(next)) input::click(next);
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
    if (auto* combo = dynamic_cast<ComboBox*>(control)) return onComboBox(*combo, stroke, character);
    if (auto* list = dynamic_cast<ListView*>(control)) {
        const int to = moved(stroke.keyCode, list->selectedIndex(), 1, list->count());
        if (to != list->selectedIndex()) input::selectItem(*list, to);
        return;
    }
    if (auto* grid = dynamic_cast<Grid*>(control)) {
        const int to = moved(stroke.keyCode, grid->row(), grid->fixedRows(), grid->rows() - 1);
        if (to != grid->row()) input::selectCell(*grid, to, 0);
        return;
    }
    if (character == kKeySpace) return input::click(*control);
    if (auto* option = dynamic_cast<OptionButton*>(control)) onOption(*option, stroke.keyCode);
}

std::string afterInsertion(const TextBox& box, const std::string& text) {
    const std::string before = basic::left(box.text(), box.selStart());
    const std::string after = basic::mid(box.text(), box.selStart() + box.selLength() + 1);
    std::string taken = text;
    if (box.maxLength() > 0) {
        const int room = box.maxLength() - basic::len(before) - basic::len(after);
        taken = basic::left(text, std::max(room, 0));
    }
    return before + taken + after;
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
