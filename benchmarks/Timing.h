// Measuring two ways of the same work side by side.
#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <limits>

namespace bench {

/// Seconds from the beginning to the end of `work`: for work that waits for the disk.
inline double elapsed(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Seconds that the processor spent on `work`, in the program and in the system on its behalf: for work that waits for
/// nothing. Other programs on the machine do not count, nor does the wait for a turn between person and module.
inline double busy(const std::function<void()>& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

using Clock = double (*)(const std::function<void()>& work);

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
