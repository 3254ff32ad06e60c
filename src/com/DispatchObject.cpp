#include "com/DispatchObject.h"

#include "automation/OutsideCall.h"
#include "automation/RunTimeError.h"
#include "com/Apartment.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/CallContext.h"
#include "com/ClassInfo.h"
#include "com/Errors.h"
#include "com/ObjectDispatch.h"
#include "com/ReferenceArgument.h"
#include "com/Variant.h"

#include <list>
#include <memory>
#include <mutex>
#include <vector>

namespace com {
namespace {

using automation::Access;
using automation::Value;

constexpr std::size_t kMostElements = 1 << 24; ///< of a collection

// Never destroyed: objects may outlive the DLL's own clean-up at the end of the process.
struct Known {
    std::mutex mutex;
    std::map<std::pair<IUnknown*, unsigned>, std::weak_ptr<DispatchObject>> living; ///< by apartment, too
};
Known& known() {
    static Known& all = *new Known;
    return all;
}

struct ExceptionInformation : EXCEPINFO {
    ExceptionInformation() : EXCEPINFO{} {}
    ExceptionInformation(const ExceptionInformation&) = delete;
    ExceptionInformation& operator=(const ExceptionInformation&) = delete;
    ~ExceptionInformation() { clear(); }
    void clear() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
        static_cast<EXCEPINFO&>(*this) = EXCEPINFO{};
    }
};

// A call's arguments in the order that COM wants, last first.
class OutgoingArguments {
public:
    explicit OutgoingArguments(automation::Arguments arguments) : variants_(arguments.size()) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            Variant& variant = variants_[arguments.size() - 1 - i];
            if (arguments[i].isReference())
                references_.emplace_back(arguments[i].resolved(), variant);
            else
                toVariant(arguments[i], variant);
        }
    }
    DISPPARAMS parameters() {
        DISPPARAMS result{};
        result.rgvarg = variants_.data();
        result.cArgs = static_cast<UINT>(variants_.size());
        return result;
    }
    void readBack() {
        for (OutgoingReference& reference : references_) reference.readBack();
    }

private:
    std::vector<Variant> variants_;
    std::list<OutgoingReference> references_; // their addresses are what the variants hold; most calls have none
};

HRESULT attempt(IDispatch& dispatch, DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT* result,
                ExceptionInformation& information) {
    information.clear();
    const automation::OutsideCall outside;
    const CallOut call;
    SetErrorInfo(0, nullptr); // what an earlier call left is not this one's
    return dispatch.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &information, nullptr);
}

HRESULT assign(IDispatch& dispatch, DISPID id, Access access, DISPPARAMS& parameters,
               ExceptionInformation& information) {
    DISPID named = DISPID_PROPERTYPUT;
    parameters.rgdispidNamedArgs = &named;
    parameters.cNamedArgs = 1;
    const bool byReference = access == Access::putRef;
    const WORD first = byReference ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    const HRESULT result = attempt(dispatch, id, first, parameters, nullptr, information);
    if (result != DISP_E_MEMBERNOTFOUND) return result;
    const WORD other = byReference ? DISPATCH_PROPERTYPUT : DISPATCH_PROPERTYPUTREF;
    return attempt(dispatch, id, other, parameters, nullptr, information);
}

} // namespace

std::shared_ptr<DispatchObject> DispatchObject::of(IDispatch* dispatch) {
    const auto identity = ComPtr<IDispatch>(dispatch).query<IUnknown>(IID_IUnknown);
    const std::pair key(identity.get(), apartment()); // what an ended one has abandoned may stand at the same address
    Known& all = known();
    {
        const std::lock_guard lock(all.mutex);
        const auto found = all.living.find(key);
        if (found != all.living.end())
            if (auto living = found->second.lock()) return living;
    }
    std::shared_ptr<DispatchObject> made(new DispatchObject(dispatch, identity.get(), key.second));
    const std::lock_guard lock(all.mutex);
    all.living[key] = made;
    return made;
}

DispatchObject::~DispatchObject() {
    Known& all = known();
    const std::lock_guard lock(all.mutex);
    const auto found = all.living.find({identity_.get(), apartment_});
    if (found != all.living.end() && found->second.expired()) all.living.erase(found);
}

DISPID DispatchObject::idOf(std::string_view member) const {
    if (member.empty()) return DISPID_VALUE;
    if (const auto found = ids_.find(member); found != ids_.end()) return found->second;
    std::wstring name = toWide(member);
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    const CallOut call; // it may load the type library that the host names
    const HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND) return DISPID_UNKNOWN; // may come later
    if (FAILED(result)) raiseResult(result);
    ids_.emplace(member, id);
    return id;
}

Value DispatchObject::invoke(Access access, std::string_view member, automation::Arguments arguments) {
    const DISPID id = idOf(member);
    if (id == DISPID_UNKNOWN) automation::raise(automation::kNoSuchMember);
    const auto alive = dispatch_; // the call may give up the last reference to this object
    OutgoingArguments outgoing(arguments);
    DISPPARAMS parameters = outgoing.parameters();
    ExceptionInformation information;
    Variant result;
    const HRESULT called = access == Access::get ? attempt(*alive, id, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                                                           parameters, &result, information)
                                                 : assign(*alive, id, access, parameters, information);
    outgoing.readBack();
    if (FAILED(called)) raiseResult(called, &information, alive.get());
    return toValue(result);
}

bool DispatchObject::has(std::string_view member) const {
    try {
        return idOf(member) != DISPID_UNKNOWN;
    } catch (const automation::RunTimeError&) {
        return false;
    }
}

std::string DispatchObject::className() const { return classNameOf(*dispatch_); }

automation::Array DispatchObject::elements() {
    const auto alive = dispatch_;
    DISPPARAMS none{};
    ExceptionInformation information;
    Variant result;
    const HRESULT called =
        attempt(*alive, DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, none, &result, information);
    if (FAILED(called)) raiseResult(called, &information, alive.get());
    ComPtr<IEnumVARIANT> enumeration;
    if (result.vt == VT_UNKNOWN || result.vt == VT_DISPATCH)
        enumeration = ComPtr<IUnknown>(result.punkVal).query<IEnumVARIANT>(IID_IEnumVARIANT);
    if (!enumeration) automation::raise(automation::kNoSuchMember);
    automation::Array elements;
    while (true) {
        Variant element;
        ULONG fetched = 0;
        const HRESULT next = enumeration->Next(1, &element, &fetched);
        if (FAILED(next)) raiseResult(next);
        if (next != S_OK || fetched == 0) return elements;
        if (elements.size() == kMostElements) throw automation::RunTimeError(7, "Out of memory"); // it has no end
        elements.push_back(toValue(element));
    }
}

automation::ObjectPtr toObject(IDispatch* dispatch) {
    if (!dispatch) return nullptr;
    if (auto own = ObjectDispatch::unwrap(dispatch)) return own;
    return DispatchObject::of(dispatch);
}

ComPtr<IDispatch> toDispatch(const automation::ObjectPtr& object) {
    if (!object) return {};
    if (const auto* foreign = dynamic_cast<const DispatchObject*>(object.get())) return foreign->dispatch();
    return ObjectDispatch::of(object);
}

} // namespace com
