// One of our objects, as a component sees it.
#pragma once

#include "automation/Object.h"
#include "com/ComPtr.h"
#include "com/ModuleReference.h"

#include <oaidl.h>

namespace com {

/// Belongs to the thread that made it, like the object it stands for.
class ObjectDispatch final : public IDispatch {
public:
    /// Hears of each interface that somebody asks a wrapper for in vain; null hears nothing.
    static void (*refused)(const IID& id);

    /// The wrapper of this object: the living one, or a new one.
    static ComPtr<IDispatch> of(const automation::ObjectPtr& object);
    /// The object behind the interface when it is a wrapper of this DLL, else none. A wrapper of another DLL built
    /// from the same sources is a stranger, since nothing but COM may cross from one to the other.
    static automation::ObjectPtr unwrap(IDispatch* dispatch);

    HRESULT STDMETHODCALLTYPE QueryInterface(const IID& id, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID& reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const IID& reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* information, UINT* wrongArgument) override;

private:
    explicit ObjectDispatch(automation::ObjectPtr object) : object_(std::move(object)) {}
    ~ObjectDispatch() = default;

    automation::ObjectPtr object_;
    ULONG references_ = 1;
    ModuleReference module_;
};

/// What is wrong with the names that somebody wants to know the numbers of; S_OK for nothing.
HRESULT checkNames(const LPOLESTR* names, UINT count, const DISPID* ids);

/// What is wrong with a call's arguments before they are looked at one by one; S_OK for nothing. The only argument that
/// may be named is the value of an assignment.
HRESULT checkParameters(WORD flags, const DISPPARAMS* parameters);

} // namespace com
