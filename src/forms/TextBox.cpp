#include "forms/TextBox.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "forms/Desktop.h"
#include "forms/Form.h"

#include <algorithm>

namespace forms {

using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

Members<TextBox> textBoxMembers() {
    Members<TextBox> m;
    for (const char* name : {"Text", ""})
        m.property(
            name, [](TextBox& c) { return Value(c.text()); },
            [](TextBox& c, const Value& v) { c.setText(basic::cStr(v, c.form().desktop().locale())); });
    m.property(
        "SelStart", [](TextBox& c) { return Value(std::int32_t{c.selStart()}); },
        [](TextBox& c, const Value& v) { c.select(basic::cLng(v), 0); });
    m.property(
        "SelLength", [](TextBox& c) { return Value(std::int32_t{c.selLength()}); },
        [](TextBox& c, const Value& v) { c.select(c.selStart(), basic::cLng(v)); });
    m.readOnly("SelText", [](TextBox& c) { return Value(basic::mid(c.text(), c.selStart() + 1, c.selLength())); });
    m.property(
        "MaxLength", [](TextBox& c) { return Value(std::int32_t{c.maxLength()}); },
        [](TextBox& c, const Value& v) { c.setMaxLength(basic::cLng(v)); });
    m.property(
        "Locked", [](TextBox& c) { return Value(c.locked()); },
        [](TextBox& c, const Value& v) { c.setLocked(basic::cBool(v)); });
    m.readOnly("MultiLine", [](TextBox& c) { return Value(c.multiLine()); });
    return m;
}

} // namespace

const Members<TextBox>& TextBox::members() {
    static const Members<TextBox> table = textBoxMembers();
    return table;
}

void TextBox::setText(std::string text) {
    if (maxLength_ > 0 && basic::len(text) > maxLength_) text = basic::left(text, maxLength_);
    if (text == this->text()) return;
    textStorage() = std::move(text);
    selStart_ = 0;
    selLength_ = 0;
    notify(Aspect::text);
    fire(onChange);
}

void TextBox::select(int start, int length) {
    if (start < 0 || length < 0) automation::raise(automation::kInvalidCall);
    selectionMoved(start, length);
    notify(Aspect::selection);
}

void TextBox::selectAll() { select(0, basic::len(text())); }

void TextBox::setLocked(bool locked) {
    if (locked == locked_) return;
    locked_ = locked;
    notify(Aspect::enabled);
}

void TextBox::setFixedPitch(int percent) {
    if (percent == fixedPitch_) return;
    fixedPitch_ = percent;
    notify(Aspect::font);
}

void TextBox::edited(std::string text, int selStart, int selLength) {
    const bool differs = text != this->text();
    textStorage() = std::move(text);
    selectionMoved(selStart, selLength);
    if (differs) fire(onChange);
}

void TextBox::selectionMoved(int start, int length) {
    const int end = basic::len(text());
    selStart_ = std::clamp(start, 0, end);
    selLength_ = std::clamp(length, 0, end - selStart_);
}

void TextBox::reset() {
    Control::reset();
    selStart_ = 0;
    selLength_ = 0;
    maxLength_ = 0;
    multiLine_ = false;
    locked_ = false;
    rightAligned_ = false;
    fixedPitch_ = 0;
}

} // namespace forms
