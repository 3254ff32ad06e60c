#include "com/dll/clsGRtoShop.h"

#include "automation/RunTimeError.h"
#include "com/Apartment.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/Errors.h"
#include "com/ModuleReference.h"
#include "com/ObjectDispatch.h"
#include "com/OwnFile.h"
#include "com/Unknown.h"
#include "component/Component.h"

#include <initguid.h>
// The type library's declarations, with their ids defined here.
#include "goodsreq_h.h"

#include <ocidl.h>

#include <atomic>
#include <string>

namespace com {
namespace {

ComPtr<ITypeInfo> typeInfo(const GUID& id) {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> info;
    HRESULT result = LoadTypeLibEx(ownPath().data(), REGKIND_NONE, library.out());
    if (SUCCEEDED(result)) result = library->GetTypeInfoOfGuid(id, info.out());
    if (FAILED(result)) raiseResult(result);
    return info;
}

// Read once; never given back, as objects may outlive the DLL's own clean-up at the end of the process.
ITypeInfo& dispatchInfo() {
    static ITypeInfo& info = *typeInfo(IID__clsGRtoShop).detach();
    return info;
}

// Nothing, or an object with the members that tell a connection from any other.
automation::ObjectPtr connectionIn(IDispatch* dispatch) {
    automation::ObjectPtr object = toObject(dispatch);
    if (object && !(object->has("Execute") && object->has("BeginTrans"))) automation::raise(automation::kTypeMismatch);
    return object;
}

std::atomic<DWORD> threadOfTheWindows{0}; ///< 0 while the register is closed

// The windows belong to this thread as long as the outermost Show lasts.
class Turn {
public:
    Turn() : outermost_(threadOfTheWindows.compare_exchange_strong(holder_, GetCurrentThreadId())) {}
    ~Turn() {
        if (outermost_) threadOfTheWindows = 0;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool outermost() const { return outermost_; }
    bool anothers() const { return !outermost_ && holder_ != GetCurrentThreadId(); }

private:
    DWORD holder_ = 0;
    bool outermost_;
};

// What the session holds of an apartment other than this one stays with that.
void takeOver(goodsreq::Module& module) {
    static unsigned last = 0; // only he who has the turn comes here
    noticeItsEnd();
    if (last && last != apartment()) module.abandonObjects();
    last = apartment();
}

class ClsGRtoShop final : public Unknown<_clsGRtoShop, ISupportErrorInfo, IProvideClassInfo> {
public:
    ClsGRtoShop() : component_(goodsreq::processModule()) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return guard([&] { *result = ComPtr<ITypeInfo>(&dispatchInfo()).detach(); });
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID&, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (const HRESULT checked = checkNames(names, count, ids); FAILED(checked)) return checked;
        HRESULT result = S_OK;
        const HRESULT called = guard([&] { result = dispatchInfo().GetIDsOfNames(names, count, ids); });
        return FAILED(called) ? called : result;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const IID&, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* information, UINT* wrongArgument) override {
        if (const HRESULT checked = checkParameters(flags, parameters); FAILED(checked)) return checked;
        // No member takes arguments; not every system's type information sees to that.
        constexpr WORD kAssigning = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
        if (flags & kAssigning) flags &= kAssigning;
        if (parameters->cArgs != (flags & kAssigning ? 1u : 0u)) return DISP_E_BADPARAMCOUNT;
        HRESULT invoked = S_OK;
        SetErrorInfo(0, nullptr); // what an earlier call left is not this one's
        const HRESULT called = guard([&] {
            invoked = dispatchInfo().Invoke(static_cast<_clsGRtoShop*>(this), id, flags, parameters, result,
                                            information, wrongArgument);
        });
        return FAILED(called) ? called : invoked;
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(const IID& id) override {
        return id == IID__clsGRtoShop ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        return guard([&] { *result = typeInfo(CLSID_clsGRtoShop).detach(); });
    }

    HRESULT STDMETHODCALLTYPE get_adocon(IDispatch** value) override {
        if (!value) return E_POINTER;
        *value = nullptr;
        return guard([&] { *value = toDispatch(component_.adocon).detach(); });
    }
    HRESULT STDMETHODCALLTYPE put_adocon(IDispatch* value) override {
        return guard([&] { component_.adocon = connectionIn(value); });
    }
    HRESULT STDMETHODCALLTYPE putref_adocon(IDispatch* value) override { return put_adocon(value); }

    HRESULT STDMETHODCALLTYPE get_strProjectKey(BSTR* value) override { return give(component_.strProjectKey, value); }
    HRESULT STDMETHODCALLTYPE put_strProjectKey(BSTR value) override { return take(component_.strProjectKey, value); }
    HRESULT STDMETHODCALLTYPE get_strMsgboxCaption(BSTR* value) override {
        return give(component_.strMsgboxCaption, value);
    }
    HRESULT STDMETHODCALLTYPE put_strMsgboxCaption(BSTR value) override {
        return take(component_.strMsgboxCaption, value);
    }
    HRESULT STDMETHODCALLTYPE get_intCompanyID(short* value) override { return give(component_.intCompanyID, value); }
    HRESULT STDMETHODCALLTYPE put_intCompanyID(short value) override { return take(component_.intCompanyID, value); }
    HRESULT STDMETHODCALLTYPE get_intUserID(short* value) override { return give(component_.intUserID, value); }
    HRESULT STDMETHODCALLTYPE put_intUserID(short value) override { return take(component_.intUserID, value); }
    HRESULT STDMETHODCALLTYPE get_intShopid(short* value) override { return give(component_.intShopid, value); }
    HRESULT STDMETHODCALLTYPE put_intShopid(short value) override { return take(component_.intShopid, value); }
    HRESULT STDMETHODCALLTYPE get_interfaceid(LONG* value) override { return give(component_.interfaceid, value); }
    HRESULT STDMETHODCALLTYPE put_interfaceid(LONG value) override { return take(component_.interfaceid, value); }
    HRESULT STDMETHODCALLTYPE get_dtProcessDate(DATE* value) override {
        return give(component_.dtProcessDate.days, value);
    }
    HRESULT STDMETHODCALLTYPE put_dtProcessDate(DATE value) override {
        return take(component_.dtProcessDate.days, value);
    }

    HRESULT STDMETHODCALLTYPE Show() override {
        const ComPtr<_clsGRtoShop> alive(this); // the host may let go of us while the register is open
        keepLoaded();                           // the session's values live as long as the process
        return guard([&] {
            const Turn turn;
            if (turn.anothers()) {
                if (!component_.mayShow()) return;
                throw automation::RunTimeError(RPC_E_WRONG_THREAD,
                                               "The goods requests are shown by another thread of this program. Close "
                                               "them there before showing them here.");
            }
            if (turn.outermost()) takeOver(goodsreq::processModule());
            component_.show();
        });
    }

private:
    ~ClsGRtoShop() = default;

    template <class Body> static HRESULT guard(Body&& body) { return guarded(IID__clsGRtoShop, body); }

    static HRESULT give(const std::string& field, BSTR* value) {
        if (!value) return E_POINTER;
        *value = nullptr;
        return guard([&] { *value = Bstr(field).detach(); });
    }
    template <class Field, class Outside> static HRESULT give(Field field, Outside* value) {
        if (!value) return E_POINTER;
        *value = field;
        return S_OK;
    }
    static HRESULT take(std::string& field, BSTR value) {
        return guard([&] { field = toUtf8(value); });
    }
    template <class Field, class Outside> static HRESULT take(Field& field, Outside value) {
        field = value;
        return S_OK;
    }

    goodsreq::Component component_;
    ModuleReference module_;
};

} // namespace

ComPtr<IUnknown> makeClsGRtoShop() { return ComPtr<IUnknown>::adopt(static_cast<_clsGRtoShop*>(new ClsGRtoShop)); }

const CLSID& clsGRtoShopId() { return CLSID_clsGRtoShop; }

} // namespace com
