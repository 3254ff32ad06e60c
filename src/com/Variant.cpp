#include "com/Variant.h"

#include "automation/Object.h"
#include "automation/RunTimeError.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/DecimalText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

constexpr std::size_t kMostElements = 1 << 22; ///< of all arrays of one conversion
constexpr UINT kMostDimensions = 60;
constexpr int kDeepest = 32;

/// A real is right through seven digits: 1.1, not what it is nearest to.
double sevenDigits(float number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.7g", static_cast<double>(number));
    return std::isfinite(number) ? std::strtod(text.data(), nullptr) : static_cast<double>(number);
}

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

/// `left` is how many elements the conversion may still take.
Value valueAt(const VARIANT& variant, int depth, std::size_t& left);

/// Holds an array's data where they are.
class Locked {
public:
    explicit Locked(SAFEARRAY* array) : array_(array) {
        if (FAILED(SafeArrayLock(array))) automation::raise(automation::kTypeMismatch);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() { SafeArrayUnlock(array_); }

private:
    SAFEARRAY* array_;
};

/// The element is only looked at: what it owns stays the array's.
Value element(void* data, VARTYPE kind, int depth, std::size_t& left) {
    if (kind == VT_VARIANT) return valueAt(*static_cast<const VARIANT*>(data), depth + 1, left);
    VARIANT borrowed{};
    std::memcpy(kind == VT_DECIMAL ? static_cast<void*>(&borrowed.decVal) : &borrowed.lVal, data, sizeOf(kind));
    borrowed.vt = kind; // a decimal lies over it
    return valueAt(borrowed, depth, left);
}

Value dimension(SAFEARRAY* array, VARTYPE kind, std::vector<LONG>& indexes, UINT at, int depth, std::size_t& left) {
    const SAFEARRAYBOUND& bound = array->rgsabound[indexes.size() - 1 - at]; // the last dimension stands first
    Array values;
    for (ULONG i = 0; i < bound.cElements; ++i) {
        indexes[at] = static_cast<LONG>(static_cast<ULONG>(bound.lLbound) + i);
        if (at + 1 < indexes.size()) {
            values.push_back(dimension(array, kind, indexes, at + 1, depth, left));
            continue;
        }
        void* data = nullptr;
        if (FAILED(SafeArrayPtrOfIndex(array, indexes.data(), &data)))
            automation::raise(automation::kSubscriptOutOfRange);
        values.push_back(element(data, kind, depth, left));
    }
    return values;
}

bool holdsAddresses(VARTYPE kind) {
    return kind == VT_BSTR || kind == VT_DISPATCH || kind == VT_UNKNOWN || kind == VT_VARIANT;
}

/// Refuses an array whose elements are not of the kind that the variant says: they would be read beyond their end, or
/// numbers taken for addresses.
void checkElements(SAFEARRAY* array, VARTYPE kind) {
    const std::size_t size = sizeOf(kind);
    if (!size || SafeArrayGetElemsize(array) != size || !array->pvData) automation::raise(automation::kTypeMismatch);
    VARTYPE made = VT_EMPTY;
    const bool known = SUCCEEDED(SafeArrayGetVartype(array, &made));
    const auto object = [](VARTYPE one) { return one == VT_DISPATCH || one == VT_UNKNOWN; };
    if (known && object(kind) && object(made)) return;
    if (known ? kind != made && (holdsAddresses(kind) || holdsAddresses(made)) : holdsAddresses(kind))
        automation::raise(automation::kTypeMismatch);
}

Value arrayValue(SAFEARRAY* array, VARTYPE kind, int depth, std::size_t& left) {
    const UINT dimensions = array ? SafeArrayGetDim(array) : 0;
    if (!dimensions) return Array();
    if (dimensions > kMostDimensions) automation::raise(automation::kTypeMismatch);
    std::uint64_t count = 1;
    bool empty = false;
    for (UINT i = 0; i < dimensions; ++i) {
        const ULONG here = array->rgsabound[i].cElements;
        empty = empty || here == 0;
        count *= std::max<ULONG>(here, 1); // rows without columns take room too
        if (count > left) throw automation::RunTimeError(7, "Out of memory");
    }
    left -= static_cast<std::size_t>(count);
    if (!empty) checkElements(array, kind);
    const Locked locked(array);
    std::vector<LONG> indexes(dimensions);
    return dimension(array, kind, indexes, 0, depth, left);
}

/// The kind that all elements have; VT_VARIANT where they differ, or have none that an array can be of here.
VARTYPE commonKind(const Array& values) {
    const auto all = [&](auto is) { return !values.empty() && std::all_of(values.begin(), values.end(), is); };
    if (all([](const Value& v) { return v.is<std::string>(); })) return VT_BSTR;
    if (all([](const Value& v) { return v.is<std::int16_t>(); })) return VT_I2;
    if (all([](const Value& v) { return v.is<std::int32_t>(); })) return VT_I4;
    return VT_VARIANT;
}

SAFEARRAY* safeArray(const Array& values, VARTYPE kind) {
    SAFEARRAY* array = SafeArrayCreateVector(kind, 0, static_cast<ULONG>(values.size()));
    if (!array) throw std::bad_alloc();
    std::unique_ptr<SAFEARRAY, decltype(&SafeArrayDestroy)> owner(array, &SafeArrayDestroy);
    for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
        Variant item;
        toVariant(values[static_cast<std::size_t>(i)], item);
        void* element = &item;
        if (kind == VT_BSTR) element = item.bstrVal;
        if (kind == VT_I2 || kind == VT_I4) element = &item.lVal;
        if (FAILED(SafeArrayPutElement(array, &i, element))) throw std::bad_alloc();
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
        to.parray = safeArray(value, VT_VARIANT);
        to.vt = VT_ARRAY | VT_VARIANT;
    }
    void operator()(const automation::ObjectPtr& value) const {
        to.pdispVal = toDispatch(value).detach();
        to.vt = VT_DISPATCH;
    }
    void operator()(automation::Reference) const {} // resolved before
};

Value plainValue(const VARIANT& variant, int depth, std::size_t& left) {
    if (variant.vt & VT_ARRAY) return arrayValue(variant.parray, variant.vt & VT_TYPEMASK, depth, left);
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
    case VT_R4: return sevenDigits(variant.fltVal);
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

Value valueAt(const VARIANT& variant, int depth, std::size_t& left) {
    if (depth > kDeepest) automation::raise(automation::kTypeMismatch);
    if (!(variant.vt & VT_BYREF)) return plainValue(variant, depth, left);
    if (variant.vt == (VT_BYREF | VT_VARIANT))
        return variant.pvarVal ? valueAt(*variant.pvarVal, depth + 1, left) : Value();
    if (!variant.byref) return Value();
    // An array is looked at where it is: to copy it, the system would trust what it says of itself.
    if (variant.vt & VT_ARRAY) return arrayValue(*variant.pparray, variant.vt & VT_TYPEMASK, depth, left);
    Variant copy;
    if (FAILED(VariantCopyInd(&copy, const_cast<VARIANT*>(&variant)))) automation::raise(automation::kTypeMismatch);
    return plainValue(copy, depth, left);
}

} // namespace

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
    case VT_ERROR:
    case VT_R4: return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN: return sizeof(void*);
    case VT_DECIMAL: return sizeof(DECIMAL);
    case VT_VARIANT: return sizeof(VARIANT);
    default: return 0;
    }
}

Value toValue(const VARIANT& variant) {
    std::size_t left = kMostElements;
    return valueAt(variant, 0, left);
}

void toVariant(const Value& value, VARIANT& variant) {
    VariantClear(&variant);
    std::visit(Filler{variant}, value.storage());
}

void toTypedVariant(const Value& value, VARIANT& variant) {
    const auto* array = value.as<Array>();
    const VARTYPE kind = array ? commonKind(*array) : static_cast<VARTYPE>(VT_VARIANT);
    if (kind == VT_VARIANT) return toVariant(value, variant);
    VariantClear(&variant);
    variant.parray = safeArray(*array, kind);
    variant.vt = VT_ARRAY | kind;
}

} // namespace com
