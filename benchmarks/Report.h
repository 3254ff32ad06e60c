// The table of what was measured, and whether each limit is held.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Result {
    std::string name;
    double value = 0;
    double limit = 0; ///< the most that `value` may be
    std::string unit;

    bool held() const { return value <= limit; }
};

class Report {
public:
    /// Prints the row at once, as the measuring takes a while.
    void add(const Result& result);
    bool held() const;
    /// An array of objects {"name", "value", "limit", "unit", "held"}. False where the file cannot be written.
    bool writeJson(const std::string& path) const;

private:
    std::vector<Result> results_;
};

} // namespace bench
