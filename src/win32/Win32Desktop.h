// The Desktop of real windows.
#pragma once

#include "forms/Desktop.h"

#include <memory>
#include <string>

namespace win32 {

/// Serves the thread that makes it; every form of the module is shown there.
std::unique_ptr<forms::Desktop> makeDesktop();

/// The folder of the DLL (or program) that this code is linked into, UTF-8, without a separator at the end.
std::string moduleFolder();

} // namespace win32
