// A small random generator that gives the same numbers everywhere.
#pragma once

#include <cstdint>

namespace sandbox {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// From 0 to `bound` - 1.
    int below(int bound) { return static_cast<int>(next() % static_cast<std::uint64_t>(bound)); }
    int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool percent(int chance) { return below(100) < chance; }

private:
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

} // namespace sandbox
