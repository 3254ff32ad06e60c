// A form: its controls, its life (load, show, activate, unload) and its focus.
#pragma once

#include "forms/Control.h"

#include <memory>
#include <vector>

namespace forms {

class Desktop;

/// What shows a form; told when the form changes or is gone.
class FormView {
public:
    virtual ~FormView() = default;
    virtual void captionChanged() = 0;
    virtual void sizeChanged() = 0;
    virtual void coloursChanged() = 0;
    /// `control` has the focus in the model now.
    virtual void focusChanged(Control& control) = 0;
    /// The form is unloaded: its window is to vanish at once; it may be destroyed later.
    virtual void formUnloaded() = 0;
};

class Form : public automation::Object, public std::enable_shared_from_this<Form> {
public:
    Form(Desktop& desktop, std::string name);

    const std::string& name() const { return name_; }
    Desktop& desktop() const { return desktop_; }

    /// Loads the form when it is not loaded: what touching one of its controls does.
    void ensureLoaded();
    bool loaded() const { return loaded_; }
    bool loading() const { return loading_ > 0; }
    /// Drops what an earlier command or a component left loaded without showing it. Does nothing while the form is
    /// shown or loads.
    void discard();
    /// Loads where needed, shows the form and returns when it is unloaded or hidden; then the form below activates.
    void showModal(Form* owner);
    /// The same with a form that is loaded afresh.
    void showAfresh(Form* owner);
    bool visible() const { return visible_; }
    /// Counts the showings; a modal loop ends when it is no longer its own.
    int showing() const { return visible_ ? showing_ : 0; }
    /// Asks queryUnload; unless that refuses, the form is gone logically at once. Returns whether it is gone.
    bool unload(CloseReason reason = CloseReason::code);

    const std::string& caption() const { return caption_; }
    void setCaption(std::string caption);
    /// Twips, of the inside.
    int width() const { return width_; }
    int height() const { return height_; }
    void setSize(int width, int height);
    const std::string& tag() const { return tag_; }
    void setTag(std::string tag) { tag_ = std::move(tag); }
    bool resizable() const { return resizable_; }
    void setResizable(bool resizable) { resizable_ = resizable; }
    /// The person dragged the frame: the anchored controls follow.
    void resized(int width, int height);
    std::int32_t backColor() const { return backColor_; }
    void setBackColor(std::int32_t colour);

    const std::vector<Control*>& controls() const { return controls_; }
    Control* find(std::string_view name) const;
    void add(Control& control) { controls_.push_back(&control); }

    Control* activeControl() const { return active_; }
    /// Validate and LostFocus of the old control, GotFocus of the new one.
    void moveFocus(Control& to);
    /// While the old control has its Validate and LostFocus: where the person moves the focus to.
    Control* headedFor() const { return headedFor_; }
    /// On to the next stop in tab order, or back.
    void tab(bool backwards = false);
    /// Passes the focus on when `control` has it and can keep it no longer: LostFocus, then GotFocus of the next stop.
    void releaseFocus(Control& control);
    /// The stop that Tab reaches from `from` (null: the first), or null when there is none.
    Control* tabStop(const Control* from, bool backwards) const;

    /// Whether something was entered that would be lost if the program ended now; asks nobody.
    virtual bool holdsWork() { return false; }

    void attach(FormView* view) { view_ = view; }
    FormView* view() const { return view_; }

    /// While the design is described nothing is an event.
    bool designing() const { return designing_; }

    /// Form-level keys come before the control's own.
    std::function<void(std::int16_t& keyCode, std::int16_t shift)> onKeyDown;
    std::function<void(std::int16_t& character)> onKeyPress;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;
    std::string className() const override { return name_; }
    automation::Array elements() override;

protected:
    /// Describes layout and design-time properties; called before the first load and after each unload.
    virtual void design() = 0;
    virtual void onLoad() {}
    virtual void onActivate() {}
    /// May refuse by setting `cancel`.
    virtual void onQueryUnload(bool& cancel, CloseReason) { (void)cancel; }
    virtual void onUnload() {}

private:
    friend class Desktop;
    void activate();
    void resetDesign();
    /// A form that is not loaded answers as it is designed.
    void ensureDesigned();
    /// Gone without a question: no longer loaded or shown, without views, back at its design.
    void drop();
    void arriveAt(Control* control);

    Desktop& desktop_;
    std::string name_;
    std::string caption_;
    std::string tag_;
    std::vector<Control*> controls_;
    Control* active_ = nullptr;
    Control* headedFor_ = nullptr;
    FormView* view_ = nullptr;
    int width_ = 6000;
    int height_ = 4000;
    std::int32_t backColor_ = kSystemColour;
    bool resizable_ = false;
    bool designed_ = false;
    bool designing_ = false;
    bool unloading_ = false;
    bool loaded_ = false;
    int loading_ = 0; ///< loads within one another: a form may leave and come again while it loads
    bool visible_ = false;
    int showing_ = 0;
};

/// Loads `form` where needed and gives it: how one form reaches another's controls.
template <class F> F& touch(F& form) {
    form.ensureLoaded();
    return form;
}

/// The same with a form that is loaded afresh, so that nothing of an earlier command stands in it.
template <class F> F& touchAfresh(F& form) {
    form.discard();
    return touch(form);
}

} // namespace forms
