// What must hold after each step, by the rules of the screens and not by how they are made.
#pragma once

#include "endurance/clerk/Clerk.h"

#include <set>

namespace endurance::clerk {

/// One step as the judge sees it.
struct Happening {
    Step step;
    const Clerk& clerk;
    const Memory& memory;
    View before, after;
    Snapshot storedBefore, storedAfter; ///< the first after what rivals did meanwhile
    std::vector<forms::Message> boxes;  ///< that came up
    std::vector<Strike> strikes;
    std::vector<Report> reports;
    std::vector<std::string> statements;
    bool dead = false;              ///< the connection was, or became so
    std::set<std::string> crippled; ///< forms whose load failed, so that what it should have made is missing
    bool lostBox = false;
    bool wasInTransaction = false; ///< one that an earlier failure left open
    bool openAtBegin = false;
    bool rivalCame = false; ///< somebody else changed a row while the module was at work

    bool acts(Verb verb) const { return step.verb == verb; }
    bool calm() const { return strikes.empty() && !dead && crippled.empty(); }
    bool said(const std::string& beginning) const;
};

/// The rule that was broken, first its short name; empty where all is well.
using Broken = std::string;

Broken judge(const Happening& happening, Company& company);

// The rules by what they are about.
Broken judgeStored(const Happening& h, Company& company);
Broken judgeLines(const Happening& h, Company& company);
Broken judgeOpening(const Happening& h, Company& company);
Broken judgeRegister(const Happening& h, Company& company);
Broken judgeEntry(const Happening& h, Company& company);
Broken judgeReports(const Happening& h, Company& company);

} // namespace endurance::clerk
