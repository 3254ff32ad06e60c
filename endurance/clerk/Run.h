// A run of steps on a fresh company, and what it comes to.
#pragma once

#include "endurance/clerk/Judge.h"

namespace endurance::clerk {

inline constexpr int kTills = 3;

struct Outcome {
    Broken broken;                 ///< empty where every rule held
    Steps steps;                   ///< up to the one that broke the rule
    std::vector<std::string> told; ///< each in words
    int strikes = 0, saves = 0;
};

/// Plays the steps of a list.
Outcome play(const Steps& steps);
/// Makes up `count` steps from a seed and plays them. With a script, on the company that it changed, without failures:
/// only that all screens can be left, and that nothing but requests changes, must hold then.
Outcome play(unsigned seed, int count, const std::string& script = "");
/// The shortest part of the list that still breaks the same rule.
Outcome shortest(const Outcome& broken);
/// What names a rule: its text without the figures.
std::string ruleOf(const Broken& broken);

} // namespace endurance::clerk
