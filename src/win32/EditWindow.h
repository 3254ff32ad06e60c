// A text box.
#pragma once

#include "forms/TextBox.h"
#include "win32/ControlWindow.h"
#include "win32/Owned.h"

#include <string>

namespace win32 {

class EditWindow : public ControlWindow {
public:
    EditWindow(FormWindow& form, forms::TextBox& box);
    void fontChanged() override;
    void commanded(int code) override;
    bool readOnly() const override { return box_.locked(); }

protected:
    RECT area(RECT wanted) const override;
    void apply(forms::Aspect aspect) override;
    LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void beforeInput() override;
    bool takesCharacter(wchar_t character) const override;
    bool clicksByMouse() const override { return true; }

private:
    std::wstring text() const;
    void textChanged();
    void showSelection();
    /// Whether `inserted` may take the selection's place, by the box's own rule for text that comes as a whole.
    bool accepts(const std::wstring& inserted) const;
    bool acceptsClipboard() const;

    forms::TextBox& box_;
    OwnedFont fixedPitch_; ///< our own, where the box wants letters of one width
};

} // namespace win32
