// A file of the statements that reach the database.
#pragma once

#include <fstream>
#include <functional>
#include <string>
#include <string_view>

namespace sandbox {

/// Is told every statement as it was sent, before it runs.
using TraceSink = std::function<void(std::string_view statement)>;

/// Writes one statement a line; line breaks inside a statement become blanks. Each line is on disk when the call
/// returns.
class TraceFile {
public:
    /// Replaces an older file. Error -2147467259 when it cannot be written.
    explicit TraceFile(const std::string& path);
    void write(std::string_view statement);

private:
    std::ofstream file_;
};

/// A sink that owns its file.
TraceSink traceFileSink(const std::string& path);

} // namespace sandbox
