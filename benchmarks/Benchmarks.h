// The parts of the measuring: each adds its rows to the report.
#pragma once

#include "benchmarks/Program.h"

namespace bench {

/// How often each pair of times is taken.
inline int repeats(const Options& options) { return options.quick ? 8 : 25; }
inline constexpr int kRepeatsOfSorts = 8;

void measureRegister(const Options& options, Report& report);
void measureRequests(const Options& options, Report& report);
void measureSlips(const Options& options, Report& report);

} // namespace bench
