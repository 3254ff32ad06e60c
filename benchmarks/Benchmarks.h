// The parts of the measuring: each adds its rows to the report.
#pragma once

#include "benchmarks/Report.h"

namespace bench {

/// Everything random is drawn from this.
inline constexpr unsigned kSeed = 20260331;

struct Options {
    bool quick = false;
    /// How often each pair of times is taken; sorting 100,000 rows takes long enough to need fewer.
    int repeats() const { return quick ? 8 : 25; }
    int repeatsOfSorts() const { return quick ? 3 : 8; }
};

void measureRegister(const Options& options, Report& report);
void measureRequests(const Options& options, Report& report);
void measureSlips(const Options& options, Report& report);

} // namespace bench
