// The product as a COM DLL: what its one class stands on.
#include "com/ObjectFactory.h"
#include "com/Server.h"
#include "com/dll/clsGRtoShop.h"
#include "component/Component.h"
#include "win32/Win32Desktop.h"
#include "win32/Win32System.h"

#include <mutex>

namespace com {
namespace {

// The process's one module comes with its first object.
ComPtr<IUnknown> create(const ServerClass&) {
    static std::once_flag once; // two apartments may ask at the same time
    std::call_once(once, [] {
        goodsreq::installProcessModule(win32::makeDesktop(), win32::makeSystem(), comObjectFactory(),
                                       win32::moduleFolder());
        char dialog[16] = "";
        GetEnvironmentVariableA("GOODSREQ_OPEN", dialog, sizeof dialog);
        goodsreq::openOverLineEntry(goodsreq::processModule(), dialog);
    });
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
