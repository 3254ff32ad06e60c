// The product as a COM DLL: what its one class stands on.
#include "com/Bstr.h"
#include "com/ObjectDispatch.h"
#include "com/ObjectFactory.h"
#include "com/Server.h"
#include "com/dll/clsGRtoShop.h"
#include "component/Component.h"
#include "win32/Win32Desktop.h"
#include "win32/Win32System.h"
#include "win32/WindowLog.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace com {
namespace {

// Each interface once; who asks may be a system or a component, again and again.
void logRefusal(const IID& id) {
    static std::mutex mutex;
    static auto& known = *new std::vector<IID>;
    const std::lock_guard lock(mutex);
    if (std::find(known.begin(), known.end(), id) != known.end()) return;
    known.push_back(id);
    wchar_t text[40] = L"";
    StringFromGUID2(id, text, 40);
    win32::logWindow("refused interface", toUtf8(std::wstring_view(text)));
}

// The process's one module comes with its first object.
ComPtr<IUnknown> create(const ServerClass&) {
    static std::once_flag once; // two apartments may ask at the same time
    std::call_once(once, [] {
        goodsreq::installProcessModule(win32::makeDesktop(), win32::makeSystem(), comObjectFactory(),
                                       win32::moduleFolder());
        ObjectDispatch::refused = logRefusal;
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
