#include "forms/Buttons.h"

#include "basic/Conversion.h"
#include "forms/Form.h"

namespace forms {

using automation::Arguments;
using automation::Members;
using automation::Value;

const Members<CheckBox>& CheckBox::members() {
    static const auto table = [] {
        Members<CheckBox> m;
        for (const char* name : {"Value", ""})
            m.property(
                name, [](CheckBox& c) { return Value(std::int32_t{c.value()}); },
                [](CheckBox& c, const Value& v) { c.setValue(basic::cInt(v)); });
        return m;
    }();
    return table;
}

const Members<OptionButton>& OptionButton::members() {
    static const auto table = [] {
        Members<OptionButton> m;
        for (const char* name : {"Value", ""})
            m.property(
                name, [](OptionButton& c) { return Value(c.value()); },
                [](OptionButton& c, const Value& v) { c.setValue(basic::cBool(v)); });
        return m;
    }();
    return table;
}

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

} // namespace forms
