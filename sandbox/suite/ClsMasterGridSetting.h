// Stand-in for MasterGridSetting.clsMasterGridSetting: a user's own column widths of a register grid.
#pragma once

#include "sandbox/suite/StandIn.h"

namespace sandbox {

class ClsMasterGridSetting : public StandIn<ClsMasterGridSetting> {
public:
    static constexpr const char* kClassName = "clsMasterGridSetting";
    static const automation::Members<ClsMasterGridSetting>& members();
};

} // namespace sandbox
