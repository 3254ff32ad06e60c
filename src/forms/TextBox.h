// A box for one text.
#pragma once

#include "forms/Control.h"

namespace forms {

class TextBox : public automation::WithMembers<TextBox, Control> {
public:
    TextBox(Form& form, std::string name) : WithMembers(form, std::move(name), ControlKind::textBox) {}

    /// Raises Change when the text differs; the caret goes to the start.
    void setText(std::string text) override;

    /// In characters, from 0.
    int selStart() const { return selStart_; }
    int selLength() const { return selLength_; }
    void select(int start, int length);
    void selectAll();

    int maxLength() const { return maxLength_; } ///< characters; 0 for no limit
    void setMaxLength(int characters) { maxLength_ = characters; }
    bool multiLine() const { return multiLine_; }
    void setMultiLine(bool multiLine) { multiLine_ = multiLine; }
    bool locked() const { return locked_; }
    void setLocked(bool locked);
    /// Percent of the usual size at which the text stands in letters of one width, as in a preview; 0 for the form's
    /// own font.
    int fixedPitch() const { return fixedPitch_; }
    void setFixedPitch(int percent);
    bool rightAligned() const { return rightAligned_; }
    void setRightAligned(bool right) { rightAligned_ = right; }

    /// Decides on text that arrives as a whole (pasted, dropped): the text that would stand in the box afterwards.
    /// Nothing is taken when it answers false.
    std::function<bool(const std::string& whole)> acceptsWhole;
    /// The decimal key of the keypad makes "." here, whatever character the keyboard has on it.
    bool keypadPoint = false;

    /// What the person's editing made of the text: stores it with the caret and raises Change. Called on the way of a
    /// key.
    void edited(std::string text, int selStart, int selLength);
    /// The selection as the view has it; raises nothing.
    void selectionMoved(int start, int length);

    void reset() override;
    static const automation::Members<TextBox>& members();

private:
    int selStart_ = 0;
    int selLength_ = 0;
    int maxLength_ = 0;
    bool multiLine_ = false;
    bool locked_ = false;
    bool rightAligned_ = false;
    int fixedPitch_ = 0;
};

} // namespace forms
