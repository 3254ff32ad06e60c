#include "benchmarks/Report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <stdexcept>

namespace bench {

Report::Report(std::string json) : json_(std::move(json)) { write(); }

void Report::add(const Result& result) {
    if (results_.empty()) std::printf("%-6s %-56s %9s %9s %s\n", "", "work", "measured", "at most", "unit");
    std::printf("%-6s %-56s %9.3f %9.3f %s\n", result.held() ? "ok" : "FAILED", result.name.c_str(), result.value,
                result.limit, result.unit.c_str());
    std::fflush(stdout);
    results_.push_back(result);
    write();
}

bool Report::held() const {
    return !results_.empty() && std::all_of(results_.begin(), results_.end(), [](const Result& r) { return r.held(); });
}

void Report::write() const {
    if (json_.empty()) return;
    std::ofstream file(json_);
    file << "[";
    for (const Result& r : results_)
        file << (&r == &results_.front() ? "\n" : ",\n") << "  {\"name\": " << std::quoted(r.name)
             << ", \"value\": " << r.value << ", \"limit\": " << r.limit << ", \"unit\": " << std::quoted(r.unit)
             << ", \"held\": " << (r.held() ? "true" : "false") << "}";
    file << "\n]\n";
    if (!file.flush()) throw std::runtime_error(json_ + " cannot be written");
}

} // namespace bench
