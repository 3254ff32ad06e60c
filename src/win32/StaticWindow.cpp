#include "win32/StaticWindow.h"

#include "win32/FormWindow.h"

namespace win32 {
namespace {

bool oneLine(const RECT& r, int lineHeight) { return r.bottom - r.top < 2 * lineHeight; }

} // namespace

StaticWindow::StaticWindow(FormWindow& form, forms::Control& control) : ControlWindow(form, control) {
    const RECT wanted = form.dpi().pixels(control.bounds());
    // One line stands in the middle of its height, as the text of the box beside it does.
    const bool centred = control.kind() == forms::ControlKind::label && oneLine(wanted, form.font().lineHeight());
    create(WC_STATICW, SS_LEFT | SS_NOTIFY | (centred ? SS_CENTERIMAGE : 0), 0);
}

RECT StaticWindow::area(RECT wanted) const {
    // A line is never cut, whatever font the system has for dialogs.
    const LONG line = form_.font().lineHeight() + 1;
    if (control().kind() != forms::ControlKind::label || wanted.bottom - wanted.top >= line) return wanted;
    const LONG middle = (wanted.top + wanted.bottom) / 2;
    return {wanted.left, middle - line / 2, wanted.right, middle - line / 2 + line};
}

void StaticWindow::apply(forms::Aspect aspect) {
    ControlWindow::apply(aspect);
    if (aspect == forms::Aspect::text) InvalidateRect(handle(), nullptr, TRUE);
}

} // namespace win32
