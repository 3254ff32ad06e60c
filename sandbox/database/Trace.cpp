#include "sandbox/database/Trace.h"

#include "sandbox/database/Errors.h"

#include <filesystem>
#include <memory>

namespace sandbox {

TraceFile::TraceFile(const std::string& path)
    : file_(std::filesystem::path(std::u8string(path.begin(), path.end())), std::ios::binary | std::ios::trunc) {
    if (!file_) fail(kServerFailure, "The trace file '" + path + "' cannot be written.");
}

void TraceFile::write(std::string_view statement) {
    std::string line;
    line.reserve(statement.size() + 1);
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (c == '\r' && i + 1 < statement.size() && statement[i + 1] == '\n') continue;
        line += c == '\r' || c == '\n' ? ' ' : c;
    }
    line += '\n';
    file_.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

TraceSink traceFileSink(const std::string& path) {
    auto file = std::make_shared<TraceFile>(path);
    return [file](std::string_view statement) { file->write(statement); };
}

} // namespace sandbox
