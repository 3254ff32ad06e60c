// The window of one showing of a form: it holds the controls' windows, follows the model, and passes on what happens.
#pragma once

#include "forms/Form.h"
#include "win32/ControlWindow.h"
#include "win32/Dialogs.h"
#include "win32/Dpi.h"
#include "win32/Owned.h"
#include "win32/ToolTips.h"

#include <memory>
#include <vector>

namespace win32 {

class FormWindow : public forms::FormView {
public:
    /// Creates the window, hidden, in the middle of `around`. `owner` is a form's window, or null: a host's window
    /// would take the form with it when it goes. `hourglass` belongs to the desktop.
    FormWindow(forms::Form& form, HWND owner, HWND around, const bool& hourglass);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    /// Whether `window` is, or lies in, a window of this class of ours.
    static bool owns(HWND window);

    /// From now on the form has the screen: the thread's other windows are switched off.
    void show();
    /// The form stands and has been activated: from now on its activations are logged.
    void announce();

    HWND handle() const { return window_; }
    forms::Form& form() const { return form_; }
    /// False once the form is unloaded or its window destroyed; what is left then only waits for its end.
    bool alive() const { return alive_; }
    Dpi dpi() const { return dpi_; }
    const DialogFont& font() const { return *font_; }
    ToolTips& toolTips() { return *toolTips_; }
    /// What lies behind a control: the colour of the frame that it stands in, else the form's.
    COLORREF backgroundOf(const forms::Control& control) const;
    HBRUSH brush(COLORREF colour);

    /// The person's focus is in `control`'s window now.
    void focusArrived(ControlWindow& control);
    /// `control` has something to catch up with once the running handler has returned.
    void refreshLater(ControlWindow& control);

    void captionChanged() override;
    void sizeChanged() override;
    void coloursChanged() override;
    void focusChanged(forms::Control& control) override;
    void formUnloaded() override;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    void createControls();
    /// The model goes on without this window.
    void leaveModel();
    /// The window goes without the form being asked: somebody destroyed it.
    void destroyed();
    /// Pixels of the whole window that holds the form as it was designed, or last sized by its own code.
    SIZE designedSize() const;
    /// The same, and no larger than the screen has room for: what can be resized gives way.
    SIZE fittingSize(const RECT& work) const;
    void showIcon();
    void placeInMiddle(HWND around);
    void resized();
    void dpiChanged(Dpi dpi, const RECT* suggested);
    /// Back onto the screen, as far as it fits there.
    void keepOnScreen();
    void restoreFocus();
    /// Before the windows of other programs, as the program has been activated by one of its own that is switched off.
    void comeForward();
    LRESULT coloursOf(HWND control, HDC dc);
    void eraseBackground(HDC dc);
    ControlWindow* windowOf(HWND control) const;

    static constexpr UINT kRefresh = WM_APP + 1; ///< lParam: the control to refresh
    static constexpr UINT kComeForward = WM_APP + 2;

    forms::Form& form_;
    const bool& hourglass_;
    HWND window_ = nullptr;
    Dpi dpi_;
    std::unique_ptr<DialogFont> font_;
    std::unique_ptr<ToolTips> toolTips_;
    std::unique_ptr<Modality> modality_;
    std::vector<std::unique_ptr<ControlWindow>> controls_;
    std::vector<std::pair<COLORREF, OwnedBrush>> brushes_;
    OwnedIcon icon_, smallIcon_;
    SIZE designed_{}; ///< twips, of the inside
    bool alive_ = true;
    bool announced_ = false;
    bool sizing_ = false; ///< the window follows the model, not the person
    OwnedWindow owned_;   ///< the window again, once it stands; it goes before all that it uses
};

/// What the taskbar leaves of the screen that `window` is on; of the first one where it is on none.
RECT workAreaOf(HWND window);

/// The colour that a model's number means: 0x00BBGGRR, or one of the system's when the highest bit is set.
COLORREF colourOf(std::int32_t colour, int systemColour);
/// Whether the system's own colours hold on every form, whatever the suite gave it: in high contrast, and where they
/// are dark.
bool systemColoursHold();

} // namespace win32
