// A small company whose requests are printed: one shop, its settings, and a slip printer on them.
#pragma once

#include "forms/Desktop.h"
#include "sandbox/database/Company.h"
#include "tests/support/PortableSystem.h"

#include "common/Module.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace printing {

/// A desktop at which nobody sits: boxes are kept and left by their default answer.
class UnattendedDesktop : public forms::Desktop {
public:
    automation::Date time;
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

/// The requests of the company.
enum Request {
    kThreeLines = 1,
    kTwentyFiveLines = 2,
    kNoLines = 3,
    kSeveralPackings = 4,
    kLongTexts = 5,
    kForeignLetters = 6,
    kTenLines = 7,
    kOneLine = 8,
};

using Settings = std::map<std::string, std::string>;

class SlipWorld {
public:
    /// `changes` to the plain settings; the value "-" takes a key out.
    explicit SlipWorld(const Settings& changes = {});

    static std::string settingsText(const Settings& changes, const std::string& lineEnd = "\r\n");
    /// What fills an empty company, in the server's own statements.
    static std::string companyScript();
    void setSettings(const std::string& content);
    std::string settings() const;
    /// The slip as the port got it; on a real machine the port is a file.
    std::string print(int request);

    /// Makes the real machine that outputs are opened on; without it they are kept in memory.
    static inline std::function<std::unique_ptr<goodsreq::System>()> makeMachine;
    /// What the port is on a real machine.
    static std::string portFile();

    UnattendedDesktop desktop;
    support::PortableSystem system;
    std::shared_ptr<sandbox::Connection> connection;
    std::vector<std::string> statements; ///< each one sent while printing
    goodsreq::Module module;
};

} // namespace printing
