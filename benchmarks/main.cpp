// Measures the module against the bare limit of each work.
#include "benchmarks/Benchmarks.h"

#include <gtest/gtest.h>

#include <cstdio>

int main(int count, char** arguments) {
    // The scripted person reports what goes wrong as a failed test.
    testing::GTEST_FLAG(throw_on_failure) = true;
    return bench::runProgram("bench", count, arguments, [](const bench::Options& options, bench::Report& report) {
        std::printf("shortest of %d times, of %d for sorts and keys\n", bench::repeats(options),
                    bench::kRepeatsOfSorts);
        bench::measureRegister(options, report);
        bench::measureRequests(options, report);
        bench::measureSlips(options, report);
    });
}
