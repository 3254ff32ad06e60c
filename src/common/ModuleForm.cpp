#include "common/ModuleForm.h"

#include "basic/Conversion.h"

namespace goodsreq {

std::string ModuleForm::shown(const automation::Value& value) const {
    return basic::concatText(value, desktop().locale());
}

} // namespace goodsreq
