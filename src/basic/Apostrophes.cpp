#include "basic/Apostrophes.h"

#include <algorithm>

namespace basic {
namespace {

/// Modifier letters prime, apostrophe, vertical line; dot above; prime; full-width apostrophe. The curved quotation
/// marks stand in every ANSI code page themselves.
constexpr std::string_view kApostrophes[] = {"'",        "\xCA\xB9",     "\xCA\xBC",    "\xCB\x88",
                                             "\xCB\x99", "\xE2\x80\xB2", "\xEF\xBC\x87"};

/// How many bytes the apostrophe at `at` takes; 0 where there is none.
std::size_t apostropheAt(std::string_view text, std::size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) return first == '\'';
    for (const std::string_view one : kApostrophes)
        if (text.substr(at, one.size()) == one) return one.size();
    return 0;
}

} // namespace

std::string replaceApostrophes(std::string_view text, std::string_view each) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = apostropheAt(text, at);
        if (size)
            result += each;
        else
            result += text[at];
        at += std::max<std::size_t>(size, 1);
    }
    return result;
}

bool hasApostrophe(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if (apostropheAt(text, at)) return true;
    return false;
}

} // namespace basic
