#include "com/ClassFactory.h"

#include "com/Errors.h"

namespace com {

ComPtr<IClassFactory> ClassFactory::make(const ServerClass& made) {
    return ComPtr<IClassFactory>::adopt(new ClassFactory(made));
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
