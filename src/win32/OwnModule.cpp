#include "win32/OwnModule.h"

#include "win32/Text.h"
#include "win32/Win32Desktop.h"

namespace win32 {
namespace {

HANDLE styleContext() {
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.hModule = ownModule();
    context.lpResourceName = MAKEINTRESOURCEW(2);
    return CreateActCtxW(&context);
}

} // namespace

VisualStyles::VisualStyles() {
    static const HANDLE context = styleContext(); // Never released: the DLL as a rule stays as long as the process.
    if (context != INVALID_HANDLE_VALUE && !ActivateActCtx(context, &cookie_)) cookie_ = 0;
}

VisualStyles::~VisualStyles() {
    if (cookie_) DeactivateActCtx(0, cookie_);
}

std::string moduleFolder() {
    const std::wstring path = com::ownPath();
    return narrow(path.substr(0, path.find_last_of(L"\\/")));
}

} // namespace win32
