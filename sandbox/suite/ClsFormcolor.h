// Stand-in for Formcolor.clsFormcolor: the colours of the suite's screens.
#pragma once

#include "sandbox/suite/StandIn.h"

namespace sandbox {

class ClsFormcolor : public StandIn<ClsFormcolor> {
public:
    static constexpr const char* kClassName = "clsFormcolor";
    static const automation::Members<ClsFormcolor>& members();
};

} // namespace sandbox
