// A record of what the windows do, one line an event, for scripts that wait for a window instead of sleeping.
#pragma once

#include <string_view>

namespace win32 {

/// Appends "event detail" to the file that GOODSREQ_WINDOW_LOG names; without it, or when the file cannot be written,
/// nothing happens. Line breaks in `detail` are written as \n. Events: active, unloaded, focus, message, answered,
/// menu, chosen; and, when the last form has gone, alive with what the module has not given back to the system.
void logWindow(std::string_view event, std::string_view detail);

} // namespace win32
