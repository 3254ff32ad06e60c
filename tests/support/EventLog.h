// Writes down which handlers of a form's controls run, in their order.
#pragma once

#include "forms/Form.h"

#include <string>
#include <vector>

namespace support {

inline void logBefore(std::function<void()>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log] {
        log.push_back(line);
        if (inner) inner();
    };
}

constexpr std::int16_t kShiftKey = 16;

/// Key or character, with what comes with it. Shift is left out: only on a real keyboard it is a key of its own.
template <class... Shift>
void logBefore(std::function<void(std::int16_t&, Shift...)>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log](std::int16_t& code, Shift... shift) {
        if (sizeof...(Shift) == 0 || code != kShiftKey) log.push_back(line + " " + std::to_string(code));
        if (inner) inner(code, shift...);
    };
}

/// Puts itself before each handler that `form` and its controls have now: "txtFirst_KeyDown 65" and then the handler.
/// `log` outlives the form.
inline void logEvents(forms::Form& form, std::vector<std::string>& log) {
    logBefore(form.onKeyDown, "Form_KeyDown", log);
    logBefore(form.onKeyPress, "Form_KeyPress", log);
    for (forms::Control* control : form.controls()) {
        const std::string name = control->name() + "_";
        logBefore(control->onClick, name + "Click", log);
        logBefore(control->onDblClick, name + "DblClick", log);
        logBefore(control->onChange, name + "Change", log);
        logBefore(control->onGotFocus, name + "GotFocus", log);
        logBefore(control->onLostFocus, name + "LostFocus", log);
        logBefore(control->onValidate, name + "Validate", log);
        logBefore(control->onKeyDown, name + "KeyDown", log);
        logBefore(control->onKeyUp, name + "KeyUp", log);
        logBefore(control->onKeyPress, name + "KeyPress", log);
    }
}

} // namespace support
