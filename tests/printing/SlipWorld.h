// A small company whose requests are printed: one shop, its settings, and a slip printer on them.
#pragma once

#include "common/Module.h"
#include "sandbox/database/Company.h"
#include "tests/support/PortableSystem.h"
#include "tests/support/UnattendedDesktop.h"

namespace printing {

/// The requests of the company.
enum Request {
    kThreeLines = 1,
    kTwentyFiveLines,
    kNoLines,
    kSeveralPackings,
    kLongTexts,
    kForeignLetters,
    kTenLines,
    kOneLine,
};

using Settings = std::map<std::string, std::string>;

class SlipWorld {
public:
    /// `changes` to the plain settings; the value "-" takes a key out.
    explicit SlipWorld(const Settings& changes = {});

    static std::string settingsText(const Settings& changes);
    /// What fills an empty company, in the server's own statements.
    static std::string companyScript();
    void setSettings(const std::string& content);
    /// The slip as the port got it; on a real machine the port is a file.
    std::string print(int request);

    /// Makes the real machine that outputs are opened on; without it they are kept in memory.
    static inline std::function<std::unique_ptr<goodsreq::System>()> makeMachine;
    /// What the port is on a real machine.
    static std::string portFile();

    support::UnattendedDesktop desktop;
    support::PortableSystem system;
    std::shared_ptr<sandbox::Connection> connection;
    std::vector<std::string> statements; ///< each one sent while printing
    goodsreq::Module module;
};

} // namespace printing
