#include "common/ModuleForm.h"

#include "basic/Conversion.h"

namespace goodsreq {

bool ModuleForm::isTrue(const automation::Value& flag) {
    return !flag.isNull() && !flag.isEmpty() && basic::cBool(flag);
}

std::string ModuleForm::shown(const automation::Value& value) const {
    return basic::concatText(value, desktop().locale());
}

} // namespace goodsreq
