// Random clerks at three tills of one company, with failures and rivals; each broken rule with its shortest list of
// steps.
#include "endurance/Endurance.h"
#include "endurance/clerk/Run.h"

#include <chrono>
#include <cstdio>
#include <map>

namespace endurance {

void randomClerks(const Options& options, Report& report) {
    using Clock = std::chrono::steady_clock;
    constexpr int kSteps = 200;
    constexpr int kShortRuns = 120;
    const bool counted = options.quick && options.minutes == 0; // the short form is always the same
    const auto end = Clock::now() + std::chrono::minutes(options.minutes > 0 ? options.minutes : 10);
    long steps = 0;
    std::map<std::string, int> broken;
    for (int run = 0; counted ? run < kShortRuns : Clock::now() < end; ++run) {
        const unsigned seed = options.seed + static_cast<unsigned>(run);
        const clerk::Outcome outcome = clerk::play(seed, kSteps);
        steps += static_cast<long>(outcome.steps.size());
        if (outcome.broken.empty() || ++broken[clerk::ruleOf(outcome.broken)] > 1) continue;
        const clerk::Outcome least = clerk::shortest(outcome);
        std::printf("seed %u breaks a rule after %zu steps: %s\n", seed, outcome.steps.size(), least.broken.c_str());
        for (std::size_t i = 0; i < least.steps.size(); ++i)
            std::printf("    %-40s // %s\n", clerk::asCode(least.steps[i]).c_str(), least.told[i].c_str());
        std::fflush(stdout);
    }
    report.add({"random clerks: broken rules", static_cast<double>(broken.size()), 0,
                "broken in " + std::to_string(steps) + " steps"});
}

} // namespace endurance
