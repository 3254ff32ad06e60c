#include "com/Variant.h"

#include "automation/Object.h"
#include "automation/RunTimeError.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/DecimalText.h"

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace com {
namespace {

using automation::Array;
using automation::Value;

template <class Integer> Value wideInteger(Integer number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    return automation::Decimal{std::to_string(number)};
}

Value objectValue(IUnknown* unknown) {
    if (!unknown) return automation::ObjectPtr();
    const auto dispatch = ComPtr<IUnknown>(unknown).query<IDispatch>();
    if (!dispatch) automation::raise(automation::kTypeMismatch);
    return toObject(dispatch.get());
}

Value element(SAFEARRAY* array, VARTYPE kind, LONG* indexes) {
    Variant variant;
    void* target = kind == VT_VARIANT ? static_cast<VARIANT*>(&variant) : static_cast<void*>(&variant.lVal);
    if (kind == VT_DECIMAL) target = &variant.decVal;
    const HRESULT result = SafeArrayGetElement(array, indexes, target);
    if (kind != VT_VARIANT) variant.vt = SUCCEEDED(result) ? kind : static_cast<VARTYPE>(VT_EMPTY);
    if (FAILED(result)) automation::raise(automation::kSubscriptOutOfRange);
    return toValue(variant);
}

Value dimension(SAFEARRAY* array, VARTYPE kind, std::vector<LONG>& indexes, UINT at) {
    const SAFEARRAYBOUND& bound = array->rgsabound[indexes.size() - 1 - at]; // the last dimension stands first
    Array values;
    for (ULONG i = 0; i < bound.cElements; ++i) {
        indexes[at] = static_cast<LONG>(static_cast<ULONG>(bound.lLbound) + i);
        const bool last = at + 1 == indexes.size();
        values.push_back(last ? element(array, kind, indexes.data()) : dimension(array, kind, indexes, at + 1));
    }
    return values;
}

Value arrayValue(SAFEARRAY* array, VARTYPE kind) {
    if (kind == VT_RECORD) automation::raise(automation::kTypeMismatch); // its elements are larger than any other kind's
    const UINT dimensions = array ? SafeArrayGetDim(array) : 0;
    if (!dimensions) return Array();
    std::vector<LONG> indexes(dimensions);
    return dimension(array, kind, indexes, 0);
}

SAFEARRAY* safeArray(const Array& values) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    if (!array) throw std::bad_alloc();
    std::unique_ptr<SAFEARRAY, decltype(&SafeArrayDestroy)> owner(array, &SafeArrayDestroy);
    for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
        Variant item;
        toVariant(values[static_cast<std::size_t>(i)], item);
        if (FAILED(SafeArrayPutElement(array, &i, &item))) throw std::bad_alloc();
    }
    return owner.release();
}

struct Filler {
    VARIANT& to;

    void operator()(automation::Empty) const {}
    void operator()(automation::Null) const { to.vt = VT_NULL; }
    void operator()(automation::Missing) const {
        to.vt = VT_ERROR;
        to.scode = DISP_E_PARAMNOTFOUND;
    }
    void operator()(bool value) const {
        to.vt = VT_BOOL;
        to.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int16_t value) const {
        to.vt = VT_I2;
        to.iVal = value;
    }
    void operator()(std::int32_t value) const {
        to.vt = VT_I4;
        to.lVal = value;
    }
    void operator()(double value) const {
        to.vt = VT_R8;
        to.dblVal = value;
    }
    void operator()(automation::Currency value) const {
        to.vt = VT_CY;
        to.cyVal.int64 = value.tenThousandths;
    }
    void operator()(const automation::Decimal& value) const {
        to.decVal = decimalNumber(value.text); // lies over the kind, which therefore is written after it
        to.vt = VT_DECIMAL;
    }
    void operator()(automation::Date value) const {
        to.vt = VT_DATE;
        to.date = value.days;
    }
    void operator()(const std::string& value) const {
        to.bstrVal = Bstr(value).detach();
        to.vt = VT_BSTR;
    }
    void operator()(const Array& value) const {
        to.parray = safeArray(value);
        to.vt = VT_ARRAY | VT_VARIANT;
    }
    void operator()(const automation::ObjectPtr& value) const {
        to.pdispVal = toDispatch(value).detach();
        to.vt = VT_DISPATCH;
    }
    void operator()(automation::Reference) const {} // resolved before
};

Value plainValue(const VARIANT& variant) {
    if (variant.vt & VT_ARRAY) return arrayValue(variant.parray, variant.vt & VT_TYPEMASK);
    switch (variant.vt) {
    case VT_EMPTY: return Value();
    case VT_NULL: return automation::Null();
    case VT_BOOL: return variant.boolVal != VARIANT_FALSE;
    case VT_I1: return static_cast<std::int16_t>(static_cast<signed char>(variant.cVal));
    case VT_UI1: return static_cast<std::int16_t>(variant.bVal);
    case VT_I2: return static_cast<std::int16_t>(variant.iVal);
    case VT_UI2: return static_cast<std::int32_t>(variant.uiVal);
    case VT_I4:
    case VT_INT: return static_cast<std::int32_t>(variant.lVal);
    case VT_UI4:
    case VT_UINT: return wideInteger(variant.ulVal);
    case VT_I8: return wideInteger(variant.llVal);
    case VT_UI8: return wideInteger(variant.ullVal);
    case VT_R4: return static_cast<double>(variant.fltVal);
    case VT_R8: return variant.dblVal;
    case VT_CY: return automation::Currency{variant.cyVal.int64};
    case VT_DECIMAL: return automation::Decimal{decimalText(variant.decVal)};
    case VT_DATE: return automation::Date{variant.date};
    case VT_BSTR: return toUtf8(variant.bstrVal);
    case VT_DISPATCH:
    case VT_UNKNOWN: return objectValue(variant.punkVal);
    case VT_ERROR:
        if (variant.scode == DISP_E_PARAMNOTFOUND) return automation::Missing();
        break;
    }
    automation::raise(automation::kTypeMismatch);
}

} // namespace

Value toValue(const VARIANT& variant) {
    if (!(variant.vt & VT_BYREF)) return plainValue(variant);
    if (variant.vt == (VT_BYREF | VT_VARIANT)) return variant.pvarVal ? toValue(*variant.pvarVal) : Value();
    if (!variant.byref) return Value();
    Variant copy;
    if (FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&variant)))) automation::raise(automation::kTypeMismatch);
    return plainValue(copy);
}

void toVariant(const Value& value, VARIANT& variant) {
    VariantClear(&variant);
    std::visit(Filler{variant}, value.storage());
}

} // namespace com
