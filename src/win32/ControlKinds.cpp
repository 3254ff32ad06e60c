// Which window shows which kind of control.
#include "forms/ComboBox.h"
#include "forms/Grid.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"
#include "win32/ButtonWindow.h"
#include "win32/ComboWindow.h"
#include "win32/EditWindow.h"
#include "win32/GridWindow.h"
#include "win32/ListWindow.h"
#include "win32/StaticWindow.h"

namespace win32 {

using forms::ControlKind;

std::unique_ptr<ControlWindow> makeControlWindow(FormWindow& form, forms::Control& control) {
    switch (control.kind()) {
    case ControlKind::textBox: return std::make_unique<EditWindow>(form, dynamic_cast<forms::TextBox&>(control));
    case ControlKind::comboBox: return std::make_unique<ComboWindow>(form, dynamic_cast<forms::ComboBox&>(control));
    case ControlKind::listView: return std::make_unique<ListWindow>(form, dynamic_cast<forms::ListView&>(control));
    case ControlKind::grid: return std::make_unique<GridWindow>(form, dynamic_cast<forms::Grid&>(control));
    case ControlKind::label:
    case ControlKind::pictureBox: return std::make_unique<StaticWindow>(form, control);
    default: return std::make_unique<ButtonWindow>(form, control);
    }
}

} // namespace win32
