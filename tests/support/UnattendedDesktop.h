// A desktop at which nobody sits.
#pragma once

#include "forms/Desktop.h"

#include <string>
#include <vector>

namespace support {

/// Boxes are kept and left by their default answer; nothing is shown.
class UnattendedDesktop final : public forms::Desktop {
public:
    automation::Date time{45000.5};
    basic::Locale userLocale;
    std::vector<std::string> messages;

    forms::Answer messageBox(const forms::Message& message) override {
        messages.push_back(message.text);
        return message.defaultAnswer;
    }
    void setPointer(forms::Pointer) override {}
    void startProgram(const std::string&, const std::string&, forms::WindowStyle) override {}
    automation::Date now() override { return time; }
    const basic::Locale& locale() override { return userLocale; }

protected:
    void runModal(forms::Form&, forms::Form*, const std::function<void()>&) override {}
    std::optional<std::size_t> chooseFromMenu(forms::Form&, const forms::Menu&) override { return std::nullopt; }
};

} // namespace support
