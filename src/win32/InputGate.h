// Holds a person's input back while a call has left the module, so that no command starts inside another.
#pragma once

#include "win32/Platform.h"

#include <functional>

namespace win32 {

/// Whether this message to one of our windows comes at such a time. Its keys are kept in their order; clicks are let
/// go, since what they were meant for may be gone afterwards.
bool isHeldBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Handles the oldest key that was kept, with the Shift and Control keys as they were then. False when there is none.
bool handleKeptKey(const std::function<void(const MSG&)>& handle);

/// What was kept for forms that are gone is not the next one's.
void forgetKeptKeys();

} // namespace win32
