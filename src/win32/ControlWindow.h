// The window of one control: shows its model, and turns keys and mouse into the model's input.
#pragma once

#include "forms/Control.h"
#include "win32/Platform.h"

#include <memory>
#include <string>
#include <vector>

namespace win32 {

class FormWindow;

class ControlWindow : public forms::ControlView {
public:
    ControlWindow(FormWindow& form, forms::Control& control);
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    HWND handle() const { return window_; }
    forms::Control& control() const { return control_; }
    virtual void takeFocus();

    /// The view's side of the model; lets nothing escape.
    void changed(forms::Control& control, forms::Aspect aspect) final;
    /// A WM_COMMAND code of this control.
    virtual void commanded(int code) { (void)code; }
    virtual LRESULT notified(NMHDR& header) { return (void)header, 0; }
    /// Catches up with the model after refreshLater().
    virtual void refresh() {}
    virtual void fontChanged();
    /// Takes the visual style off or on again, as the system's colours want it.
    void followSystemColours();
    virtual bool readOnly() const { return false; }

protected:
    /// Creates the window with the model's state; called once, by the constructor of the kind.
    void create(const wchar_t* windowClass, DWORD style, DWORD exStyle);
    /// Takes `window` (the control's own, or one inside it) under this object's procedure.
    void hook(HWND window);

    virtual void apply(forms::Aspect aspect);
    /// Pixels within the form. `wanted` is where the model places the control.
    virtual RECT area(RECT wanted) const { return wanted; }
    void place();
    /// The model's text; no more of it than a window shows, unless it can be edited there.
    std::wstring shownText() const;
    virtual LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT native(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// Tells the model what the window knows better (caret, selection) before input reaches its handlers.
    virtual void beforeInput() {}
    /// A key that the handlers left; answers whether it is used up.
    virtual bool useKey(int keyCode, int shift) { return (void)keyCode, (void)shift, false; }
    /// Whether a character that the handlers left goes to the native control.
    virtual bool takesCharacter(wchar_t character) const { return (void)character, false; }
    /// The pointer moved to a point in pixels.
    virtual void pointerAt(POINT point) { (void)point; }
    /// A press of the right button, which the native control does not see.
    virtual void rightPressed(POINT point) { (void)point; }
    /// Whether letting the left button go counts as a click of its own.
    virtual bool clicksByMouse() const { return false; }
    bool alive() const;

    FormWindow& form_;
    bool updating_ = false; ///< the window follows the model: what it reports is no input

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT keyDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT character(HWND window, WPARAM wParam, LPARAM lParam);
    LRESULT keyUp(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT buttonDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT buttonUp(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    forms::MouseEvent mouseEvent(forms::MouseButton button, HWND window, LPARAM lParam) const;

    struct Hook {
        HWND window;
        WNDPROC native;
    };
    forms::Control& control_;
    HWND window_ = nullptr;
    std::vector<Hook> hooks_;
    bool pressed_ = false;
};

/// The text that a window of this process shows.
std::wstring windowText(HWND window);

/// Bits of forms::Shift as the keyboard stands for the message in hand.
int shiftState();

/// The window for a control's kind, with the model's state.
std::unique_ptr<ControlWindow> makeControlWindow(FormWindow& form, forms::Control& control);

} // namespace win32
