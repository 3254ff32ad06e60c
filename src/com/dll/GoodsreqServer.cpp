// The product as a COM DLL: what its one class stands on.
#include "com/ObjectFactory.h"
#include "com/Server.h"
#include "com/dll/clsGRtoShop.h"
#include "component/Component.h"
#include "win32/Win32Desktop.h"
#include "win32/Win32System.h"

namespace com {
namespace {

// The process's one module comes with its first object, on the thread that will show its windows.
ComPtr<IUnknown> create(const ServerClass&) {
    if (!goodsreq::hasProcessModule())
        goodsreq::installProcessModule(win32::makeDesktop(), win32::makeSystem(), comObjectFactory(),
                                       win32::moduleFolder());
    return makeClsGRtoShop();
}

} // namespace

const Server& server() {
    static const ServerClass classes[] = {
        {clsGRtoShopId(), "goodsreq.clsGRtoShop", "Goods Request To Shop", &create},
    };
    static const Server theServer{classes, true, true};
    return theServer;
}

} // namespace com
