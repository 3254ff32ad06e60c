// A GUID from its text.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>

namespace com {

/// Of "0FE2F117-2E10-4B39-99DB-02D73E6FC12A"; any other form does not compile.
consteval GUID guid(std::string_view text) {
    if (text.size() != 36) throw "not a GUID";
    std::uint8_t bytes[16]{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (c != '-') throw "not a GUID";
            continue;
        }
        const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : throw "not a GUID";
        bytes[digits / 2] = static_cast<std::uint8_t>(bytes[digits / 2] << 4 | digit);
        ++digits;
    }
    GUID id{};
    id.Data1 = static_cast<decltype(id.Data1)>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
    id.Data2 = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    id.Data3 = static_cast<std::uint16_t>(bytes[6] << 8 | bytes[7]);
    for (std::size_t i = 0; i < 8; ++i) id.Data4[i] = bytes[8 + i];
    return id;
}

} // namespace com
