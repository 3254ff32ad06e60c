#include "sandbox/database/Script.h"

#include "automation/Ascii.h"
#include "automation/Members.h"

namespace sandbox {
namespace {

using automation::isBlank;
using automation::kBlanks;

} // namespace

std::vector<std::string_view> splitScript(std::string_view text) {
    std::vector<std::string_view> statements;
    std::size_t begin = 0;
    bool hasContent = false;
    auto finish = [&](std::size_t end, std::size_t next) {
        if (hasContent) statements.push_back(automation::trimmed(text.substr(begin, end - begin), kBlanks));
        begin = next;
        hasContent = false;
    };
    bool lineStart = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (lineStart) {
            lineStart = false;
            const std::size_t lineEnd = std::min(text.find('\n', i), text.size());
            if (automation::sameName(automation::trimmed(text.substr(i, lineEnd - i), kBlanks), "go")) {
                finish(i, lineEnd);
                i = lineEnd;
                lineStart = true;
                continue;
            }
        }
        if (c == '\n') {
            lineStart = true;
        } else if (c == '-' && text.substr(i, 2) == "--") {
            i = std::min(text.find('\n', i), text.size()) - 1;
        } else if (c == '\'') {
            hasContent = true;
            i = std::min(text.find(c, i + 1), text.size());
        } else if (c == ';') {
            finish(i, i + 1);
        } else if (!isBlank(c)) {
            hasContent = true;
        }
    }
    finish(text.size(), text.size());
    return statements;
}

} // namespace sandbox
