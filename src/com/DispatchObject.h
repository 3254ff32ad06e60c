// A component's object, as the module sees it.
#pragma once

#include "automation/Members.h"
#include "automation/Object.h"
#include "com/ComPtr.h"

#include <oaidl.h>

#include <map>
#include <string>

namespace com {

/// Belongs to the thread that made it, like the component behind it.
class DispatchObject final : public automation::Object {
public:
    /// The Object of this component: the living one, or a new one.
    static std::shared_ptr<DispatchObject> of(IDispatch* dispatch);
    ~DispatchObject() override;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;
    std::string className() const override;
    automation::Array elements() override;

    const ComPtr<IDispatch>& dispatch() const { return dispatch_; }

private:
    DispatchObject(IDispatch* dispatch, IUnknown* identity, unsigned apartment)
        : dispatch_(dispatch), apartment_(apartment), identity_(identity) {}
    /// DISPID_UNKNOWN when the component has no such member. Each name is looked up once.
    DISPID idOf(std::string_view member) const;

    ComPtr<IDispatch> dispatch_;
    unsigned apartment_;
    ComPtr<IUnknown> identity_; ///< what tells two interfaces to be of one object
    mutable std::map<std::string, DISPID, automation::NameLess> ids_;
};

} // namespace com
