// How text compares and matches under the server's collation.
#include "basic/Text.h"
#include "sandbox/database/SqlFunctions.h"

#include <vector>

namespace sandbox {
namespace {

bool isAscii(std::string_view text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

std::string_view withoutEndBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

int compareFolded(std::string_view a, std::string_view b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const auto x = static_cast<unsigned char>(upper(a[i]));
        const auto y = static_cast<unsigned char>(upper(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

/// The text's characters, upper-cased, each as its bytes.
std::vector<std::string> characters(std::string_view text) {
    const std::string folded = basic::ucase(text);
    std::vector<std::string> list;
    for (std::size_t i = 0; i < folded.size();) {
        const auto lead = static_cast<unsigned char>(folded[i]);
        std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        length = std::min(length, folded.size() - i);
        list.push_back(folded.substr(i, length));
        i += length;
    }
    return list;
}

/// Whether `character` is in the set that begins after "[" at `at`; moves `at` behind its "]". Without "]" the bracket
/// matches nothing.
bool matchesSet(const std::vector<std::string>& pattern, std::size_t& at, const std::string& character) {
    std::size_t i = at + 1;
    const bool negated = i < pattern.size() && pattern[i] == "^";
    if (negated) ++i;
    bool inside = false;
    const std::size_t first = i;
    for (; i < pattern.size() && (pattern[i] != "]" || i == first); ++i) {
        if (i + 2 < pattern.size() && pattern[i + 1] == "-" && pattern[i + 2] != "]") {
            inside = inside || (pattern[i] <= character && character <= pattern[i + 2]);
            i += 2;
        } else {
            inside = inside || pattern[i] == character;
        }
    }
    if (i >= pattern.size()) {
        at = pattern.size();
        return false;
    }
    at = i + 1;
    return inside != negated;
}

} // namespace

int compareText(std::string_view a, std::string_view b) {
    a = withoutEndBlanks(a);
    b = withoutEndBlanks(b);
    if (isAscii(a) && isAscii(b)) return compareFolded(a, b);
    return compareFolded(basic::ucase(a), basic::ucase(b));
}

bool matchesLike(std::string_view text, std::string_view patternText) {
    const auto subject = characters(text);
    const auto pattern = characters(patternText);
    // On a mismatch the last "%" takes one character more.
    std::size_t at = 0, in = 0;
    std::size_t retryAt = std::string::npos, retryIn = 0;
    while (in < subject.size()) {
        bool matched = false;
        if (at < pattern.size() && pattern[at] == "%") {
            retryAt = ++at;
            retryIn = in;
            continue;
        }
        if (at < pattern.size()) {
            if (pattern[at] == "[") {
                matched = matchesSet(pattern, at, subject[in]);
            } else {
                matched = pattern[at] == "_" || pattern[at] == subject[in];
                ++at;
            }
        }
        if (matched) {
            ++in;
        } else if (retryAt != std::string::npos) {
            at = retryAt;
            in = ++retryIn;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == "%") ++at;
    return at == pattern.size();
}

} // namespace sandbox
