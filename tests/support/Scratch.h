// Files that a test makes, and that go with it.
#pragma once

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace support {

/// A file of that name in a folder of this process's own, which goes when it ends.
inline std::string scratch(const std::string& name) {
    static const TestFolder folder;
    return folder.file(name);
}

inline std::string readAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeAll(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

} // namespace support
