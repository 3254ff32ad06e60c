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
    /// `json` is the file that holds the rows so far, "" for none: an array of objects {"name", "value", "limit",
    /// "unit", "held"}. Throws where it cannot be written.
    explicit Report(std::string json);

    /// Prints and writes the row at once: the measuring takes a while, and what is measured may crash.
    void add(const Result& result);
    bool held() const;

private:
    void write() const;

    std::string json_;
    std::vector<Result> results_;
};

} // namespace bench
