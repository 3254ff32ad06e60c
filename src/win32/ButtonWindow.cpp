#include "win32/ButtonWindow.h"

#include "forms/UserInput.h"
#include "win32/FormWindow.h"

#include <algorithm>

namespace win32 {
namespace {

/// None of the automatic styles: the model decides what a click does, and the window follows.
DWORD styleOf(forms::ControlKind kind) {
    switch (kind) {
    case forms::ControlKind::checkBox: return BS_CHECKBOX;
    case forms::ControlKind::optionButton: return BS_RADIOBUTTON;
    case forms::ControlKind::frame: return BS_GROUPBOX;
    default: return BS_PUSHBUTTON;
    }
}

} // namespace

ButtonWindow::ButtonWindow(FormWindow& form, forms::Control& control) : ControlWindow(form, control) {
    create(WC_BUTTONW, styleOf(control.kind()), control.kind() == forms::ControlKind::frame ? WS_EX_TRANSPARENT : 0);
    showState();
}

void ButtonWindow::showState() {
    bool on = false;
    if (const auto* box = dynamic_cast<const forms::CheckBox*>(&control()))
        on = box->value() != 0;
    else if (const auto* option = dynamic_cast<const forms::OptionButton*>(&control()))
        on = option->value();
    else
        return;
    SendMessageW(handle(), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

void ButtonWindow::apply(forms::Aspect aspect) {
    ControlWindow::apply(aspect);
    if (aspect == forms::Aspect::selection) showState();
}

void ButtonWindow::commanded(int code) {
    if (code == BN_CLICKED && !focusing_ && control().kind() != forms::ControlKind::frame)
        forms::input::click(control());
}

LRESULT ButtonWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_SETFOCUS) return ControlWindow::onMessage(window, message, wParam, lParam);
    // Options report a click when they get the focus; only a press of the person chooses one here.
    focusing_ = true;
    const LRESULT result = native(window, message, wParam, lParam);
    focusing_ = false;
    form_.focusArrived(*this);
    return result;
}

bool ButtonWindow::useKey(int keyCode, int) {
    auto* option = dynamic_cast<forms::OptionButton*>(&control());
    const bool forward = keyCode == VK_DOWN || keyCode == VK_RIGHT;
    if (!option || (!forward && keyCode != VK_UP && keyCode != VK_LEFT)) return false;
    std::vector<forms::OptionButton*> group;
    for (forms::Control* other : option->form().controls())
        if (auto* o = dynamic_cast<forms::OptionButton*>(other); o && o->group() == option->group()) group.push_back(o);
    const auto at = static_cast<std::size_t>(std::find(group.begin(), group.end(), option) - group.begin());
    forms::OptionButton& next = *group[(at + (forward ? 1 : group.size() - 1)) % group.size()];
    if (forms::input::focus(next)) forms::input::click(next);
    return true;
}

} // namespace win32
