#include "sandbox/suite/ClsFormcolor.h"

#include "sandbox/suite/FormControls.h"

#include <algorithm>

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

// Blue, green, red from the highest byte down. Paper and ink go together, so that text stays readable whatever the
// system's own colours are; boxes, lists and buttons keep those.
constexpr std::int32_t kPaper = 0xF7F3EE;
constexpr std::int32_t kInk = 0x33261A;

bool liesOnPaper(const automation::Object& control) {
    static constexpr std::string_view kKinds[] = {"Label", "Frame", "CheckBox", "OptionButton", "PictureBox"};
    return std::ranges::find(kKinds, control.className()) != std::end(kKinds);
}

void applyformcolor(automation::Object& form) {
    form.put("BackColor", kPaper);
    for (const automation::ObjectPtr& control : controlsOf(form)) {
        if (!liesOnPaper(*control)) continue;
        control->put("BackColor", kPaper);
        if (control->has("ForeColor")) control->put("ForeColor", kInk);
    }
}

} // namespace

const automation::Members<ClsFormcolor>& ClsFormcolor::members() {
    static const auto table = [] {
        automation::Members<ClsFormcolor> m;
        m.method("Applyformcolor", 1, 1, [](ClsFormcolor&, Arguments a) {
            applyformcolor(a[0].object());
            return Value();
        });
        return m;
    }();
    return table;
}

} // namespace sandbox
