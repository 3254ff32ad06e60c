// Numbers for member names, the same for every object of the process.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <optional>
#include <string>
#include <string_view>

namespace com {

/// The number of a name, given when it is first asked for and never taken back. Names compare without case; the empty
/// name is DISPID_VALUE, "_NewEnum" is DISPID_NEWENUM.
DISPID memberId(std::string_view name);

/// The name of a number that memberId() gave.
std::optional<std::string> memberName(DISPID id);

} // namespace com
