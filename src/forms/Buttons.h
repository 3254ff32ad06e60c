// The simple controls: labels, frames, buttons, check boxes and option buttons.
#pragma once

#include "forms/Control.h"

namespace forms {

class Label : public Control {
public:
    Label(Form& form, std::string name) : Control(form, std::move(name), ControlKind::label) { setTabStop(false); }
};

/// A titled border around the controls that lie within its bounds.
class Frame : public Control {
public:
    Frame(Form& form, std::string name) : Control(form, std::move(name), ControlKind::frame) { setTabStop(false); }
};

class PictureBox : public Control {
public:
    PictureBox(Form& form, std::string name) : Control(form, std::move(name), ControlKind::pictureBox) {
        setTabStop(false);
    }
};

class CommandButton : public Control {
public:
    CommandButton(Form& form, std::string name) : Control(form, std::move(name), ControlKind::commandButton) {}

    /// Escape anywhere on the form clicks this button.
    bool isCancel() const { return cancel_; }
    void setCancel(bool cancel) { cancel_ = cancel; }
    void reset() override;

private:
    bool cancel_ = false;
};

/// A box that is on (1) or off (0). Raises Click when its value changes.
class CheckBox : public automation::WithMembers<CheckBox, Control> {
public:
    CheckBox(Form& form, std::string name) : WithMembers(form, std::move(name), ControlKind::checkBox) {}

    int value() const { return value_; }
    void setValue(int value);
    void reset() override;
    static const automation::Members<CheckBox>& members();

private:
    int value_ = 0;
};

/// One of a form's options; choosing it clears the others of its group and raises Click.
class OptionButton : public automation::WithMembers<OptionButton, Control> {
public:
    OptionButton(Form& form, std::string name, int group = 0)
        : WithMembers(form, std::move(name), ControlKind::optionButton), group_(group) {}

    int group() const { return group_; }
    bool value() const { return value_; }
    void setValue(bool value);
    void reset() override;
    static const automation::Members<OptionButton>& members();

private:
    int group_;
    bool value_ = false;
};

} // namespace forms
