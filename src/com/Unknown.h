// IUnknown of an object of several interfaces, which ends with its last reference.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>
#include <type_traits>

namespace com {

/// It is made with one reference, whose holder its maker is. The first interface is its identity.
template <class First, class... Others> class Unknown : public First, public Others... {
public:
    Unknown() = default;
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const IID& id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (id == IID_IUnknown || (std::is_base_of_v<IDispatch, First> && id == IID_IDispatch))
            *result = static_cast<First*>(this);
        offer<First>(id, result);
        (offer<Others>(id, result), ...);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (!left) delete this;
        return left;
    }

protected:
    virtual ~Unknown() = default;

private:
    template <class Interface> void offer(const IID& id, void** result) {
        if (id == __uuidof(Interface)) *result = static_cast<Interface*>(this);
    }

    std::atomic<ULONG> references_{1};
};

} // namespace com
