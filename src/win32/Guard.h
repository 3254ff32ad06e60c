// The wall that no exception passes: window procedures and callbacks run their bodies inside it.
#pragma once

#include "win32/Platform.h"

#include <utility>

namespace win32 {

/// Runs `body` and gives its result, or `otherwise` when it throws: an exception that unwinds through the system's own
/// frames would end the host's process. Handlers of forms have been reported by then, so nothing is lost but the rest.
template <class Body> LRESULT guarded(Body&& body, LRESULT otherwise = 0) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        OutputDebugStringW(L"goodsreq: an exception was stopped at a window's edge\n");
        return otherwise;
    }
}

} // namespace win32
