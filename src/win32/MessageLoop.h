// The loop of a modal form, and the rules by which keys find their control.
#pragma once

#include "win32/Platform.h"

#include <functional>

namespace win32 {

/// What a control's window procedure answers to a key that a handler swallowed: it makes no character.
inline constexpr LRESULT kKeySwallowed = 0x5357;

/// Serves this thread's messages while `goesOn`. A request to quit ends it early and is left in the queue for the host.
///
/// A key is handled whole before the next one is fetched: KeyDown, then the character it makes, for the control that it
/// was pressed on. The next key goes to the control that has the focus by then, also when it was queued before.
void serve(const std::function<bool()>& goesOn);

} // namespace win32
