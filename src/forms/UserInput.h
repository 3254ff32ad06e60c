// The way that every key, click and focus change takes through a form, the same on every Desktop.
//
// Order of events, held by one table in the tests:
//   a key: KeyDown of the form, KeyDown of the control, KeyPress of the form, KeyPress of the control, Change, KeyUp
//   a change of focus: Validate and LostFocus of the old control, GotFocus of the new one
// Keystrokes that a handler sends act when it has returned, before the next event; so KeyUp reaches the control that
// has the focus by then.
#pragma once

#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Form.h"
#include "forms/Grid.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"

namespace forms::input {

/// Returns the key code that is left, 0 when a handler swallowed it or the form itself used it (Escape on a cancel
/// button).
std::int16_t keyDown(Control& control, std::int16_t keyCode, std::int16_t shift = 0);
/// Returns the character that is left, 0 when swallowed. Enter clicks a button that has the focus.
std::int16_t keyPress(Control& control, std::int16_t character);
void keyUp(Control& control, std::int16_t keyCode, std::int16_t shift = 0);

/// What editing made of a box's text. Nothing is done when the text is the same.
void edit(TextBox& box, std::string text, int selStart, int selLength);
void edit(ComboBox& box, std::string text);
/// Whether a text that arrives as a whole may be taken into the box.
bool acceptsWhole(TextBox& box, const std::string& whole);

/// The person moves the focus by mouse or Tab. Returns whether the control has it now.
bool focus(Control& control);
void tab(Form& form, bool backwards);
/// Alt and a letter: the control whose caption marks it, or the one after such a label. Returns whether there was one.
bool mnemonic(Form& form, char32_t letter);

/// A click on a button, a check box (which it ticks or clears) or an option (which it chooses).
void click(Control& control);
/// The person picks an entry: a Click also where it is the chosen one already.
void choose(ComboBox& box, int index);
void doubleClick(Control& control);
/// A click on a line, or a key that moved to it: selects it and raises ItemClick.
void selectItem(ListView& list, int index);
/// A click on a cell, or a key that moved to it. The whole row is selected.
void selectCell(Grid& grid, int row, int col);
void mouseDown(Control& control, const MouseEvent& event);
void mouseMove(Control& control, const MouseEvent& event);
void mouseUp(Control& control, const MouseEvent& event);

/// The window's own close box.
void closeBox(Form& form);
/// The person ends the session: whether the form holds work that would be lost.
bool holdsWork(Form& form);

} // namespace forms::input
