// Run-time errors on their way over the edge: HRESULT and error information outside, RunTimeError inside.
#pragma once

#include "automation/RunTimeError.h"
#include "com/CallContext.h"

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace com {

/// The number that users see for a failed call: 13 for DISP_E_TYPEMISMATCH, the low 16 bits for the facility of the
/// language's own errors (0x800A....), and so on; the HRESULT itself where the language has no number for it.
long errorNumber(HRESULT result);

/// The HRESULT that carries this number: 0x800A.... for 1 to 65535, else the number itself if it is a failure.
HRESULT errorResult(long number);

/// The system's wording for a failed call.
std::string systemDescription(HRESULT result);

/// "0x80040154: Class not registered"
std::string resultText(HRESULT result);

/// Raises what a failed call reports. `information` is what the call filled in, or null; where that holds nothing, the
/// error information that the call of `called` has left on the thread.
[[noreturn]] void raiseResult(HRESULT result, EXCEPINFO* information = nullptr, IUnknown* called = nullptr);

/// An exception, decoded for a caller outside.
struct Failure {
    HRESULT result = E_UNEXPECTED;
    std::string source = "goodsreq";
    std::string description;
};

/// Of the exception being handled; only inside a catch clause. Never throws.
Failure currentFailure() noexcept;

/// Leaves the failure as the thread's error information, for callers through the virtual table.
void setErrorInfo(const Failure& failure, const IID& interfaceId) noexcept;
/// Leaves it where a late-bound caller looks for it.
void fill(EXCEPINFO& information, const Failure& failure) noexcept;

/// Runs the body of a method of a COM interface; nothing unwinds out of it, and what it calls outside is called in the
/// caller's activation context.
template <class Body> HRESULT guarded(const IID& interfaceId, Body&& body) noexcept {
    const CallIn call;
    try {
        body();
        return S_OK;
    } catch (...) {
        const Failure failure = currentFailure();
        setErrorInfo(failure, interfaceId);
        return failure.result;
    }
}

} // namespace com
