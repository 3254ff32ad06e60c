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
    /// Takes over the entry that the window shows as chosen.
    void chooseShown();
    void closeList(bool accepts);
    bool isOpen() const;

    bool open_ = false;     ///< the list is
    bool accepted_ = false; ///< what is chosen in it counts
    bool entriesStale_ = false;
};

} // namespace win32
