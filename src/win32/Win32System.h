// Files, ports, code page and folder of Windows, as the module asks for them.
#pragma once

#include "common/System.h"

#include <memory>

namespace win32 {

std::unique_ptr<goodsreq::System> makeSystem();

} // namespace win32
