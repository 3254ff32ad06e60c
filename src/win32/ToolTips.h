// The tool tips of one form's controls.
#pragma once

#include "win32/Platform.h"

#include <map>
#include <string>

namespace win32 {

class ToolTips {
public:
    explicit ToolTips(HWND form);

    /// The tip over `control` from now on; empty for none. A tip that stands is taken down when its text changes.
    void set(HWND control, const std::string& text);

private:
    HWND window_;
    HWND form_;
    std::map<HWND, std::string> texts_;
};

} // namespace win32
