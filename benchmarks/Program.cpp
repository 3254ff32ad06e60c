#include "benchmarks/Program.h"

#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>

namespace bench {
namespace {

struct Call {
    Options options;
    std::string json;
};

template <class Number> bool reads(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

std::optional<Call> callOf(int count, char** arguments) {
    Call call;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        const std::string_view value = i + 1 < count ? arguments[i + 1] : "";
        if (argument == "--quick") {
            call.options.quick = true;
            continue;
        }
        if (argument == "--json" && !value.empty()) {
            call.json = value;
        } else if (argument == "--seed" && reads(value, call.options.seed)) {
        } else if (argument == "--minutes" && reads(value, call.options.minutes)) {
        } else {
            return std::nullopt;
        }
        ++i;
    }
    return call;
}

} // namespace

int runProgram(const char* name, int count, char** arguments,
               const std::function<void(const Options&, Report&)>& measure) {
    const std::optional<Call> call = callOf(count, arguments);
    if (!call) {
        std::fprintf(stderr, "usage: %s [--quick] [--seed N] [--minutes N] [--json FILE]\n", name);
        return 2;
    }
    try {
        std::printf("seed %u\n", call->options.seed);
        Report report(call->json);
        measure(call->options, report);
        return report.held() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The measuring failed: %s\n", error.what());
        return 2;
    }
}

} // namespace bench
