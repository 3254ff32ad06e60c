// Tells whether a call of this thread has left the module: a component may serve the thread's messages before it
// returns.
#pragma once

#include <utility>

namespace automation {

namespace detail {
inline thread_local int outsideCalls = 0;
}

/// One call to an object that is not ours, while it lasts.
class OutsideCall {
public:
    OutsideCall() { ++detail::outsideCalls; }
    ~OutsideCall() { --detail::outsideCalls; }
    OutsideCall(const OutsideCall&) = delete;
    OutsideCall& operator=(const OutsideCall&) = delete;

    static bool lasts() { return detail::outsideCalls > 0; }
};

/// A stretch of the module's own within such a call, such as a form that an event handler shows.
class OwnStretch {
public:
    OwnStretch() : outside_(std::exchange(detail::outsideCalls, 0)) {}
    ~OwnStretch() { detail::outsideCalls = outside_; }
    OwnStretch(const OwnStretch&) = delete;
    OwnStretch& operator=(const OwnStretch&) = delete;

private:
    int outside_;
};

} // namespace automation
