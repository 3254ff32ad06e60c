// A VARIANT that clears itself, and its one translation into the module's own values and back.
#pragma once

#include "automation/Value.h"

#include <windows.h>

#include <oleauto.h>

#include <utility>

namespace com {

class Variant : public VARIANT {
public:
    Variant() { VariantInit(this); }
    Variant(Variant&& other) noexcept : Variant() { std::swap<VARIANT>(*this, other); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

/// A copy of what the VARIANT holds or refers to. Integers that a Value has no kind for become the next wider one,
/// beyond 32 bits an exact Decimal; arrays of several dimensions become arrays of arrays, the first dimension
/// outermost. Error 13 for what is no value at all (a record, an object without late binding, an error code).
automation::Value toValue(const VARIANT& variant);

/// Fills `variant`, which must be initialised; what it held is cleared. Errors: 6 for a Decimal beyond 96 bits.
void toVariant(const automation::Value& value, VARIANT& variant);

} // namespace com
