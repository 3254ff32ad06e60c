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

/// How many bytes a VARIANT or an array takes for a value of this kind; 0 for kinds that are none, arrays among them.
std::size_t sizeOf(VARTYPE kind);

/// A copy of what the VARIANT holds or refers to. Integers that a Value has no kind for become the next wider one,
/// beyond 32 bits an exact Decimal; arrays of several dimensions become arrays of arrays, the first dimension
/// outermost. Errors: 13 for what is no value at all (a record, an object without late binding, an error code), for an
/// array whose elements are not what the VARIANT says, and for more than 32 VARIANTs within one another; 7 for an array
/// of more than 16 million elements.
automation::Value toValue(const VARIANT& variant);

/// Fills `variant`, which must be initialised; what it held is cleared. Errors: 6 for a Decimal beyond 96 bits.
void toVariant(const automation::Value& value, VARIANT& variant);
/// The same, but an array whose elements are all texts, or all integers of one width, becomes an array of that kind.
void toTypedVariant(const automation::Value& value, VARIANT& variant);

} // namespace com
