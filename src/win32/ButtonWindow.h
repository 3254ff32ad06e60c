// Push buttons, check boxes, option buttons and the borders of frames.
#pragma once

#include "win32/ControlWindow.h"

namespace win32 {

class ButtonWindow : public ControlWindow {
public:
    ButtonWindow(FormWindow& form, forms::Control& control);
    void commanded(int code) override;

protected:
    void apply(forms::Aspect aspect) override;
    LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    bool useKey(int keyCode, int shift) override;

private:
    void showState();

    bool focusing_ = false;
};

} // namespace win32
