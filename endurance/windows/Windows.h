// The parts of the proof that need the DLL itself and real windows: each adds its rows to the report.
#pragma once

#include "benchmarks/Program.h"

namespace endurance {

using bench::Options;
using bench::Report;

/// Opens the register, begins a request, enters a line, leaves it all; again and again in one process.
void goRound(const Options& options, Report& report);
/// Random keys, clicks and pastes on all screens.
void actClumsily(const Options& options, Report& report);

} // namespace endurance
