// The DLL or program that this code is linked into.
#pragma once

#include "win32/Platform.h"

#include "com/OwnFile.h"

namespace win32 {

using com::ownModule;

/// Puts the module's manifest (resource 2) in force on this thread while it lives, so that controls created and served
/// meanwhile look modern in a host that has no manifest of its own. Without such a resource nothing happens.
class VisualStyles {
public:
    VisualStyles();
    ~VisualStyles();
    VisualStyles(const VisualStyles&) = delete;
    VisualStyles& operator=(const VisualStyles&) = delete;

private:
    ULONG_PTR cookie_ = 0;
};

} // namespace win32
