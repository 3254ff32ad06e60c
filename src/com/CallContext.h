// The activation context of the calls between a host, this module and its components, and the arithmetic of calls in.
// While a form shows, the module's visual styles are in force on the thread; under those a component's windows would
// look otherwise than everywhere else, and the classes that the host's own context names would not be found. So a call
// out runs as the call in came.
#pragma once

#include <windows.h>

#include <cfenv>

namespace com {

/// The processor's arithmetic as a program starts with it: full precision, no floating-point exceptions. Hosts have it
/// otherwise at times, and have it back when this ends.
class PlainArithmetic {
public:
    PlainArithmetic() noexcept;
    ~PlainArithmetic();
    PlainArithmetic(const PlainArithmetic&) = delete;
    PlainArithmetic& operator=(const PlainArithmetic&) = delete;

private:
    unsigned sse_; ///< kept apart, since the library's routines leave it alone on 32 bits
    bool changed_;
    std::fenv_t x87_;
};

/// A call into the module, while it lasts: remembers the context that it came with.
class CallIn {
public:
    CallIn() noexcept;
    ~CallIn();
    CallIn(const CallIn&) = delete;
    CallIn& operator=(const CallIn&) = delete;

private:
    friend class CallOut;

    PlainArithmetic arithmetic_;
    const CallIn* outer_;
    HANDLE context_ = nullptr; ///< null is the process's own
};

/// A call out of the module, while it lasts: puts the remembered context in force where another one is.
class CallOut {
public:
    CallOut() noexcept;
    ~CallOut();
    CallOut(const CallOut&) = delete;
    CallOut& operator=(const CallOut&) = delete;

private:
    ULONG_PTR cookie_ = 0;
};

} // namespace com
