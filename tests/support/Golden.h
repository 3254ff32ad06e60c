// Text that is compared with a file that somebody has looked at.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace support {

/// Text that differs is written beside the golden file as NAME.new; tools/accept-golden.sh takes it over.
inline void expectGolden(const std::string& path, const std::string& text) {
    std::ifstream file(path, std::ios::binary);
    if (text == std::string(std::istreambuf_iterator<char>(file), {})) {
        std::filesystem::remove(path + ".new");
        return;
    }
    std::ofstream(path + ".new", std::ios::binary) << text;
    ADD_FAILURE() << "It differs: see " << path << ".new\n";
}

} // namespace support
