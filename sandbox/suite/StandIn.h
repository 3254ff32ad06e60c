// What every stand-in for a suite component has: late-bound members from its class's one table.
#pragma once

#include "automation/Members.h"

namespace sandbox {

/// `Self` offers `static const automation::Members<Self>& members()` and `static constexpr const char* kClassName`.
template <class Self> class StandIn : public automation::WithMembers<Self> {
public:
    std::string className() const override { return Self::kClassName; }
};

} // namespace sandbox
