#include "com/CallContext.h"

#include "automation/OutsideCall.h"

#include <immintrin.h>

namespace com {
namespace {

thread_local const CallIn* innermost = nullptr;

// With a reference of its own, unless it is null.
HANDLE currentContext() {
    HANDLE context = nullptr;
    return GetCurrentActCtx(&context) ? context : nullptr;
}

void release(HANDLE context) {
    if (context) ReleaseActCtx(context);
}

constexpr unsigned kPlainControl = 0x1F80; // of SSE: nearest, every exception masked
constexpr unsigned kFlags = 0x3F;          // what happened since they were cleared

bool isPlain(unsigned sse) {
    unsigned short x87 = 0; // its plain value: nearest, 64 bits, every exception masked
    asm volatile("fnstcw %0" : "=m"(x87));
    return x87 == 0x37F && (sse & ~kFlags) == kPlainControl;
}

void setPlain() {
    std::fesetenv(FE_PC64_ENV);
    _mm_setcsr(kPlainControl);
}

} // namespace

PlainArithmetic::PlainArithmetic() noexcept : sse_(_mm_getcsr()), changed_(!isPlain(sse_)) {
    if (!changed_) return;
    std::fegetenv(&x87_);
    setPlain();
}

// What happened meanwhile would raise an exception at the host's next step, so its own flags come back too.
PlainArithmetic::~PlainArithmetic() {
    if (!changed_) return;
    std::fesetenv(&x87_);
    _mm_setcsr(sse_);
}

CallIn::CallIn() noexcept : outer_(innermost) {
    if (outer_ && !automation::OutsideCall::lasts()) { // out of our own message loop, thus under our visual styles
        context_ = outer_->context_;
        if (context_) AddRefActCtx(context_);
    } else {
        context_ = currentContext();
    }
    innermost = this;
}

CallIn::~CallIn() {
    innermost = outer_;
    release(context_);
}

CallOut::CallOut() noexcept {
    if (!innermost) return;
    const HANDLE current = currentContext();
    if (current != innermost->context_ && !ActivateActCtx(innermost->context_, &cookie_)) cookie_ = 0;
    release(current);
}

// A context that the component has left in force goes too; the order would count as broken otherwise. So does another
// arithmetic, which some libraries set when they are loaded.
CallOut::~CallOut() {
    if (innermost && !isPlain(_mm_getcsr())) setPlain();
    if (cookie_) DeactivateActCtx(DEACTIVATE_ACTCTX_FLAG_FORCE_EARLY_DEACTIVATION, cookie_);
}

} // namespace com
