// Text that is compared with a file that somebody has looked at.
#pragma once

#include "tests/support/Scratch.h"

#include <gtest/gtest.h>

namespace support {

/// Text that differs is written beside the golden file as NAME.new, which takes its place once somebody has looked at
/// it.
inline void expectGolden(const std::string& path, const std::string& text) {
    if (text == readAll(path)) return void(std::filesystem::remove(path + ".new"));
    writeAll(path + ".new", text);
    ADD_FAILURE() << "It differs: see " << path << ".new\n";
}

} // namespace support
