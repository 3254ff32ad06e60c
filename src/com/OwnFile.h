// The DLL or program that this code is linked into.
#pragma once

#include <windows.h>

#include <string>

namespace com {

/// Also inside a host's process the handle of our own file, not the host's.
HMODULE ownModule();
std::wstring ownPath();
/// From now on it stays until the process ends, whatever COM does.
void keepLoaded();

} // namespace com
