// Files, ports, code page and folder of Windows, as the module asks for them.
#pragma once

#include "common/System.h"

#include <memory>
#include <string_view>

namespace win32 {

std::unique_ptr<goodsreq::System> makeSystem();

/// Whether the name is a port's, which is opened as it is; all else is made anew.
bool isDevice(std::string_view name);

/// Whether what is open under these facts is a plain file of a disk: no link or other reparse point, no folder, no
/// device, and known under one name only. `type` is of GetFileType.
bool isPlainFile(unsigned long type, unsigned long attributes, unsigned long names);

} // namespace win32
