// The product as a COM DLL: what its one class stands on.
#include "com/ObjectFactory.h"
#include "com/Server.h"
#include "com/dll/clsGRtoShop.h"

namespace com {
namespace {

ComPtr<IUnknown> create(const ServerClass&) { return makeClsGRtoShop(); }

} // namespace

const Server& server() {
    static const ServerClass classes[] = {
        {clsGRtoShopId(), "goodsreq.clsGRtoShop", "Goods Request To Shop", &create},
    };
    static const Server theServer{classes, true, true};
    return theServer;
}

} // namespace com
