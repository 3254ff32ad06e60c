#include "tests/support/EventLog.h"

namespace support {
namespace {

void wrap(std::function<void()>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log] {
        log.push_back(line);
        if (inner) inner();
    };
}

/// Key or character, with what comes with it.
template <class... Shift>
void wrap(std::function<void(std::int16_t&, Shift...)>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log](std::int16_t& code, Shift... shift) {
        log.push_back(line + " " + std::to_string(code));
        if (inner) inner(code, shift...);
    };
}

} // namespace

void logEvents(forms::Form& form, std::vector<std::string>& log) {
    wrap(form.onKeyDown, "Form_KeyDown", log);
    wrap(form.onKeyPress, "Form_KeyPress", log);
    for (forms::Control* control : form.controls()) {
        const std::string name = control->name() + "_";
        wrap(control->onClick, name + "Click", log);
        wrap(control->onDblClick, name + "DblClick", log);
        wrap(control->onChange, name + "Change", log);
        wrap(control->onGotFocus, name + "GotFocus", log);
        wrap(control->onLostFocus, name + "LostFocus", log);
        wrap(control->onValidate, name + "Validate", log);
        wrap(control->onKeyDown, name + "KeyDown", log);
        wrap(control->onKeyUp, name + "KeyUp", log);
        wrap(control->onKeyPress, name + "KeyPress", log);
    }
}

} // namespace support
