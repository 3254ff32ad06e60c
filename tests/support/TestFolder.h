// A folder of a test's own: new, readable by nobody else, removed at the end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace support {

class TestFolder {
public:
    TestFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "goodsreq-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("there is no room for a test's folder: " + name);
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

} // namespace support
