#include "common/ModuleForm.h"

#include "basic/Apostrophes.h"
#include "basic/Conversion.h"
#include "basic/Text.h"

#include <algorithm>

namespace goodsreq {
namespace {

/// The caret stays as far from the end as it was.
void replaceText(forms::TextBox& box, std::string text) {
    const int behind = basic::len(box.text()) - box.selStart();
    box.setText(std::move(text));
    box.select(std::max(0, basic::len(box.text()) - behind), 0);
}

} // namespace

bool ModuleForm::isTrue(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && basic::cBool(flag);
}

bool ModuleForm::isFalse(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && !basic::cBool(flag);
}

void ModuleForm::keepApostrophesOut(forms::TextBox& box) {
    box.onChange = [&box] {
        if (basic::hasApostrophe(box.text())) replaceText(box, basic::replaceApostrophes(box.text(), ""));
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
    box.keypadPoint = true;
    box.onChange = [this, &box] {
        if (const std::string plain = plainNumber(box.text()); plain != box.text()) replaceText(box, plain);
    };
}

std::string ModuleForm::shown(const automation::Value& value) const {
    return basic::concatText(value, desktop().locale());
}

} // namespace goodsreq
