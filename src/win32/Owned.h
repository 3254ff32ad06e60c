// Handles of the system that end with their owner, and a count of those that have not ended.
#pragma once

#include "win32/Platform.h"

#include <string>
#include <utility>

namespace win32 {

/// How many of each kind this module has made and not destroyed. All are made and destroyed on the thread of the
/// windows.
struct Alive {
    int windows = 0; ///< forms; what stands on a form goes with it
    int menus = 0;
    int fonts = 0;
    int brushes = 0;
    int images = 0;
    int icons = 0;

    /// "windows 0 menus 0 fonts 0 brushes 0 images 0 icons 0"
    std::string text() const;
};
Alive& alive();

/// Destroys its handle when it goes; null holds nothing.
template <class Kind> class Owned {
public:
    using Handle = typename Kind::Handle;

    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {
        if (handle_) ++Kind::count();
    }
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Owned() {
        if (!handle_) return;
        Kind::destroy(handle_);
        --Kind::count();
    }

    Handle get() const { return handle_; }

private:
    Handle handle_ = nullptr;
};

struct WindowKind {
    using Handle = HWND;
    static int& count() { return alive().windows; }
    static void destroy(HWND window) { DestroyWindow(window); }
};
struct MenuKind {
    using Handle = HMENU;
    static int& count() { return alive().menus; }
    static void destroy(HMENU menu) { DestroyMenu(menu); }
};
struct FontKind {
    using Handle = HFONT;
    static int& count() { return alive().fonts; }
    static void destroy(HFONT font) { DeleteObject(font); } // Stock fonts bear it.
};
struct BrushKind {
    using Handle = HBRUSH;
    static int& count() { return alive().brushes; }
    static void destroy(HBRUSH brush) { DeleteObject(brush); }
};
struct ImagesKind {
    using Handle = HIMAGELIST;
    static int& count() { return alive().images; }
    static void destroy(HIMAGELIST images) { ImageList_Destroy(images); }
};
struct IconKind {
    using Handle = HICON;
    static int& count() { return alive().icons; }
    static void destroy(HICON icon) { DestroyIcon(icon); }
};

using OwnedWindow = Owned<WindowKind>;
using OwnedMenu = Owned<MenuKind>;
using OwnedFont = Owned<FontKind>;
using OwnedBrush = Owned<BrushKind>;
using OwnedImages = Owned<ImagesKind>;
using OwnedIcon = Owned<IconKind>;

} // namespace win32
