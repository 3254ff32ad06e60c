#include "forms/Form.h"

#include "forms/Buttons.h"
#include "forms/Desktop.h"

#include <algorithm>

namespace forms {
namespace {

/// A group of option buttons is one stop: its chosen one, else the first that can take the focus.
const Control* stopOfGroup(const std::vector<Control*>& controls, int group) {
    const Control* first = nullptr;
    for (const Control* control : controls) {
        const auto* option = dynamic_cast<const OptionButton*>(control);
        if (!option || option->group() != group || !option->canTakeFocus()) continue;
        if (option->value()) return option;
        if (!first) first = option;
    }
    return first;
}

bool sameGroup(const Control* a, const Control* b) {
    const auto* x = dynamic_cast<const OptionButton*>(a);
    const auto* y = dynamic_cast<const OptionButton*>(b);
    return x && y && x->group() == y->group();
}

/// Where an edge pair lies after the form grew by `delta` along its direction.
void follow(int& start, int& extent, bool holdsStart, bool holdsEnd, int delta) {
    if (!holdsEnd) return;
    if (holdsStart)
        extent += delta;
    else
        start += delta;
}

} // namespace

Form::Form(Desktop& desktop, std::string name) : desktop_(desktop), name_(std::move(name)) {}

void Form::ensureLoaded() {
    if (loaded_) return;
    resetDesign(); // somebody may have written into the form while it was not loaded
    loaded_ = true;
    ++loading_;
    desktop_.handle([this] { onLoad(); });
    --loading_;
}

void Form::discard() {
    if (loaded_ && !visible_ && !loading()) drop();
}

void Form::showAfresh(Form* owner) {
    discard();
    showModal(owner);
}

void Form::showModal(Form* owner) {
    if (visible_ || loading()) throw automation::RunTimeError(400, "Form already displayed; can't show modally");
    const std::shared_ptr<Form> alive = weak_from_this().lock();
    ensureLoaded();
    if (!loaded_ || visible_) return; // It left, or was shown and closed, while it loaded.
    visible_ = true;
    ++showing_;
    desktop_.show(*this, owner);
}

bool Form::unload(CloseReason reason) {
    if (!loaded_) return true;
    const std::shared_ptr<Form> alive = weak_from_this().lock();
    if (!unloading_) { // Its own question may answer by unloading; it is not asked again then.
        unloading_ = true;
        bool cancel = false;
        desktop_.handle([&] { onQueryUnload(cancel, reason); });
        unloading_ = false;
        if (!loaded_) return true;
        if (cancel) return false;
    }
    const int showing = showing_;
    desktop_.handle([this] { onUnload(); });
    if (loaded_ && showing == showing_) drop();
    return !loaded_;
}

void Form::drop() {
    loaded_ = false;
    visible_ = false;
    active_ = nullptr;
    if (FormView* view = view_) {
        view_ = nullptr;
        view->formUnloaded();
    }
    for (Control* control : controls_) control->attach(nullptr);
    resetDesign();
}

void Form::ensureDesigned() {
    if (!designed_) resetDesign();
}

void Form::resetDesign() {
    designing_ = true;
    caption_.clear();
    tag_.clear();
    width_ = 6000;
    height_ = 4000;
    backColor_ = kSystemColour;
    resizable_ = false;
    for (Control* control : controls_) control->reset();
    try {
        design();
    } catch (...) {
        designing_ = false;
        throw;
    }
    designing_ = false;
    designed_ = true;
}

void Form::activate() {
    const int showing = showing_;
    desktop_.handle([this] { onActivate(); });
    if (!visible_ || showing != showing_ || active_) return;
    if (Control* first = tabStop(nullptr, false)) moveFocus(*first);
}

void Form::setCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    if (view_) view_->captionChanged();
}

void Form::setSize(int width, int height) {
    width = withinTwips(width);
    height = withinTwips(height);
    if (width == width_ && height == height_) return;
    width_ = width;
    height_ = height;
    if (view_) view_->sizeChanged();
}

void Form::resized(int width, int height) {
    const int right = width - width_;
    const int down = height - height_;
    width_ = width;
    height_ = height;
    for (Control* control : controls_) {
        Rect bounds = control->bounds();
        const Anchor& anchor = control->anchor();
        follow(bounds.left, bounds.width, anchor.left, anchor.right, right);
        follow(bounds.top, bounds.height, anchor.top, anchor.bottom, down);
        control->setBounds(bounds);
    }
}

void Form::setBackColor(std::int32_t colour) {
    backColor_ = colour;
    if (view_) view_->coloursChanged();
}

Control* Form::find(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const Control* control) {
        return automation::sameName(control->name(), name);
    });
    return found == controls_.end() ? nullptr : *found;
}

void Form::moveFocus(Control& to) {
    if (&to == active_ || !visible_ || !to.canTakeFocus()) return;
    desktop_.handle([&] {
        Control* const old = active_;
        if (!old) return arriveAt(&to);
        const int showing = showing_;
        headedFor_ = &to;
        old->fire(old->onValidate);
        if (!visible_ || showing != showing_ || active_ != old) return;
        // Nobody has the focus while LostFocus runs, so a handler that sends it elsewhere decides.
        active_ = nullptr;
        old->fire(old->onLostFocus);
        headedFor_ = nullptr;
        if (!visible_ || showing != showing_ || active_) return;
        arriveAt(to.canTakeFocus() ? &to : tabStop(&to, false));
    });
}

void Form::releaseFocus(Control& control) {
    if (active_ != &control || designing_) return;
    desktop_.handle([&] {
        const int showing = showing_;
        active_ = headedFor_ = nullptr;
        control.fire(control.onLostFocus);
        if (visible_ && showing == showing_ && !active_) arriveAt(tabStop(&control, false));
    });
}

void Form::arriveAt(Control* control) {
    if (!control) return;
    active_ = control;
    if (view_) view_->focusChanged(*control);
    if (active_ == control) control->fire(control->onGotFocus);
}

void Form::tab(bool backwards) {
    if (Control* next = tabStop(active_, backwards)) moveFocus(*next);
}

Control* Form::tabStop(const Control* from, bool backwards) const {
    const auto count = static_cast<std::ptrdiff_t>(controls_.size());
    const auto found = std::find(controls_.begin(), controls_.end(), from);
    std::ptrdiff_t at = found != controls_.end() ? found - controls_.begin() : (backwards ? count : -1);
    for (std::ptrdiff_t step = 0; step < count; ++step) {
        at = (at + (backwards ? count - 1 : 1)) % count;
        Control* control = controls_[static_cast<std::size_t>(at)];
        if (!control->tabStop() || !control->canTakeFocus()) continue;
        const auto* option = dynamic_cast<const OptionButton*>(control);
        if (option &&
            (stopOfGroup(controls_, option->group()) != option || (control != from && sameGroup(option, from))))
            continue;
        return control;
    }
    return nullptr;
}

} // namespace forms
