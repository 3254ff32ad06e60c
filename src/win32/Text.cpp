#include "win32/Text.h"

#include "com/Bstr.h"

#include <algorithm>

namespace win32 {
namespace {

bool leads(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }
bool trails(wchar_t c) { return c >= 0xDC00 && c < 0xE000; }
bool pairAt(std::wstring_view text, std::size_t i) {
    return i + 1 < text.size() && leads(text[i]) && trails(text[i + 1]);
}

} // namespace

std::wstring wide(std::string_view text) { return com::toWide(text); }

std::string_view beginning(std::string_view text) {
    std::size_t size = std::min<std::size_t>(text.size(), 4000);
    if (size < text.size())
        while (size > 0 && (text[size] & 0xC0) == 0x80) --size;
    return text.substr(0, size);
}

std::string narrow(std::wstring_view text) { return com::toUtf8(text); }

int charactersIn(std::wstring_view text, int units) {
    int characters = 0;
    for (std::size_t i = 0; i < text.size() && static_cast<int>(i) < units; ++i, ++characters)
        if (pairAt(text, i)) ++i;
    return characters;
}

int unitsOf(std::wstring_view text, int characters) {
    std::size_t i = 0;
    for (; i < text.size() && characters > 0; ++i, --characters)
        if (pairAt(text, i)) ++i;
    return static_cast<int>(i);
}

bool hasHalfCharacter(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (pairAt(text, i))
            ++i;
        else if (leads(text[i]) || trails(text[i]))
            return true;
    }
    return false;
}

} // namespace win32
