#include "win32/ControlWindow.h"

#include "win32/FormWindow.h"
#include "win32/Guard.h"
#include "win32/InputGate.h"
#include "win32/OwnModule.h"
#include "win32/Text.h"

#include <uxtheme.h>

namespace win32 {

namespace {

constexpr const wchar_t* kNoStyle = L" "; // Wine takes an empty name for none given.

} // namespace

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), 0);
    if (!text.empty())
        text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

ControlWindow::ControlWindow(FormWindow& form, forms::Control& control) : form_(form), control_(control) {}

void ControlWindow::create(const wchar_t* windowClass, DWORD style, DWORD exStyle) {
    if (control_.visible()) style |= WS_VISIBLE;
    if (!control_.enabled()) style |= WS_DISABLED;
    const RECT r = area(form_.dpi().pixels(control_.bounds()));
    window_ = CreateWindowExW(exStyle, windowClass, shownText().c_str(), style | WS_CHILD, r.left, r.top,
                              r.right - r.left, r.bottom - r.top, form_.handle(), nullptr, ownModule(), nullptr);
    if (!window_) throw automation::RunTimeError(7, "The window of " + control_.name() + " could not be created");
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(form_.font().handle()), FALSE);
    hook(window_);
    form_.toolTips().set(window_, control_.toolTip());
    control_.attach(this);
}

void ControlWindow::hook(HWND window) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    hooks_.push_back({window, reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC))});
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlWindow::procedure));
    if (systemColoursHold()) SetWindowTheme(window, kNoStyle, kNoStyle);
}

// A visual style paints in colours of its own, on which the system's texts may not be read.
void ControlWindow::followSystemColours() {
    const wchar_t* const style = systemColoursHold() ? kNoStyle : nullptr;
    for (const Hook& hook : hooks_) SetWindowTheme(hook.window, style, style);
}

LRESULT ControlWindow::native(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    for (const Hook& hook : hooks_)
        if (hook.window == window) return CallWindowProcW(hook.native, window, message, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    if (isHeldBack(window, message, wParam, lParam)) return 0;
    return guarded([&] {
        return self->alive() ? self->onMessage(window, message, wParam, lParam)
                             : self->native(window, message, wParam, lParam);
    });
}

bool ControlWindow::alive() const { return form_.alive(); }

void ControlWindow::changed(forms::Control&, forms::Aspect aspect) {
    guarded([&] { return apply(aspect), 0; });
}

void ControlWindow::apply(forms::Aspect aspect) {
    switch (aspect) {
    case forms::Aspect::text:
        updating_ = true;
        SetWindowTextW(window_, shownText().c_str());
        updating_ = false;
        break;
    case forms::Aspect::enabled: EnableWindow(window_, control_.enabled()); break;
    case forms::Aspect::visible: ShowWindow(window_, control_.visible() ? SW_SHOWNA : SW_HIDE); break;
    case forms::Aspect::bounds: place(); break;
    case forms::Aspect::toolTip: form_.toolTips().set(window_, control_.toolTip()); break;
    case forms::Aspect::colours:
        if (control_.kind() == forms::ControlKind::frame)
            form_.coloursChanged();
        else
            InvalidateRect(window_, nullptr, TRUE);
        break;
    default: break;
    }
}

std::wstring ControlWindow::shownText() const {
    return wide(control_.kind() == forms::ControlKind::textBox ? control_.text() : beginning(control_.text()));
}

void ControlWindow::place() {
    const RECT r = area(form_.dpi().pixels(control_.bounds()));
    SetWindowPos(window_, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::fontChanged() {
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(form_.font().handle()), TRUE);
    place();
    refresh();
}

void ControlWindow::takeFocus() {
    HWND focus = GetFocus();
    if (focus != window_ && !IsChild(window_, focus)) SetFocus(window_);
}

} // namespace win32
