// The entry points of a COM DLL.
#include "com/Server.h"

#include <olectl.h>

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
    return com::getClassObject(classId, interfaceId, result);
}

STDAPI DllCanUnloadNow() { return com::canUnloadNow(); }

STDAPI DllRegisterServer() { return com::registerServer(); }

STDAPI DllUnregisterServer() { return com::unregisterServer(); }

STDAPI DllInstall(BOOL install, PCWSTR options) { return com::install(install != FALSE, options); }
