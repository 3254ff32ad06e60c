// The class goodsreq.clsGRtoShop, as COM creates it.
#pragma once

#include "com/Server.h"

namespace com {

/// A new object, on the process's one module, which must have been installed.
ComPtr<IUnknown> makeClsGRtoShop();

/// The class's id, as the type library has it.
const CLSID& clsGRtoShopId();

} // namespace com
