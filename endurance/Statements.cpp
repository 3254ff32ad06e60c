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

const Step kShows{0, "shows"}, kNew{0, "adds"}, kEdit{0, "edits"}, kShop{0, "shop"}, kLines{0, "adds", 0, 1},
    kScan{0, "scans"}, kOther{0, "scans", 1}, kTwo{0, "quantity"}, kOk{0, "ok"}, kDone{0, "cancel"},
    kRemarks{0, "remarks", 1}, kDelete{0, "deletes"}, kReason{0, "reason", 1}, kYes{0, "answers", 1},
    kElsewhere{1, "frame"}; ///< somebody else's turn: the connection's owner has ended what was left

const struct {
    const char* name;
    Steps before, work; ///< what is not possible any more does nothing
    int unheard;        ///< saves that there are where nobody heard of the first commit
} kWorks[] = {
    {"a new save",
     {kShows, kNew, kShop, kLines, kScan, kTwo, kOk, kOther, kTwo, kOk, kDone, kRemarks},
     {kOk, kYes, kYes, kElsewhere},
     1},
    {"a changed save", {kShows, kEdit, kLines, kOther, kTwo, kOk, kDone, kRemarks}, {kOk, kYes, kYes, kElsewhere}, 2},
    {"a deletion", {kShows}, {kDelete, kYes, kReason, kOk, kYes, kYes, kElsewhere}, 1},
};

} // namespace

void strikeStatements(const Options&, Report& report) {
    for (const auto& work : kWorks) {
        Cases cases;
        for (const Fault fault : {Fault::statement, Fault::dies, Fault::commitRefused, Fault::commitUnheard})
            for (int number = 1, strikes = 1; strikes > 0; ++number) {
                Steps steps = work.before;
                steps.push_back({0, "fault", static_cast<int>(fault), number});
                for (int again = 0; again < 4; ++again) steps.insert(steps.end(), work.work.begin(), work.work.end());
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
