// Labels and picture boxes.
#pragma once

#include "win32/ControlWindow.h"

namespace win32 {

class StaticWindow : public ControlWindow {
public:
    StaticWindow(FormWindow& form, forms::Control& control);

protected:
    RECT area(RECT wanted) const override;
    bool clicksByMouse() const override { return true; }
    void apply(forms::Aspect aspect) override;
};

} // namespace win32
