// What every stand-in for a suite component has: late-bound members from its class's one table.
#pragma once

#include "automation/Members.h"

namespace sandbox {

/// `Self` offers `static const automation::Members<Self>& members()` and `static constexpr const char* kClassName`.
template <class Self> class StandIn : public automation::Object {
public:
    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override {
        return Self::members().invoke(static_cast<Self&>(*this), access, member, arguments);
    }
    bool has(std::string_view member) const override { return Self::members().has(member); }
    std::string className() const override { return Self::kClassName; }
};

} // namespace sandbox
