#include "sandbox/database/Script.h"

#include "automation/Members.h"

namespace sandbox {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view stripped(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

} // namespace

std::vector<std::string_view> splitScript(std::string_view text) {
    std::vector<std::string_view> statements;
    std::size_t begin = 0;
    bool hasContent = false;
    auto finish = [&](std::size_t end, std::size_t next) {
        if (hasContent) statements.push_back(stripped(text.substr(begin, end - begin)));
        begin = next;
        hasContent = false;
    };
    bool lineStart = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (lineStart) {
            lineStart = false;
            const std::size_t lineEnd = std::min(text.find('\n', i), text.size());
            if (automation::sameName(stripped(text.substr(i, lineEnd - i)), "go")) {
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
        } else if (c == '/' && text.substr(i, 2) == "/*") {
            const std::size_t close = text.find("*/", i + 2);
            i = close == std::string_view::npos ? text.size() : close + 1;
        } else if (c == '\'' || c == '"' || c == '[') {
            hasContent = true;
            i = std::min(text.find(c == '[' ? ']' : c, i + 1), text.size());
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
