#include "win32/StaticWindow.h"

#include "win32/FormWindow.h"

#include <algorithm>

namespace win32 {
namespace {

constexpr int kLine = 195; ///< twips of a line in the design

/// How many lines the label was designed for.
int linesOf(const forms::Control& control) { return std::max(1, control.bounds().height / kLine); }

} // namespace

StaticWindow::StaticWindow(FormWindow& form, forms::Control& control) : ControlWindow(form, control) {
    // One line stands in the middle of its height, as the text of the box beside it does.
    const bool centred = control.kind() == forms::ControlKind::label && linesOf(control) == 1;
    create(WC_STATICW, SS_LEFT | SS_NOTIFY | (centred ? SS_CENTERIMAGE : 0), 0);
}

RECT StaticWindow::area(RECT wanted) const {
    // A line is never cut, whatever font the system has for dialogs.
    const LONG lines = linesOf(control()) * form_.font().lineHeight() + 1;
    if (control().kind() != forms::ControlKind::label || wanted.bottom - wanted.top >= lines) return wanted;
    const LONG middle = (wanted.top + wanted.bottom) / 2;
    return {wanted.left, middle - lines / 2, wanted.right, middle - lines / 2 + lines};
}

void StaticWindow::apply(forms::Aspect aspect) {
    ControlWindow::apply(aspect);
    if (aspect == forms::Aspect::text) InvalidateRect(handle(), nullptr, TRUE);
}

} // namespace win32
