// An in-process server: what a DLL of COM classes is made of.
#pragma once

#include "com/ComPtr.h"

#include <span>

namespace com {

struct ServerClass {
    CLSID id;
    const char* progId;
    const char* description;
    /// Makes one object. May throw.
    ComPtr<IUnknown> (*create)(const ServerClass& self);
};

struct Server {
    std::span<const ServerClass> classes;
    /// Whether a ProgID that another server holds becomes ours when we register.
    bool takesOverProgIds;
    /// Whether the DLL's resources hold a type library.
    bool hasTypeLibrary;
};

/// Each DLL defines its own.
const Server& server();

// What the DLL's exports do.
HRESULT getClassObject(const CLSID& classId, const IID& interfaceId, void** result);
HRESULT canUnloadNow();
HRESULT registerServer();
HRESULT unregisterServer();
/// `options` "user" means this user only, anything else the machine.
HRESULT install(bool install, const wchar_t* options);

} // namespace com
