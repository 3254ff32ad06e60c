// Message boxes and popup menus of the system.
#pragma once

#include "forms/Events.h"
#include "forms/Menu.h"
#include "win32/Platform.h"

#include <optional>
#include <vector>

namespace win32 {

/// Modal to `owner`; without one, to the thread's windows.
forms::Answer showMessage(HWND owner, const forms::Message& message);
/// At the pointer; the place of the item chosen, or none.
std::optional<std::size_t> showMenu(HWND owner, const forms::Menu& menu);
/// While it lives, menus come up at this place of the screen: a key has asked for them.
class MenuPlace {
public:
    explicit MenuPlace(POINT at);
    ~MenuPlace();
    MenuPlace(const MenuPlace&) = delete;
    MenuPlace& operator=(const MenuPlace&) = delete;
};

/// Switches off the thread's other windows while it lives.
class Modality {
public:
    explicit Modality(HWND modal);
    /// The window that was active before has the keyboard again; where that is gone, the topmost of the others.
    ~Modality();
    Modality(const Modality&) = delete;
    Modality& operator=(const Modality&) = delete;

private:
    HWND modal_, before_;
    std::vector<HWND> disabled_; ///< the topmost first
};

} // namespace win32
