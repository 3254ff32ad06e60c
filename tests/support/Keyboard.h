// What keys do to a control once its handlers have seen them: the part that a real window's controls play, as far as
// tests press them.
#pragma once

#include "forms/UserInput.h"

#include <string>
#include <vector>

namespace support {

/// One key with what it types.
struct Stroke {
    std::int16_t keyCode = 0;
    std::int16_t shift = 0;
    std::int16_t character = 0; ///< 0 for a key that types nothing
    std::string text;           ///< the character as UTF-8, where it is a printable one
};

/// The strokes that type `text`: "\r" is Enter, "\n" Ctrl+Enter, "\t" Tab, "\b" Backspace.
std::vector<Stroke> strokesOf(const std::string& text);
Stroke strokeOf(std::int16_t keyCode, std::int16_t shift);

/// Presses a key on the control that has the focus: KeyDown, KeyPress and what the control makes of it, but not KeyUp.
void press(forms::Form& form, const Stroke& stroke);

/// Puts `text` in the place of the box's selection.
void insert(forms::TextBox& box, const std::string& text);
/// The text that stands in the box when `text` takes the selection's place.
std::string afterInsertion(const forms::TextBox& box, const std::string& text);

} // namespace support
