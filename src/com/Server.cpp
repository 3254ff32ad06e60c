#include "com/Server.h"

#include "com/ClassFactory.h"
#include "com/Errors.h"
#include "com/ModuleReference.h"
#include "com/Registration.h"

namespace com {
namespace {

HRESULT registration(bool install, Scope scope) {
    return guarded(IID_NULL, [&] {
        if (install)
            writeRegistration(server(), scope);
        else
            removeRegistration(server(), scope);
    });
}

} // namespace

HRESULT getClassObject(const CLSID& classId, const IID& interfaceId, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    for (const ServerClass& one : server().classes) {
        if (one.id != classId) continue;
        ComPtr<IClassFactory> factory;
        const HRESULT made = guarded(IID_IClassFactory, [&] { factory = ClassFactory::make(one); });
        return FAILED(made) ? made : factory->QueryInterface(interfaceId, result);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT canUnloadNow() { return ModuleReference::any() ? S_FALSE : S_OK; }

HRESULT registerServer() { return registration(true, Scope::machine); }
HRESULT unregisterServer() { return registration(false, Scope::machine); }

HRESULT install(bool install, const wchar_t* options) {
    const bool user = options && CompareStringOrdinal(options, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    return registration(install, user ? Scope::user : Scope::machine);
}

} // namespace com
