// A drop-down box.
#pragma once

#include "forms/ComboBox.h"
#include "win32/ControlWindow.h"

namespace win32 {

class ComboWindow : public ControlWindow {
public:
    ComboWindow(FormWindow& form, forms::ComboBox& box);
    void commanded(int code) override;
    void refresh() override;
    void fontChanged() override;

protected:
    RECT area(RECT wanted) const override;
    void apply(forms::Aspect aspect) override;
    LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    bool useKey(int keyCode, int shift) override;
    bool takesCharacter(wchar_t character) const override;

private:
    void fill();
    void showChoice();
    int fieldHeight() const;

    forms::ComboBox& box_;
    bool entriesStale_ = false;
};

} // namespace win32
