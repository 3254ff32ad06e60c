#include "com/CallContext.h"

#include "automation/OutsideCall.h"

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

} // namespace

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

// A context that the component has left in force goes too; the order would count as broken otherwise.
CallOut::~CallOut() {
    if (cookie_) DeactivateActCtx(DEACTIVATE_ACTCTX_FLAG_FORCE_EARLY_DEACTIVATION, cookie_);
}

} // namespace com
