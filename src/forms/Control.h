// What every control has: name, state, place, events, and the members by which components reach it.
#pragma once

#include "automation/Members.h"
#include "forms/Events.h"
#include "forms/Geometry.h"

#include <functional>
#include <string>

namespace forms {

class Control;
class Form;

enum class ControlKind {
    label,
    textBox,
    comboBox,
    checkBox,
    optionButton,
    commandButton,
    frame,
    pictureBox,
    listView,
    grid
};

/// What of a control's model has changed.
enum class Aspect { text, enabled, visible, bounds, items, selection, columns, toolTip, colours, font, focus };

/// What shows a control; it is told of each change of the model and draws what the model says.
class ControlView {
public:
    virtual ~ControlView() = default;
    virtual void changed(Control& control, Aspect aspect) = 0;
};

/// The colour of the system where a control has none of its own.
inline constexpr std::int32_t kSystemColour = -1;

class Control : public automation::Object {
public:
    /// Joins `form`'s controls; the order of joining is the tab order.
    Control(Form& form, std::string name, ControlKind kind);

    Form& form() const { return form_; }
    const std::string& name() const { return name_; }
    ControlKind kind() const { return kind_; }
    /// This control as an object to hand to a component; it keeps the form alive.
    automation::ObjectPtr self();

    /// Caption, or the text of a box.
    virtual const std::string& text() const { return text_; }
    virtual void setText(std::string text);
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    bool visible() const { return visible_; }
    void setVisible(bool visible);
    const std::string& tag() const { return tag_; }
    void setTag(std::string tag) { tag_ = std::move(tag); }
    const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string toolTip);
    /// What a screen reader calls a control that has neither a caption nor a label before it.
    const std::string& readAs() const { return readAs_; }
    void setReadAs(std::string name) { readAs_ = std::move(name); }
    const Rect& bounds() const { return bounds_; }
    void setBounds(Rect bounds);
    const Anchor& anchor() const { return anchor_; }
    bool tabStop() const { return tabStop_; }
    void setTabStop(bool tabStop) { tabStop_ = tabStop; }
    std::int32_t backColor() const { return backColor_; }
    void setBackColor(std::int32_t colour);
    std::int32_t foreColor() const { return foreColor_; }
    void setForeColor(std::int32_t colour);

    /// Design-time place; anchored edges follow the form. Returns the control for further description.
    Control& place(Rect bounds, Anchor anchor = {});
    /// Back to the design-time state, before the form describes its design again.
    virtual void reset();
    /// Gives the focus to this control where it can take it; nothing happens on a disabled or hidden one.
    void setFocus();
    /// Whether it is a control for input, enabled and visible.
    bool canTakeFocus() const;
    /// Runs one of its handlers under the desktop's protection; nothing while the form is not loaded or describes its
    /// design.
    void fire(const std::function<void()>& handler);

    void attach(ControlView* view) { view_ = view; }
    ControlView* view() const { return view_; }

    std::function<void()> onClick, onDblClick, onChange, onGotFocus, onLostFocus, onValidate;
    std::function<void(std::int16_t&keyCode, std::int16_t shift)> onKeyDown, onKeyUp;
    std::function<void(std::int16_t& character)> onKeyPress; ///< setting the character to 0 swallows the key
    std::function<void(const MouseEvent&)> onMouseDown, onMouseMove, onMouseUp;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;
    std::string className() const override;

protected:
    void notify(Aspect aspect);
    /// Sets the text without telling of it.
    std::string& textStorage() { return text_; }

private:
    Form& form_;
    std::string name_;
    ControlKind kind_;
    std::string text_;
    std::string tag_;
    std::string toolTip_;
    std::string readAs_;
    Rect bounds_;
    Anchor anchor_;
    bool enabled_ = true;
    bool visible_ = true;
    bool tabStop_ = true;
    std::int32_t backColor_ = kSystemColour;
    std::int32_t foreColor_ = kSystemColour;
    ControlView* view_ = nullptr;
};

} // namespace forms
