// Files that a test makes, and that go with it.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace support {

/// A folder of a test's own: new, readable by nobody else, removed at the end.
class TestFolder {
public:
    TestFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "goodsreq-XXXXXX").string();
#ifdef _WIN32 // where that is the user's own
        static int folders = 0;
        name.replace(name.size() - 6, 6, std::to_string(getpid()) + "-" + std::to_string(++folders));
        std::filesystem::remove_all(name); // of a process that had the number before
        std::filesystem::create_directory(name);
#else
        if (!mkdtemp(name.data())) throw std::runtime_error("there is no room for a test's folder: " + name);
#endif
        path_ = name;
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

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
