// The parts of the proof that need the DLL itself and real windows: each adds its rows to the report.
#pragma once

#include "benchmarks/Program.h"

#include <string>

namespace endurance {

using bench::Options;
using bench::Report;

/// Opens the register, begins a request, enters a line, leaves it all; again and again in one process.
void goRound(const Options& options, Report& report);
/// Random keys, clicks and pastes on all screens; F11 in line entry opens `dialog`, "scan" or "fetch".
void actClumsily(const Options& options, const std::string& dialog, Report& report);

} // namespace endurance
