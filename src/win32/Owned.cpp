#include "win32/Owned.h"

namespace win32 {

std::string Alive::text() const {
    return "windows " + std::to_string(windows) + " menus " + std::to_string(menus) + " fonts " +
           std::to_string(fonts) + " brushes " + std::to_string(brushes) + " images " + std::to_string(images) +
           " icons " + std::to_string(icons);
}

Alive& alive() {
    static Alive counts;
    return counts;
}

} // namespace win32
