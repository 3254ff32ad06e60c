#include "win32/ToolTips.h"

#include "win32/OwnModule.h"
#include "win32/Text.h"

namespace win32 {
namespace {

constexpr int kWidestTip = 600; ///< pixels; longer tips break into lines

} // namespace

ToolTips::ToolTips(HWND form)
    : window_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr, ownModule(),
                              nullptr)),
      form_(form) {
    SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, kWidestTip);
}

void ToolTips::set(HWND control, const std::string& whole) {
    const std::string text(beginning(whole));
    const auto known = texts_.find(control);
    if (known == texts_.end() ? text.empty() : known->second == text) return;
    std::wstring shown = wide(text);
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE; // Accepted by every version of the control.
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = form_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = shown.data();
    if (known == texts_.end()) {
        SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    } else {
        SendMessageW(window_, TTM_POP, 0, 0);
        SendMessageW(window_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    texts_[control] = text;
}

} // namespace win32
