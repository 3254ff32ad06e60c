#include "common/ModuleForm.h"

#include "basic/Conversion.h"
#include "basic/Text.h"

namespace goodsreq {

bool ModuleForm::isTrue(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && basic::cBool(flag);
}

bool ModuleForm::isFalse(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && !basic::cBool(flag);
}

void ModuleForm::keepApostrophesOut(forms::TextBox& box) {
    box.onChange = [&box] {
        if (box.text().find('\'') != std::string::npos) box.setText(basic::replaceAll(box.text(), "'", ""));
    };
}

std::string ModuleForm::shown(const automation::Value& value) const {
    return basic::concatText(value, desktop().locale());
}

} // namespace goodsreq
