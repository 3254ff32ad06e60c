#include "com/ClassFactory.h"

#include "com/Errors.h"

namespace com {

ComPtr<IClassFactory> ClassFactory::make(const ServerClass& made) {
    return ComPtr<IClassFactory>::adopt(new ClassFactory(made));
}

HRESULT ClassFactory::QueryInterface(const IID& id, void** result) {
    if (!result) return E_POINTER;
    *result = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    if (!*result) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ClassFactory::Release() {
    const ULONG left = --references_;
    if (!left) delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, const IID& id, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    ComPtr<IUnknown> object;
    const HRESULT made = guarded(id, [&] { object = made_.create(made_); });
    if (FAILED(made)) return made;
    return object ? object->QueryInterface(id, result) : E_UNEXPECTED;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    if (lock)
        ModuleReference::lock();
    else
        ModuleReference::unlock();
    return S_OK;
}

} // namespace com
