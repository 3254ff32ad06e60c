// The elements of a collection, one after another.
#pragma once

#include "automation/Value.h"
#include "com/ComPtr.h"
#include "com/ModuleReference.h"
#include "com/Unknown.h"

#include <oaidl.h>

namespace com {

class EnumVariants final : public Unknown<IEnumVARIANT> {
public:
    static ComPtr<IEnumVARIANT> make(automation::Array elements, std::size_t next = 0);

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* elements, ULONG* fetched) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** result) override;

private:
    EnumVariants(automation::Array elements, std::size_t next) : elements_(std::move(elements)), next_(next) {}

    automation::Array elements_;
    std::size_t next_;
    ModuleReference module_;
};

} // namespace com
