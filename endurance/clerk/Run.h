// A run of steps on a fresh company, and what it comes to.
#pragma once

#include "endurance/clerk/Judge.h"

#include <functional>

namespace endurance::clerk {

inline constexpr int kTills = 3;

struct Outcome {
    Broken broken;                 ///< empty where every rule held
    Steps steps;                   ///< those that were possible, up to the one that broke the rule
    std::vector<std::string> told; ///< each in words
};

/// Plays the steps of a list.
Outcome play(const Steps& steps);
/// Makes up `count` steps from a seed and plays them.
Outcome play(unsigned seed, int count);
/// The shortest part of the list that still breaks the same rule.
Outcome shortest(const Outcome& broken);
/// The name of a rule: what stands before the colon.
std::string ruleOf(const Broken& broken);

} // namespace endurance::clerk
