// Random clerks at three tills of one company, with failures and rivals; each broken rule with its shortest list of
// steps.
#include "endurance/Endurance.h"
#include "endurance/clerk/Run.h"

#include <chrono>
#include <cstdio>
#include <map>

namespace endurance {
namespace {

/// Lists that once broke a rule, as they are printed.
const clerk::Steps kKnown[] = {
    // clang-format off
    // A commit is neither heard of nor taken back, somebody else takes the number, and the second try fails.
    {{0, "shows"}, {0, "adds"}, {0, "shop"}, {0, "adds", 0, 1}, {0, "scans"}, {0, "quantity"}, {0, "ok"}, {0, "cancel"},
     {0, "fault", 3, 1}, {0, "ok"}, {0, "answers"}, {0, "rival", 0, 5}, {0, "fault", 0, 3}, {0, "ok"}, {0, "answers"},
     {0, "ok"}, {0, "answers"}},
    // A commit happens unheard, and more is typed before the second try.
    {{0, "shows"}, {0, "adds"}, {0, "shop"}, {0, "adds", 0, 1}, {0, "scans"}, {0, "quantity"}, {0, "ok"}, {0, "cancel"},
     {0, "fault", 4, 1}, {0, "ok"}, {0, "answers"}, {0, "remarks", 1}, {0, "ok"}, {0, "answers"}},
    // clang-format on
};

} // namespace

void randomClerks(const Options& options, Report& report) {
    using Clock = std::chrono::steady_clock;
    constexpr int kSteps = 200;
    constexpr int kShortRuns = 160;
    const bool counted = options.quick && options.minutes == 0; // the short form is always the same
    const auto end = Clock::now() + std::chrono::minutes(options.minutes > 0 ? options.minutes : 10);
    long steps = 0;
    std::map<std::string, int> broken;
    const auto judged = [&](const std::string& name, const clerk::Outcome& outcome) {
        steps += static_cast<long>(outcome.steps.size());
        if (outcome.broken.empty() || ++broken[clerk::ruleOf(outcome.broken)] > 1) return;
        const clerk::Outcome least = clerk::shortest(outcome);
        std::printf("%s breaks a rule after %zu steps, %ld in all: %s\n%s\n", name.c_str(), outcome.steps.size(), steps,
                    least.broken.c_str(), least.script.c_str());
        for (std::size_t i = 0; i < least.steps.size(); ++i) {
            const clerk::Step& s = least.steps[i];
            std::printf("    {%d, \"%s\", %d, %d, %d}, // %s\n", s.till, std::string(s.verb).c_str(), s.a, s.b, s.c,
                        least.told[i].c_str());
        }
        std::fflush(stdout);
    };
    for (const clerk::Steps& list : kKnown) judged("a known list", clerk::play(list));
    for (int run = 0; counted ? run < kShortRuns : Clock::now() < end; ++run) {
        const unsigned seed = options.seed + static_cast<unsigned>(run);
        judged("seed " + std::to_string(seed),
               clerk::play(seed, kSteps, run % 4 == 3 ? clerk::hostileScript(seed / 4) : ""));
    }
    report.add({"random clerks: broken rules", static_cast<double>(broken.size()), 0,
                "broken in " + std::to_string(steps) + " steps"});
}

} // namespace endurance
