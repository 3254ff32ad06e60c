#include "tests/support/EventLog.h"

namespace support {
namespace {

void wrap(std::function<void()>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log] {
        log.push_back(line);
        if (inner) inner();
    };
}

void wrapKey(std::function<void(std::int16_t&, std::int16_t)>& handler, std::string line,
             std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log](std::int16_t& code, std::int16_t shift) {
        log.push_back(line + " " + std::to_string(code));
        if (inner) inner(code, shift);
    };
}

void wrapCharacter(std::function<void(std::int16_t&)>& handler, std::string line, std::vector<std::string>& log) {
    handler = [inner = handler, line = std::move(line), &log](std::int16_t& character) {
        log.push_back(line + " " + std::to_string(character));
        if (inner) inner(character);
    };
}

} // namespace

void logEvents(forms::Form& form, std::vector<std::string>& log) {
    wrapKey(form.onKeyDown, "Form_KeyDown", log);
    wrapCharacter(form.onKeyPress, "Form_KeyPress", log);
    for (forms::Control* control : form.controls()) {
        const std::string name = control->name() + "_";
        wrap(control->onClick, name + "Click", log);
        wrap(control->onDblClick, name + "DblClick", log);
        wrap(control->onChange, name + "Change", log);
        wrap(control->onGotFocus, name + "GotFocus", log);
        wrap(control->onLostFocus, name + "LostFocus", log);
        wrap(control->onValidate, name + "Validate", log);
        wrapKey(control->onKeyDown, name + "KeyDown", log);
        wrapKey(control->onKeyUp, name + "KeyUp", log);
        wrapCharacter(control->onKeyPress, name + "KeyPress", log);
    }
}

} // namespace support
