// A way to the two dialogs that no screen opens by itself.
#pragma once

#include "common/Module.h"

#include <string_view>

namespace sandbox {

/// Lets F11 in line entry open "scan" (the barcode dialog) or "fetch" (the item search of this module). Any other name
/// changes nothing.
void openOverLineEntry(goodsreq::Module& module, std::string_view dialog);

} // namespace sandbox
