// A component of somebody else's, made of one of our objects: it hands every call on and hides what lies behind it.
#pragma once

#include "com/Bridge.h"
#include "com/Errors.h"
#include "com/Unknown.h"

#include <oaidl.h>

#include <functional>
#include <vector>

namespace tests {

class Relay final : public com::Unknown<IDispatch, ISupportErrorInfo> {
public:
    static com::ComPtr<Relay> to(const automation::ObjectPtr& object) {
        return com::ComPtr<Relay>::adopt(new Relay(com::toDispatch(object)));
    }

    WORD refused = 0;           ///< ways of access that it does not offer
    std::vector<VARTYPE> kinds; ///< of the last call's arguments, in call order
    int lookUps = 0;
    HRESULT answer = S_OK; ///< of every call, with error information, unless it is S_OK
    bool explains = true;  ///< says that its error information is meant
    bool hides = true;     ///< has none of the interfaces of what lies behind it
    enum class Call { question, lookUp, invoke };
    /// Told of each call: for an interface that it lacks, for a name, and of a member.
    std::function<void(Call)> told = [](Call) {};

    HRESULT STDMETHODCALLTYPE QueryInterface(const IID& id, void** result) override {
        const bool known = id != IID_ISupportErrorInfo || explains;
        if (known && SUCCEEDED(Unknown::QueryInterface(id, result))) return S_OK;
        *result = nullptr;
        told(Call::question);
        return hides ? E_NOINTERFACE : inner_->QueryInterface(id, result);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return inner_->GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override {
        return inner_->GetTypeInfo(index, locale, result);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID& id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        ++lookUps;
        told(Call::lookUp);
        return inner_->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const IID& reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* information, UINT* wrong) override {
        told(Call::invoke);
        kinds.clear();
        for (UINT i = parameters->cArgs; i-- > 0;) kinds.push_back(parameters->rgvarg[i].vt);
        if (flags & refused) return DISP_E_MEMBERNOTFOUND;
        if (answer != S_OK) {
            com::setErrorInfo({answer, "driver", "no server there"}, IID_IDispatch);
            return answer;
        }
        return inner_->Invoke(id, reserved, locale, flags, parameters, result, information, wrong);
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(const IID& id) override {
        return id == IID_IDispatch ? S_OK : S_FALSE;
    }

private:
    explicit Relay(com::ComPtr<IDispatch> inner) : inner_(std::move(inner)) {}

    com::ComPtr<IDispatch> inner_;
};

} // namespace tests
