// Each of our 32-bit files has the routines that unwind its exceptions inside it. Yet the compiler's start-up code asks
// whether the DLL with those routines is loaded, as some hosts have it, and would announce our functions there only:
// then our first exception would find no handler and end the process. So it is told that there is none (--wrap in
// CMakeLists.txt).
#include <windows.h>

#ifndef _WIN64
extern "C" {
extern decltype(&GetModuleHandleA) systemsModuleHandle asm("___real__imp__GetModuleHandleA@4");

static HMODULE WINAPI moduleHandle(const char* name) {
    return name && lstrcmpiA(name, "libgcc_s_dw2-1.dll") == 0 ? nullptr : systemsModuleHandle(name);
}

extern decltype(&GetModuleHandleA) wrappedModuleHandle asm("___wrap__imp__GetModuleHandleA@4");
decltype(&GetModuleHandleA) wrappedModuleHandle = &moduleHandle;
}
#endif
