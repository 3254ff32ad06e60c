#include "basic/Letters.h"

namespace basic {
namespace {

/// Upper-case letters from `first` to `last`, every `step`th one, whose lower case lies `distance` on.
struct Range {
    char32_t first;
    char32_t last;
    int step;
    int distance;
};

constexpr Range kRanges[] = {
    {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32}, // Latin-1
    {0x0100, 0x012E, 2, 1},    {0x0132, 0x0136, 2, 1},  // Latin Extended-A, without the dotted and dotless i
    {0x0139, 0x0147, 2, 1},    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121}, // y with diaeresis, whose lower case is in Latin-1
    {0x0179, 0x017D, 2, 1},    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1}, // Latin Extended-B
    {0x01F8, 0x021E, 2, 1},    {0x0222, 0x0232, 2, 1},
    {0x0386, 0x0386, 1, 38},   {0x0388, 0x038A, 1, 37}, // Greek with tonos
    {0x038C, 0x038C, 1, 64},   {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},   {0x03A3, 0x03AB, 1, 32}, // Greek
    {0x0400, 0x040F, 1, 80},   {0x0410, 0x042F, 1, 32}, // Cyrillic
    {0x0460, 0x0480, 2, 1},    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},   {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},    {0x1E00, 0x1E94, 2, 1},
    {0x1EA0, 0x1EFE, 2, 1}, // Latin Extended Additional
};

constexpr char32_t kFinalSigma = 0x03C2;
constexpr char32_t kUpperSigma = 0x03A3;

} // namespace

char32_t lowerLetter(char32_t letter) {
    if (letter < 0x80) return letter >= 'A' && letter <= 'Z' ? letter + 32 : letter;
    for (const Range& range : kRanges)
        if (letter >= range.first && letter <= range.last && (letter - range.first) % range.step == 0)
            return letter + range.distance;
    return letter;
}

char32_t upperLetter(char32_t letter) {
    if (letter < 0x80) return letter >= 'a' && letter <= 'z' ? letter - 32 : letter;
    if (letter == kFinalSigma) return kUpperSigma;
    for (const Range& range : kRanges) {
        const char32_t upper = letter - range.distance;
        if (upper >= range.first && upper <= range.last && (upper - range.first) % range.step == 0) return upper;
    }
    return letter;
}

void appendUtf8(std::string& text, char32_t letter) {
    const auto tail = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else if (letter < 0x800) {
        text += static_cast<char>(0xC0 | letter >> 6);
        text += tail(letter);
    } else {
        text += static_cast<char>(0xE0 | letter >> 12);
        text += tail(letter >> 6);
        text += tail(letter);
    }
}

} // namespace basic
