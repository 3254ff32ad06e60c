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
    /// `slack` is what each limit is multiplied by: the short form is measured less often, on a machine that has just built
    /// and tested, and is there to find what became slow.
    explicit Report(double slack = 1) : slack_(slack) {}
    /// Prints the row at once, as the measuring takes a while.
    void add(Result result);
    bool held() const;
    /// An array of objects {"name", "value", "limit", "unit", "held"}. False where the file cannot be written.
    bool writeJson(const std::string& path) const;

private:
    double slack_;
    std::vector<Result> results_;
};

} // namespace bench
