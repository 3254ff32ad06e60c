#include "com/ObjectDispatch.h"

#include "automation/Members.h"
#include "com/Bstr.h"
#include "com/CallContext.h"
#include "com/ClassInfo.h"
#include "com/EnumVariants.h"
#include "com/Errors.h"
#include "com/MemberNames.h"
#include "com/ReferenceArgument.h"
#include "com/Variant.h"

#include <algorithm>
#include <exception>
#include <map>
#include <mutex>
#include <vector>

namespace com {
namespace {

using automation::Access;
using automation::Value;

// All living wrappers by their object. Guards their reference counts too: a wrapper whose last reference goes must
// not be found again. Never destroyed, since wrappers may outlive the DLL's own clean-up.
struct Wrappers {
    std::mutex mutex;
    std::map<const automation::Object*, ObjectDispatch*> living;
};
Wrappers& wrappers() {
    static Wrappers& all = *new Wrappers;
    return all;
}

// An interface id of this loaded DLL alone.
const IID& ownId() {
    static const IID id = [] {
        IID made{};
        CoCreateGuid(&made);
        return made;
    }();
    return id;
}

bool assigns(WORD flags) { return flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF); }

// The arguments of a call from outside, in call order, each by reference that came so.
class IncomingArguments {
public:
    explicit IncomingArguments(const DISPPARAMS& parameters)
        : outside_(parameters), before_(parameters.cArgs), variables_(parameters.cArgs) {
        arguments_.reserve(parameters.cArgs);
        for (std::size_t i = 0; i < parameters.cArgs; ++i) {
            const VARIANT& argument = at(i);
            Value value = toValue(argument);
            if (!(argument.vt & VT_BYREF)) {
                arguments_.push_back(std::move(value));
                continue;
            }
            before_[i] = value;
            variables_[i] = std::move(value);
            arguments_.push_back(Value::byReference(variables_[i]));
        }
    }

    automation::Arguments arguments() { return arguments_; }
    const Value& last() const { return arguments_.back(); }

    /// Writes to the caller's variables what the call changed.
    void writeBack() const {
        for (std::size_t i = 0; i < variables_.size(); ++i)
            if (at(i).vt & VT_BYREF && !(variables_[i] == before_[i])) writeThrough(at(i), variables_[i]);
    }

private:
    const VARIANT& at(std::size_t i) const { return outside_.rgvarg[outside_.cArgs - 1 - i]; }

    const DISPPARAMS& outside_;
    std::vector<Value> before_, variables_, arguments_;
};

Access accessOf(WORD flags, const IncomingArguments& arguments) {
    if (!assigns(flags)) return Access::get;
    if (!(flags & DISPATCH_PROPERTYPUTREF)) return Access::put;
    return flags & DISPATCH_PROPERTYPUT && !arguments.last().isObject() ? Access::put : Access::putRef;
}

Value call(automation::Object& object, DISPID id, const std::string& name, WORD flags, const DISPPARAMS& parameters) {
    if (id == DISPID_NEWENUM) return object.elements();
    IncomingArguments incoming(parameters);
    std::exception_ptr failure;
    Value result;
    try {
        result = object.invoke(accessOf(flags, incoming), name, incoming.arguments());
    } catch (...) {
        failure = std::current_exception();
    }
    incoming.writeBack();
    if (failure) std::rethrow_exception(failure);
    return result;
}

void fillResult(DISPID id, const Value& value, VARIANT& result) {
    if (id != DISPID_NEWENUM) return toVariant(value, result);
    result.punkVal = EnumVariants::make(*value.as<automation::Array>()).detach();
    result.vt = VT_UNKNOWN;
}

} // namespace

void (*ObjectDispatch::refused)(const IID& id) = nullptr;

ComPtr<IDispatch> ObjectDispatch::of(const automation::ObjectPtr& object) {
    Wrappers& all = wrappers();
    const std::lock_guard lock(all.mutex);
    if (const auto found = all.living.find(object.get()); found != all.living.end()) {
        ++found->second->references_;
        return ComPtr<IDispatch>::adopt(found->second);
    }
    auto wrapper = ComPtr<IDispatch>::adopt(new ObjectDispatch(object));
    try {
        all.living.emplace(object.get(), static_cast<ObjectDispatch*>(wrapper.get()));
    } catch (...) {
        delete static_cast<ObjectDispatch*>(wrapper.detach()); // not by Release, which takes the lock
        throw;
    }
    return wrapper;
}

automation::ObjectPtr ObjectDispatch::unwrap(IDispatch* dispatch) {
    const auto wrapper = ComPtr<IDispatch>(dispatch).query<ObjectDispatch>(ownId());
    return wrapper ? wrapper->object_ : nullptr;
}

HRESULT ObjectDispatch::QueryInterface(const IID& id, void** result) {
    if (!result) return E_POINTER;
    *result = id == IID_IUnknown || id == IID_IDispatch || id == ownId() ? this : nullptr;
    if (!*result) {
        if (refused) refused(id);
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG ObjectDispatch::AddRef() {
    const std::lock_guard lock(wrappers().mutex);
    return ++references_;
}

ULONG ObjectDispatch::Release() {
    {
        Wrappers& all = wrappers();
        const std::lock_guard lock(all.mutex);
        if (--references_) return references_;
        all.living.erase(object_.get());
    }
    delete this;
    return 0;
}

HRESULT ObjectDispatch::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT ObjectDispatch::GetTypeInfo(UINT index, LCID, ITypeInfo** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    const HRESULT called = guarded(IID_IDispatch, [&] { *result = classInfo(object_->className()).detach(); });
    if (FAILED(called)) return called;
    return *result ? S_OK : TYPE_E_ELEMENTNOTFOUND;
}

HRESULT ObjectDispatch::GetIDsOfNames(const IID&, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (const HRESULT checked = checkNames(names, count, ids); FAILED(checked)) return checked;
    HRESULT result = S_OK;
    const HRESULT called = guarded(IID_IDispatch, [&] {
        for (UINT i = 0; i < count; ++i) {
            const std::string name = toUtf8(std::wstring_view(names[i]));
            const bool known = i == 0 && (automation::sameName(name, "_NewEnum") || object_->has(name));
            ids[i] = known ? memberId(name) : DISPID_UNKNOWN; // names of arguments are known to nobody
            if (!known) result = DISP_E_UNKNOWNNAME;
        }
    });
    return FAILED(called) ? called : result;
}

HRESULT ObjectDispatch::Invoke(DISPID id, const IID&, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                               EXCEPINFO* information, UINT*) {
    if (const HRESULT checked = checkParameters(flags, parameters); FAILED(checked)) return checked;
    const CallIn incoming;
    const ComPtr<IDispatch> alive(this); // the member may give up the last reference to its own object
    try {
        const auto name = id == DISPID_NEWENUM ? std::string() : memberName(id);
        if (!name) return DISP_E_MEMBERNOTFOUND;
        const Value value = call(*object_, id, *name, flags, *parameters);
        if (!result) return S_OK;
        VariantInit(result);
        fillResult(id, value, *result);
        return S_OK;
    } catch (...) {
        const Failure failure = currentFailure();
        if (!information) return failure.result;
        fill(*information, failure);
        return DISP_E_EXCEPTION;
    }
}

HRESULT checkNames(const LPOLESTR* names, UINT count, const DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    return std::all_of(names, names + count, [](LPCOLESTR name) { return name; }) ? S_OK : E_POINTER;
}

HRESULT checkParameters(WORD flags, const DISPPARAMS* parameters) {
    if (!parameters || (parameters->cArgs && !parameters->rgvarg)) return E_POINTER;
    if (parameters->cNamedArgs && !parameters->rgdispidNamedArgs) return E_POINTER;
    const bool namesValue = parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    if (parameters->cNamedArgs && !(assigns(flags) && namesValue)) return DISP_E_NONAMEDARGS;
    if (assigns(flags) && !parameters->cArgs) return DISP_E_BADPARAMCOUNT;
    return S_OK;
}

} // namespace com
