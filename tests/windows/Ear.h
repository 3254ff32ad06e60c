// A window that nobody sees, through which other threads have something done on the thread that made it.
#pragma once

#include "win32/Platform.h"

#include <functional>

namespace support {

class Ear {
public:
    Ear();
    ~Ear();
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    /// Runs `body` on the ear's thread, between two messages of it, and waits for its end. False when that does not
    /// come about within that many milliseconds.
    bool hears(const std::function<void()>& body, UINT patience) const;
    /// Has `body` run after what has been posted to the ear's thread by now. Both must live until then.
    void hearsLater(const std::function<void()>& body) const;

private:
    HWND window_;
};

} // namespace support
