#include "forms/Buttons.h"

#include "basic/Conversion.h"
#include "forms/Form.h"

namespace forms {

using automation::Access;
using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

Members<CheckBox> checkBoxMembers() {
    Members<CheckBox> m;
    for (const char* name : {"Value", ""})
        m.property(
            name, [](CheckBox& c) { return Value(std::int32_t{c.value()}); },
            [](CheckBox& c, const Value& v) { c.setValue(basic::cInt(v)); });
    return m;
}

Members<OptionButton> optionMembers() {
    Members<OptionButton> m;
    for (const char* name : {"Value", ""})
        m.property(
            name, [](OptionButton& c) { return Value(c.value()); },
            [](OptionButton& c, const Value& v) { c.setValue(basic::cBool(v)); });
    return m;
}

const Members<CheckBox>& ofCheckBox() {
    static const Members<CheckBox> members = checkBoxMembers();
    return members;
}

const Members<OptionButton>& ofOption() {
    static const Members<OptionButton> members = optionMembers();
    return members;
}

} // namespace

void Label::reset() { Control::reset(); }

void Frame::reset() { Control::reset(); }

void PictureBox::reset() { Control::reset(); }

void CommandButton::reset() {
    Control::reset();
    cancel_ = false;
}

void CheckBox::setValue(int value) {
    if (value != 0 && value != 1) throw automation::RunTimeError(380, "Invalid property value");
    if (value == value_) return;
    value_ = value;
    notify(Aspect::selection);
    fire(onClick);
}

void CheckBox::reset() {
    Control::reset();
    value_ = 0;
}

Value CheckBox::invoke(Access access, std::string_view member, Arguments arguments) {
    if (ofCheckBox().has(member)) return ofCheckBox().invoke(*this, access, member, arguments);
    return Control::invoke(access, member, arguments);
}

bool CheckBox::has(std::string_view member) const { return ofCheckBox().has(member) || Control::has(member); }

void OptionButton::setValue(bool value) {
    if (value == value_) return;
    value_ = value;
    if (value)
        for (Control* control : form().controls()) {
            auto* other = dynamic_cast<OptionButton*>(control);
            if (!other || other == this || other->group_ != group_ || !other->value_) continue;
            other->value_ = false;
            other->notify(Aspect::selection);
        }
    notify(Aspect::selection);
    if (value) fire(onClick);
}

void OptionButton::reset() {
    Control::reset();
    value_ = false;
}

Value OptionButton::invoke(Access access, std::string_view member, Arguments arguments) {
    if (ofOption().has(member)) return ofOption().invoke(*this, access, member, arguments);
    return Control::invoke(access, member, arguments);
}

bool OptionButton::has(std::string_view member) const { return ofOption().has(member) || Control::has(member); }

} // namespace forms
