// An argument by reference, on its way out to a component and in from one.
#pragma once

#include "automation/Value.h"
#include "com/Variant.h"

namespace com {

/// A variable of ours passed to a component: what the component wrote is read back into it.
class OutgoingReference {
public:
    /// Fills `argument` so that it refers to this object's copy of the variable, in the kind that the variable holds;
    /// a variable without a kind of its own (empty, null, decimal, a mixed array) goes as a variant.
    OutgoingReference(automation::Value& variable, VARIANT& argument);
    OutgoingReference(const OutgoingReference&) = delete;
    OutgoingReference& operator=(const OutgoingReference&) = delete;

    /// Leaves the variable alone when the component wrote nothing: it may have changed meanwhile in other ways.
    void readBack();

private:
    automation::Value& variable_;
    automation::Value before_;
    Variant copy_;
};

/// Writes `value` where `argument` (a VT_BYREF of any kind) refers to. Error 13 when it does not convert to that kind.
void writeThrough(const VARIANT& argument, const automation::Value& value);

} // namespace com
