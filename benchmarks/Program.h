// What the programs that prove something have in common: their options, their table, their exit status.
#pragma once

#include "benchmarks/Report.h"

#include <functional>

namespace bench {

struct Options {
    bool quick = false;       ///< the short form that goes with the tests
    unsigned seed = 20260331; ///< everything random is drawn from this
    int minutes = 0;          ///< for what may go on as long as one likes; 0 for its own choice
};

/// Reads "[--quick] [--seed N] [--minutes N] [--json FILE]" and lets `measure` add its rows. Exit status 1 where a
/// limit is missed, 2 for wrong arguments and where the measuring itself failed.
int runProgram(const char* name, int count, char** arguments,
               const std::function<void(const Options&, Report&)>& measure);

} // namespace bench
