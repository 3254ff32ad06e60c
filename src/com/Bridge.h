// The two bridges of late binding: a component's object as one of ours, and one of ours as a component's.
#pragma once

#include "automation/Object.h"
#include "com/ComPtr.h"

#include <oaidl.h>

namespace com {

/// The object behind the dispatch interface. One of our own, handed out before, comes back as itself; any other is
/// the same Object each time while somebody holds it. No interface gives no object.
automation::ObjectPtr toObject(IDispatch* dispatch);

/// The dispatch interface of the object: the component's own where the object is one of a component, else one
/// wrapper for each object while anybody holds it. No object gives no interface.
ComPtr<IDispatch> toDispatch(const automation::ObjectPtr& object);

} // namespace com
