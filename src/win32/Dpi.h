// Twips to pixels and back at the resolution of one window.
#pragma once

#include "forms/Geometry.h"
#include "win32/Owned.h"

namespace win32 {

class Dpi {
public:
    explicit Dpi(int dotsPerInch = 96) : value_(dotsPerInch) {}
    /// The window's own, where the system knows it (Windows 10 on), else the screen's.
    static Dpi of(HWND window);

    int value() const { return value_; }
    int pixels(int twips) const { return MulDiv(twips, value_, 1440); }
    int twips(int pixels) const { return MulDiv(pixels, 1440, value_); }
    /// Edges are rounded, not sizes, so what touches or lines up in twips does so in pixels.
    RECT pixels(const forms::Rect& twips) const;
    bool operator==(const Dpi&) const = default;

private:
    int value_;
};

/// The size of a whole window whose inside has the given one, in pixels.
SIZE outerSize(SIZE inside, DWORD style, DWORD exStyle, Dpi dpi);

/// The system's font for dialogs, for one resolution.
class DialogFont {
public:
    explicit DialogFont(Dpi dpi);

    HFONT handle() const { return font_.get(); }
    int lineHeight() const { return lineHeight_; } ///< pixels
    /// Pixels that one line of text takes; a mnemonic's sign is not counted.
    int widthOf(const wchar_t* text) const;

private:
    OwnedFont font_;
    int lineHeight_ = 13;
};

} // namespace win32
