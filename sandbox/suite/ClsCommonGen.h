// Stand-in for CommonModule.clsCommonGen: choosing in combo boxes, and the numeric key filter.
#pragma once

#include "sandbox/suite/StandIn.h"

namespace sandbox {

class ClsCommonGen : public StandIn<ClsCommonGen> {
public:
    static constexpr const char* kClassName = "clsCommonGen";
    static const automation::Members<ClsCommonGen>& members();
};

/// Whether `text` is a number as far as it is typed: "-" only in front, one ".", no more than `digits` digits in all
/// and `decimals` after the ".". Empty text, "-" and "." are beginnings of a number.
bool isNumberSoFar(std::string_view text, int digits, int decimals);

} // namespace sandbox
