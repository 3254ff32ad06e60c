// The parts of the proof under faults and bad input: each adds its rows to the report. A row counts what went wrong, so
// its limit is 0; its unit says among how many.
#pragma once

#include "benchmarks/Program.h"

#include <functional>
#include <string>
#include <vector>

namespace endurance {

using bench::Options;
using bench::Report;

/// Each statement of save and delete fails in turn, and the connection dies there.
void strikeStatements(const Options& options, Report& report);
/// A program is killed at random moments of its saves.
void killSaves(const Options& options, Report& report);
/// Four programs save in one shop at once.
void saveAtOnce(const Options& options, Report& report);

/// Random clerks at three tills, with failures and rivals, until their time is over; some of them in companies that
/// hold texts which mean something to a database.
void randomClerks(const Options& options, Report& report);

// Those that need the DLL itself and real windows:

/// Opens the register, begins a request, enters a line, leaves it all; again and again in one process.
void goRound(const Options& options, Report& report);
/// Random keys, clicks and pastes on all screens; F11 in line entry opens `dialog`, "scan" or "fetch".
void actClumsily(const Options& options, const std::string& dialog, Report& report);

/// Counts the cases in which something went wrong.
class Cases {
public:
    /// What fails while `act` runs, by an expectation or by an exception, makes the case one that went wrong; `name`
    /// goes with what is printed of it.
    void run(const std::string& name, const std::function<void()>& act);
    /// The text of the first expectation that has failed since the last call, in a case or not; empty where none has.
    static std::string takeFailure();
    /// The row of these cases.
    bench::Result row(const std::string& name, const std::string& kind) const;

private:
    int count_ = 0;
    int wrong_ = 0;
};

/// What is wrong with the requests of shop 1 in that company, by what always holds of them: line counts, one line with
/// a quantity, numbers and ids that are unique, an audit record for each request newer than `oldId`. Empty when all is
/// well.
std::string brokenRequests(const std::string& companyPath, int oldId);

} // namespace endurance
