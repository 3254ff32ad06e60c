// A record of what the windows do, one line an event, for scripts that wait for a window instead of sleeping.
#pragma once

#include <string_view>

namespace win32 {

/// Appends "event detail" to the file that GOODSREQ_WINDOW_LOG names; without it, or when the file cannot be written,
/// nothing happens. `detail` is a name that this system's forms and controls have. Events: active, unloaded, focus,
/// message, answered, menu, chosen; and, when the last form has gone, alive with what the module has not given back to
/// the system; refused interface, with its id.
void logWindow(std::string_view event, std::string_view detail);

/// The same with a text that may name items, shops and people: it is written only where GOODSREQ_WINDOW_TEXTS is 1, as
/// the sandbox has it, and the event alone otherwise. Line breaks in it are written as \n.
void logText(std::string_view event, std::string_view text);

} // namespace win32
