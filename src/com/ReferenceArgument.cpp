#include "com/ReferenceArgument.h"

#include "automation/RunTimeError.h"

#include <cstring>

namespace com {
namespace {

constexpr int kDeepest = 32; ///< variants that refer to variants

bool hasKindOfItsOwn(VARTYPE kind) {
    if (kind & VT_ARRAY) return kind != (VT_ARRAY | VT_VARIANT);
    return sizeOf(kind) && kind != VT_DECIMAL && kind != VT_ERROR;
}

// Swaps what the two hold, so that `fresh` clears what stood there.
void exchangeInto(const VARIANT& argument, Variant& fresh) {
    const auto kind = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
    if (kind == VT_BSTR) {
        std::swap(*argument.pbstrVal, fresh.bstrVal);
    } else if (kind == VT_DISPATCH || kind == VT_UNKNOWN) {
        std::swap(*argument.ppunkVal, fresh.punkVal);
    } else if (kind & VT_ARRAY) {
        std::swap(*argument.pparray, fresh.parray);
    } else if (kind == VT_DECIMAL) {
        const USHORT reserved = argument.pdecVal->wReserved;
        *argument.pdecVal = fresh.decVal;
        argument.pdecVal->wReserved = reserved;
    } else {
        std::memcpy(argument.byref, &fresh.lVal, sizeOf(kind));
    }
}

void writeThrough(const VARIANT& argument, const automation::Value& value, int depth) {
    if (!argument.byref) return;
    if (depth > kDeepest) automation::raise(automation::kTypeMismatch);
    if (argument.vt == (VT_BYREF | VT_VARIANT)) {
        if (argument.pvarVal->vt & VT_BYREF) return writeThrough(*argument.pvarVal, value, depth + 1);
        return toVariant(value, *argument.pvarVal);
    }
    Variant fresh;
    const auto kind = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
    if ((kind & VT_ARRAY) && kind != (VT_ARRAY | VT_VARIANT))
        toTypedVariant(value, fresh);
    else
        toVariant(value, fresh);
    if (fresh.vt != kind && FAILED(VariantChangeType(&fresh, &fresh, 0, kind)))
        automation::raise(automation::kTypeMismatch);
    exchangeInto(argument, fresh);
}

} // namespace

OutgoingReference::OutgoingReference(automation::Value& variable, VARIANT& argument)
    : variable_(variable), before_(variable) {
    toTypedVariant(variable, copy_);
    if (hasKindOfItsOwn(copy_.vt)) {
        argument.vt = static_cast<VARTYPE>(VT_BYREF | copy_.vt);
        argument.byref = &copy_.lVal;
    } else {
        argument.vt = VT_BYREF | VT_VARIANT;
        argument.pvarVal = &copy_;
    }
}

void OutgoingReference::readBack() {
    automation::Value after = toValue(copy_);
    if (!(after == before_)) variable_ = std::move(after);
}

void writeThrough(const VARIANT& argument, const automation::Value& value) { writeThrough(argument, value, 0); }

} // namespace com
