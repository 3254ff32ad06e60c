#include "com/EnumVariants.h"

#include "com/Errors.h"
#include "com/Variant.h"

#include <algorithm>

namespace com {

ComPtr<IEnumVARIANT> EnumVariants::make(automation::Array elements, std::size_t next) {
    return ComPtr<IEnumVARIANT>::adopt(new EnumVariants(std::move(elements), next));
}

HRESULT EnumVariants::Next(ULONG count, VARIANT* elements, ULONG* fetched) {
    if (!elements) return E_POINTER;
    ULONG given = 0;
    const HRESULT called = guarded(IID_IEnumVARIANT, [&] {
        for (; given < count && next_ < elements_.size(); ++given, ++next_) {
            VariantInit(&elements[given]);
            toVariant(elements_[next_], elements[given]);
        }
    });
    if (FAILED(called)) { // all or nothing, or the caller would not know what to clear
        next_ -= given;
        while (given) VariantClear(&elements[--given]);
    }
    if (fetched) *fetched = given;
    if (FAILED(called)) return called;
    return given == count ? S_OK : S_FALSE;
}

HRESULT EnumVariants::Skip(ULONG count) {
    const std::size_t left = elements_.size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

HRESULT EnumVariants::Reset() {
    next_ = 0;
    return S_OK;
}

HRESULT EnumVariants::Clone(IEnumVARIANT** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    return guarded(IID_IEnumVARIANT, [&] { *result = make(elements_, next_).detach(); });
}

} // namespace com
