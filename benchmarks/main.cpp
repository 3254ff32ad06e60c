// Measures the module against the bare limit of each work: benchmarks [--quick] [--json FILE].
// Exit status 1 where a limit is missed, 2 where the measuring itself failed.
#include "benchmarks/Benchmarks.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

namespace {

int usage() {
    std::fputs("usage: bench [--quick] [--json FILE]\n", stderr);
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    bench::Options options;
    std::string json;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--quick")
            options.quick = true;
        else if (argument == "--json" && i + 1 < count)
            json = arguments[++i];
        else
            return usage();
    }
    try {
        // The scripted person reports what goes wrong as a failed test.
        testing::GTEST_FLAG(throw_on_failure) = true;
        std::printf("seed %u, shortest of %d times, of %d for sorts\n", bench::kSeed, options.repeats(),
                    options.repeatsOfSorts());
        bench::Report report;
        bench::measureRegister(options, report);
        bench::measureRequests(options, report);
        bench::measureSlips(options, report);
        if (!json.empty() && !report.writeJson(json)) {
            std::fprintf(stderr, "%s cannot be written\n", json.c_str());
            return 2;
        }
        return report.held() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The measuring failed: %s\n", error.what());
        return 2;
    }
}
