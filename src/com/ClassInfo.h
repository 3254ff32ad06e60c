// Type information that says a class's name and no more.
#pragma once

#include "com/ComPtr.h"

#include <oaidl.h>

#include <string>

namespace com {

/// For components that ask for an object's class by type. None where the system makes none.
ComPtr<ITypeInfo> classInfo(const std::string& className);

/// The class's name that an object's own type information tells; "Object" where it tells none.
std::string classNameOf(IDispatch& dispatch);

} // namespace com
