// The component once more, with a way to the two dialogs that the product's own screens do not open: F11 in line entry
// opens the one that GOODSREQ_OPEN names.
#include "com/ObjectFactory.h"
#include "com/Server.h"
#include "com/dll/clsGRtoShop.h"
#include "component/Component.h"
#include "sandbox/tryout/OpenDialogs.h"
#include "win32/Win32Desktop.h"
#include "win32/Win32System.h"

#include <mutex>

namespace com {
namespace {

ComPtr<IUnknown> create(const ServerClass&) {
    static std::once_flag once;
    std::call_once(once, [] {
        goodsreq::installProcessModule(win32::makeDesktop(), win32::makeSystem(), comObjectFactory(),
                                       win32::moduleFolder());
        char dialog[16] = "";
        GetEnvironmentVariableA("GOODSREQ_OPEN", dialog, sizeof dialog);
        sandbox::openOverLineEntry(goodsreq::processModule(), dialog);
    });
    return makeClsGRtoShop();
}

} // namespace

const Server& server() {
    static const ServerClass classes[] = {{clsGRtoShopId(), "goodsreq.clsGRtoShop", "Goods Request To Shop", &create}};
    static const Server theServer{classes, true, true};
    return theServer;
}

} // namespace com
