#include "common/ModuleForm.h"

#include "basic/Apostrophes.h"
#include "basic/Conversion.h"

#include <algorithm>

namespace goodsreq {

bool ModuleForm::isTrue(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && basic::cBool(flag);
}

bool ModuleForm::isFalse(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && !basic::cBool(flag);
}

void ModuleForm::keepApostrophesOut(forms::TextBox& box) {
    box.onChange = [&box] {
        if (basic::hasApostrophe(box.text())) box.setText(basic::replaceApostrophes(box.text(), ""));
    };
}

std::string ModuleForm::plainNumber(std::string text) const {
    constexpr const char* kAround = " \t\r\n";
    text.erase(0, std::min(text.find_first_not_of(kAround), text.size()));
    text.erase(text.find_last_not_of(kAround) + 1);
    std::replace(text.begin(), text.end(), desktop().locale().decimalSeparator, '.');
    return text;
}

void ModuleForm::keepNumberPlain(forms::TextBox& box) const {
    box.onChange = [this, &box] {
        if (const std::string plain = plainNumber(box.text()); plain != box.text()) box.setText(plain);
    };
}

std::string ModuleForm::shown(const automation::Value& value) const {
    return basic::concatText(value, desktop().locale());
}

} // namespace goodsreq
