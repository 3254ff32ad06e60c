// A popup menu: commands that can be switched off.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace forms {

struct MenuItem {
    std::string name;
    std::string caption; ///< "&" marks the mnemonic
    bool enabled = true;
    std::function<void()> onClick;
};

struct Menu {
    std::string name;
    std::vector<MenuItem*> items;
};

} // namespace forms
