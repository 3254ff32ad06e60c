// Measuring two ways of the same work side by side.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>

namespace bench {

/// What `work` takes, in seconds.
template <class Work> double secondsOf(Work work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

struct Race {
    double module = std::numeric_limits<double>::infinity(); ///< seconds
    double bare = std::numeric_limits<double>::infinity();   ///< seconds
    double ratio() const { return module / bare; }
};

/// Runs both in turn, `repeats` times, and keeps the shortest time of each: what disturbs a machine only ever adds time.
/// Each gives the seconds of what it measured itself, so that it can prepare and clear away outside of them.
inline Race race(int repeats, const std::function<double()>& module, const std::function<double()>& bare) {
    Race best;
    for (int i = 0; i < repeats; ++i) {
        best.module = std::min(best.module, module());
        best.bare = std::min(best.bare, bare());
    }
    return best;
}

} // namespace bench
