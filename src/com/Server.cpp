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

HMODULE ownModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&ownModule), &module);
    return module;
}

void keepLoaded() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&keepLoaded), &module);
}

std::wstring ownPath() {
    std::wstring path(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = GetModuleFileNameW(ownModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

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
