#include "forms/Control.h"

#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"

#include <algorithm>

namespace forms {
namespace {

using automation::Access;
using automation::Arguments;
using automation::Members;
using automation::Value;

std::string textOf(Control& control, const Value& value) {
    return basic::cStr(value, control.form().desktop().locale());
}

/// One of the four numbers of a control's place.
void addBound(Members<Control>& members, const char* name, int Rect::*part) {
    members.property(
        name, [part](Control& c) { return Value(std::int32_t{c.bounds().*part}); },
        [part](Control& c, const Value& v) {
            Rect bounds = c.bounds();
            bounds.*part = basic::cLng(v);
            c.setBounds(bounds);
        });
}

Members<Control> commonMembers() {
    Members<Control> m;
    m.readOnly("Name", [](Control& c) { return Value(c.name()); });
    m.property(
        "Enabled", [](Control& c) { return Value(c.enabled()); },
        [](Control& c, const Value& v) { c.setEnabled(basic::cBool(v)); });
    m.property(
        "Visible", [](Control& c) { return Value(c.visible()); },
        [](Control& c, const Value& v) { c.setVisible(basic::cBool(v)); });
    m.property(
        "Tag", [](Control& c) { return Value(c.tag()); }, [](Control& c, const Value& v) { c.setTag(textOf(c, v)); });
    m.property(
        "ToolTipText", [](Control& c) { return Value(c.toolTip()); },
        [](Control& c, const Value& v) { c.setToolTip(textOf(c, v)); });
    m.property(
        "BackColor", [](Control& c) { return Value(c.backColor()); },
        [](Control& c, const Value& v) { c.setBackColor(basic::cLng(v)); });
    m.property(
        "ForeColor", [](Control& c) { return Value(c.foreColor()); },
        [](Control& c, const Value& v) { c.setForeColor(basic::cLng(v)); });
    m.readOnly("TabIndex", [](Control& c) {
        const auto& all = c.form().controls();
        return Value(static_cast<std::int32_t>(std::find(all.begin(), all.end(), &c) - all.begin()));
    });
    m.method("SetFocus", 0, 0, [](Control& c, Arguments) {
        c.setFocus();
        return Value();
    });
    addBound(m, "Left", &Rect::left);
    addBound(m, "Top", &Rect::top);
    addBound(m, "Width", &Rect::width);
    addBound(m, "Height", &Rect::height);
    return m;
}

Members<Control> captionMembers() {
    Members<Control> m;
    for (const char* name : {"Caption", ""})
        m.property(
            name, [](Control& c) { return Value(c.text()); },
            [](Control& c, const Value& v) { c.setText(textOf(c, v)); });
    return m;
}

const Members<Control>& common() {
    static const Members<Control> members = commonMembers();
    return members;
}

const Members<Control>& caption() {
    static const Members<Control> members = captionMembers();
    return members;
}

bool hasCaption(ControlKind kind) {
    switch (kind) {
    case ControlKind::label:
    case ControlKind::checkBox:
    case ControlKind::optionButton:
    case ControlKind::commandButton:
    case ControlKind::frame: return true;
    default: return false;
    }
}

} // namespace

Control::Control(Form& form, std::string name, ControlKind kind) : form_(form), name_(std::move(name)), kind_(kind) {
    form.add(*this);
}

automation::ObjectPtr Control::self() { return automation::ObjectPtr(form_.shared_from_this(), this); }

void Control::setText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    notify(Aspect::text);
}

void Control::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    notify(Aspect::enabled);
    if (!enabled) form_.releaseFocus(*this);
}

void Control::setVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    notify(Aspect::visible);
    if (!visible) form_.releaseFocus(*this);
}

void Control::setToolTip(std::string toolTip) {
    if (toolTip == toolTip_) return;
    toolTip_ = std::move(toolTip);
    notify(Aspect::toolTip);
}

void Control::setBounds(Rect bounds) {
    for (int Rect::*part : {&Rect::left, &Rect::top, &Rect::width, &Rect::height})
        bounds.*part = withinTwips(bounds.*part);
    if (bounds == bounds_) return;
    bounds_ = bounds;
    notify(Aspect::bounds);
}

void Control::setBackColor(std::int32_t colour) {
    backColor_ = colour;
    notify(Aspect::colours);
}

void Control::setForeColor(std::int32_t colour) {
    foreColor_ = colour;
    notify(Aspect::colours);
}

Control& Control::place(Rect bounds, Anchor anchor) {
    anchor_ = anchor;
    setBounds(bounds);
    return *this;
}

void Control::reset() {
    text_.clear();
    tag_.clear();
    toolTip_.clear();
    readAs_.clear();
    bounds_ = {};
    anchor_ = {};
    enabled_ = true;
    visible_ = true;
    tabStop_ = kind_ != ControlKind::label && kind_ != ControlKind::frame && kind_ != ControlKind::pictureBox;
    backColor_ = kSystemColour;
    foreColor_ = kSystemColour;
}

void Control::setFocus() {
    if (form_.visible() && canTakeFocus()) form_.moveFocus(*this);
}

bool Control::canTakeFocus() const {
    const bool forInput =
        kind_ != ControlKind::label && kind_ != ControlKind::frame && kind_ != ControlKind::pictureBox;
    return forInput && enabled_ && visible_;
}

void Control::fire(const std::function<void()>& handler) {
    if (handler && form_.loaded() && !form_.designing()) form_.desktop().handle(handler);
}

Value Control::invoke(Access access, std::string_view member, Arguments arguments) {
    const bool ofCaption = hasCaption(kind_) && caption().has(member);
    return (ofCaption ? caption() : common()).invoke(*this, access, member, arguments);
}

bool Control::has(std::string_view member) const {
    return common().has(member) || (hasCaption(kind_) && caption().has(member));
}

std::string Control::className() const {
    switch (kind_) {
    case ControlKind::label: return "Label";
    case ControlKind::textBox: return "TextBox";
    case ControlKind::comboBox: return "ComboBox";
    case ControlKind::checkBox: return "CheckBox";
    case ControlKind::optionButton: return "OptionButton";
    case ControlKind::commandButton: return "CommandButton";
    case ControlKind::frame: return "Frame";
    case ControlKind::pictureBox: return "PictureBox";
    case ControlKind::listView: return "ListView";
    case ControlKind::grid: return "Grid";
    }
    return "Control";
}

void Control::notify(Aspect aspect) {
    if (view_) view_->changed(*this, aspect);
}

} // namespace forms
