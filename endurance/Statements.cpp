// Each statement of a save and of a deletion fails in turn, in turn the connection dies at it, and the commit goes
// wrong.
#include "endurance/Endurance.h"
#include "endurance/clerk/Run.h"

#include <gtest/gtest.h>

namespace endurance {
namespace {

using clerk::Fault;
using clerk::Step;
using clerk::Steps;

/// OK or Delete again and again, as long as it takes; what is not possible does nothing.
Steps repeated(const Steps& work, int times) {
    Steps all;
    for (int i = 0; i < times; ++i) {
        all.insert(all.end(), work.begin(), work.end());
        all.push_back({1, "frame", 0, 0, 0}); // somebody else's turn: the connection's owner has ended what was left
    }
    return all;
}

const Step kShows{0, "shows", 0, 0, 0}, kNew{0, "adds", 0, 0, 0}, kEdit{0, "edits", 0, 0, 0}, kShop{0, "shop", 0, 0, 0},
    kLines{0, "adds", 0, 1, 0}, kScan{0, "scans", 0, 0, 0}, kOther{0, "scans", 1, 0, 0}, kTwo{0, "quantity", 0, 0, 0},
    kOk{0, "ok", 0, 0, 0}, kDone{0, "cancel", 0, 0, 0}, kRemarks{0, "remarks", 1, 0, 0}, kDelete{0, "deletes", 0, 0, 0},
    kReason{0, "reason", 1, 0, 0}, kYes{0, "answers", 1, 0, 0};

const struct {
    const char* name;
    Steps before, work;
    int unheard; ///< saves that there are where nobody heard of the first commit
} kWorks[] = {
    {"a new save",
     {kShows, kNew, kShop, kLines, kScan, kTwo, kOk, kOther, kTwo, kOk, kDone, kRemarks},
     {kOk, kYes, kYes},
     1},
    {"a changed save", {kShows, kEdit, kLines, kOther, kTwo, kOk, kDone, kRemarks}, {kOk, kYes, kYes}, 2},
    {"a deletion", {kShows}, {kDelete, kYes, kReason, kOk, kYes, kYes}, 1},
};

} // namespace

void strikeStatements(const Options&, Report& report) {
    for (const auto& work : kWorks) {
        Cases cases;
        for (const Fault fault : {Fault::statement, Fault::dies, Fault::commitRefused, Fault::commitUnheard})
            for (int number = 1, strikes = 1; strikes > 0; ++number) {
                Steps steps = work.before;
                steps.push_back({0, "fault", static_cast<int>(fault), number, 0});
                const Steps rest = repeated(work.work, 4);
                steps.insert(steps.end(), rest.begin(), rest.end());
                const clerk::Outcome outcome = clerk::play(steps);
                strikes = fault < Fault::commitRefused ? outcome.strikes : 0; // there is one commit
                cases.run("fault " + std::to_string(static_cast<int>(fault)) + " at statement " +
                              std::to_string(number) + " of " + work.name,
                          [&] {
                              EXPECT_EQ(outcome.broken, "");
                              EXPECT_EQ(outcome.saves, fault == Fault::commitUnheard ? work.unheard : 1);
                          });
            }
        report.add(cases.row(std::string("faults at the statements of ") + work.name, "faults"));
    }
}

} // namespace endurance
