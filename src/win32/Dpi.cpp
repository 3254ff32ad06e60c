#include "win32/Dpi.h"

namespace win32 {
namespace {

/// A function of user32 that older systems lack, or null.
template <class F> F fromUser32(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

} // namespace

Dpi Dpi::of(HWND window) {
    static const auto dpiForWindow = fromUser32<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    if (dpiForWindow && window)
        if (const UINT dpi = dpiForWindow(window)) return Dpi(static_cast<int>(dpi));
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return Dpi(dpi > 0 ? dpi : 96);
}

RECT Dpi::pixels(const forms::Rect& r) const {
    return {pixels(r.left), pixels(r.top), pixels(r.right()), pixels(r.bottom())};
}

SIZE outerSize(SIZE inside, DWORD style, DWORD exStyle, Dpi dpi) {
    using Adjust = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto adjustForDpi = fromUser32<Adjust>("AdjustWindowRectExForDpi");
    RECT r{0, 0, inside.cx, inside.cy};
    if (!adjustForDpi || !adjustForDpi(&r, style, FALSE, exStyle, static_cast<UINT>(dpi.value())))
        AdjustWindowRectEx(&r, style, FALSE, exStyle);
    return {r.right - r.left, r.bottom - r.top};
}

DialogFont::DialogFont(Dpi dpi) {
    using ForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
    static const auto parametersForDpi = fromUser32<ForDpi>("SystemParametersInfoForDpi");
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    const bool scaled = parametersForDpi && parametersForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                                             static_cast<UINT>(dpi.value()));
    if (scaled || SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        font_ = OwnedFont(CreateFontIndirectW(&metrics.lfMessageFont));
    if (!handle()) font_ = OwnedFont(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));

    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, handle());
    TEXTMETRICW text{};
    if (GetTextMetricsW(screen, &text)) lineHeight_ = text.tmHeight;
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
}

int DialogFont::widthOf(const wchar_t* text) const {
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, handle());
    RECT r{};
    DrawTextW(screen, text, -1, &r, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return r.right;
}

} // namespace win32
