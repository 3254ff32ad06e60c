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

/// Does `once` that many times, and up to five times as often while `held` says no: what disturbs a machine only ever
/// adds time, so the shortest times come nearer to the truth.
inline void repeat(int repeats, const std::function<bool()>& held, const std::function<void()>& once) {
    for (int i = 0; i < repeats || (i < 5 * repeats && !held()); ++i) once();
}

/// Runs both in turn and keeps the shortest time of each; `limit` is the most that their ratio may be. Each gives the
/// seconds of what it measured itself, so that it can prepare and clear away outside of them.
inline Race race(int repeats, double limit, const std::function<double()>& module,
                 const std::function<double()>& bare) {
    Race best;
    repeat(
        repeats, [&] { return best.ratio() <= limit; },
        [&] {
            best.module = std::min(best.module, module());
            best.bare = std::min(best.bare, bare());
        });
    return best;
}

} // namespace bench
