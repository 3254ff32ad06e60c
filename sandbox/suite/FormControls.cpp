#include "sandbox/suite/FormControls.h"

#include "basic/Conversion.h"

#include <algorithm>

namespace sandbox {

using automation::ObjectPtr;

std::vector<ObjectPtr> controlsOf(automation::Object& form) {
    std::vector<ObjectPtr> controls;
    for (const automation::Value& control : form.get("Controls").object().elements())
        controls.push_back(control.objectPtr());
    return controls;
}

bool isInput(const automation::Object& control) {
    static constexpr std::string_view kInputs[] = {"TextBox", "ComboBox", "CheckBox", "OptionButton"};
    return std::ranges::find(kInputs, control.className()) != std::end(kInputs);
}

std::string inputText(automation::Object& control) {
    const std::string kind = control.className();
    const bool isTicked = kind == "CheckBox" || kind == "OptionButton";
    return basic::cStr(control.get(isTicked ? "Value" : "Text"));
}

} // namespace sandbox
