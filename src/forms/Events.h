// What a person does to a form, as its handlers see it.
#pragma once

#include <cstdint>
#include <string>

namespace forms {

/// Key codes and characters that handlers compare with.
enum Key : std::int16_t {
    kKeyBack = 8,
    kKeyTab = 9,
    kKeyLineFeed = 10, ///< the character of Ctrl+Enter
    kKeyReturn = 13,
    kKeyEscape = 27,
    kKeySpace = 32,
    kKeyPageUp = 33,
    kKeyPageDown = 34,
    kKeyEnd = 35,
    kKeyHome = 36,
    kKeyLeft = 37,
    kKeyUp = 38,
    kKeyRight = 39,
    kKeyDown = 40,
    kKeyDelete = 46,
    kKeyF3 = 114,
    kKeyF10 = 121,
    kKeyF11 = 122,
};

/// Bits of the shift state.
enum Shift : std::int16_t { kShift = 1, kControl = 2, kAlt = 4 };

enum class MouseButton : std::int16_t { none = 0, left = 1, right = 2, middle = 4 };

struct MouseEvent {
    MouseButton button = MouseButton::none;
    std::int16_t shift = 0;
    int x = 0; ///< twips, from the control's left edge
    int y = 0; ///< twips, from the control's top edge
};

enum class MessageIcon { none, information, question, critical };
enum class MessageButtons { ok, yesNo, yesNoCancel };
enum class Answer { ok, yes, no, cancel };

struct Message {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::information;
    MessageButtons buttons = MessageButtons::ok;
    Answer defaultAnswer = Answer::ok;
};

enum class Pointer { normal, hourglass };
enum class WindowStyle { normal, maximised };

/// Why a form is asked to close.
enum class CloseReason {
    frame, ///< the window's own close box, Alt+F4 or the system menu
    code,  ///< the module's own unload
};

} // namespace forms
