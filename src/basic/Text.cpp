#include "basic/Text.h"

#include "automation/RunTimeError.h"
#include "basic/Letters.h"

#include <algorithm>
#include <cstddef>

namespace basic {
namespace {

/// How many bytes the character at `at` takes; 1 for a byte that begins no valid one.
std::size_t characterSize(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at);
    const std::size_t size = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 1;
    if (at + size > text.size()) return 1;
    for (std::size_t i = 1; i < size; ++i)
        if ((byte(at + i) & 0xC0) != 0x80) return 1;
    // Over-long forms, surrogates, and what lies above U+10FFFF.
    if ((first == 0xE0 && byte(at + 1) < 0xA0) || (first == 0xED && byte(at + 1) > 0x9F) ||
        (first == 0xF0 && byte(at + 1) < 0x90) || (first == 0xF4 && byte(at + 1) > 0x8F))
        return 1;
    return size;
}

/// The byte at which the character `count` places behind `from` begins; the text's end when there are fewer.
std::size_t advance(std::string_view text, std::size_t from, int count) {
    std::size_t at = from;
    for (; count > 0 && at < text.size(); --count) at += characterSize(text, at);
    return at;
}

template <class Case> void appendChanged(std::string& result, std::string_view text, Case letter) {
    result.reserve(result.size() + text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            result += static_cast<char>(letter(static_cast<unsigned char>(text[at++])));
            continue;
        }
        const std::size_t size = characterSize(text, at);
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
        if (size == 2) {
            appendUtf8(result, letter(static_cast<char32_t>((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F))));
        } else if (size == 3) {
            appendUtf8(result, letter(static_cast<char32_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 |
                                                            (byte(2) & 0x3F))));
        } else {
            result += text.substr(at, size);
        }
        at += size;
    }
}

template <class Case> std::string changed(std::string_view text, Case letter) {
    std::string result;
    appendChanged(result, text, letter);
    return result;
}

void refuseNegative(int count) {
    if (count < 0) automation::raise(automation::kInvalidCall);
}

} // namespace

std::string ltrim(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text);
}

std::string rtrim(std::string_view text) { return std::string(text.substr(0, text.find_last_not_of(' ') + 1)); }

std::string trim(std::string_view text) { return ltrim(text.substr(0, text.find_last_not_of(' ') + 1)); }

std::string ucase(std::string_view text) { return changed(text, upperLetter); }

void appendUpper(std::string& into, std::string_view text) { appendChanged(into, text, upperLetter); }

std::string lcase(std::string_view text) { return changed(text, lowerLetter); }

int len(std::string_view text) {
    int count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        at += static_cast<unsigned char>(text[at]) < 0x80 ? 1 : characterSize(text, at);
    return count;
}

std::string left(std::string_view text, int count) {
    refuseNegative(count);
    return std::string(text.substr(0, advance(text, 0, count)));
}

std::string right(std::string_view text, int count) {
    refuseNegative(count);
    return std::string(text.substr(advance(text, 0, len(text) - count)));
}

std::string mid(std::string_view text, int start, int count) {
    refuseNegative(count);
    if (start < 1) automation::raise(automation::kInvalidCall);
    const std::size_t begin = advance(text, 0, start - 1);
    return std::string(text.substr(begin, advance(text, begin, count) - begin));
}

int instr(std::string_view text, std::string_view sought, int start) {
    if (start < 1) automation::raise(automation::kInvalidCall);
    int position = 1;
    for (std::size_t at = 0; at < text.size(); at += characterSize(text, at), ++position)
        if (position >= start && text.substr(at, sought.size()) == sought &&
            advance(text, at, len(sought)) == at + sought.size()) // no character is found by its first bytes alone
            return position;
    return 0;
}

std::string replaceAll(std::string_view text, std::string_view sought, std::string_view replacement) {
    if (sought.empty()) return std::string(text);
    std::string result;
    for (;;) {
        const std::size_t found = text.find(sought);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        result += replacement;
        text.remove_prefix(found + sought.size());
    }
}

std::string space(int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), ' '); }

std::string padLeft(std::string_view text, int width) { return space(width - len(text)).append(text); }

std::string padRight(std::string_view text, int width) { return std::string(text) + space(width - len(text)); }

bool startsWithNoCase(std::string_view text, std::string_view beginning) {
    return lcase(text).starts_with(lcase(beginning));
}

bool containsNoCase(std::string_view text, std::string_view sought) {
    return lcase(text).find(lcase(sought)) != std::string::npos;
}

} // namespace basic
