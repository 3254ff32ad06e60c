// A run of steps on a fresh company, and what must hold after each of them.
#pragma once

#include "endurance/clerk/Clerk.h"

namespace endurance::clerk {

/// One step as the judge sees it.
struct Happening {
    std::string_view verb; ///< "" where the step was not possible
    const Clerk& clerk;
    View before, after;
    Snapshot storedBefore, storedAfter; ///< the first after what rivals did meanwhile
    std::vector<forms::Message> boxes;  ///< that came up
    bool dead = false;                  ///< the connection was, or became so
    std::set<std::string> crippled;     ///< forms whose load failed, so that what it should have made is missing
    bool wasInTransaction = false;      ///< one that an earlier failure left open
    bool rivalCame = false;             ///< somebody else changed a row while the module was at work

    bool acts(const char* form, std::string_view what) const { return verb == what && before.atForm(form); }
    bool calm() const { return clerk.strikes.empty() && !dead && crippled.empty(); }
    bool lostBox() const { return clerk.boxesLost > 0; }
    /// Whether one of the failures is called so.
    bool struck(std::string_view what) const;
};

/// The rule that was broken, first its short name; empty where all is well.
using Broken = std::string;

Broken judge(const Happening& happening);

inline constexpr int kTills = 3;

struct Outcome {
    Broken broken;                 ///< empty where every rule held
    Steps steps;                   ///< up to the one that broke the rule
    std::vector<std::string> told; ///< where each led to
    int strikes = 0, saves = 0;
    std::string script; ///< of its company
};

/// Plays the steps of a list. With a script, on a company that it changed: only that all screens can be left, and that
/// nothing but requests changes, must hold then.
Outcome play(const Steps& steps, const std::string& script = "");
/// Makes up `count` steps from a seed.
Outcome play(unsigned seed, std::size_t count, const std::string& script);
/// The shortest part of the list that still breaks the same rule.
Outcome shortest(const Outcome& broken);
/// What names a rule: its text without the figures.
std::string ruleOf(Broken broken);

} // namespace endurance::clerk
