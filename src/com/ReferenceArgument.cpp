#include "com/ReferenceArgument.h"

#include "automation/RunTimeError.h"

#include <cstring>

namespace com {
namespace {

std::size_t sizeOf(VARTYPE kind) {
    switch (kind) {
    case VT_I1:
    case VT_UI1: return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4: return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: return 8;
    default: return 0;
    }
}

bool hasKindOfItsOwn(VARTYPE kind) { return sizeOf(kind) || kind == VT_BSTR || kind == VT_DISPATCH; }

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

} // namespace

OutgoingReference::OutgoingReference(automation::Value& variable, VARIANT& argument)
    : variable_(variable), before_(variable) {
    toVariant(variable, copy_);
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

void writeThrough(const VARIANT& argument, const automation::Value& value) {
    if (!argument.byref) return;
    if (argument.vt == (VT_BYREF | VT_VARIANT)) {
        if (argument.pvarVal->vt & VT_BYREF) return writeThrough(*argument.pvarVal, value);
        return toVariant(value, *argument.pvarVal);
    }
    Variant fresh;
    toVariant(value, fresh);
    const auto kind = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
    if (fresh.vt != kind && FAILED(VariantChangeType(&fresh, &fresh, 0, kind)))
        automation::raise(automation::kTypeMismatch);
    exchangeInto(argument, fresh);
}

} // namespace com
