#include "sandbox/host/SuiteManifest.h"

#include "automation/Members.h"

#include <algorithm>

namespace sandbox {

namespace {

/// The value of the attribute in this line; "" where it has none of that name.
std::string_view attribute(std::string_view line, std::string_view name) {
    const std::string opening = " " + std::string(name) + "=\"";
    const std::size_t at = line.find(opening);
    if (at == std::string_view::npos) return {};
    const std::size_t begin = at + opening.size();
    return line.substr(begin, line.find('"', begin) - begin);
}

/// Calls `use` with each line, its line end included.
template <class Use> void eachLine(std::string_view text, Use use) {
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        use(text.substr(0, size));
        text.remove_prefix(size);
    }
}

} // namespace

std::vector<std::string> progIdsOf(std::string_view manifest) {
    std::vector<std::string> found;
    eachLine(manifest, [&](std::string_view line) {
        if (const std::string_view id = attribute(line, "progid"); !id.empty()) found.emplace_back(id);
    });
    return found;
}

std::string manifestWithout(std::string_view sandboxManifest, std::string_view assembly,
                            const std::vector<std::string>& progIds) {
    const std::string_view oldName = attribute(sandboxManifest, "name");
    std::string result;
    bool renamed = false;
    eachLine(sandboxManifest, [&](std::string_view line) {
        const std::string_view id = attribute(line, "progid");
        if (std::ranges::any_of(progIds, [&](const std::string& left) { return automation::sameName(left, id); }))
            return;
        std::string kept(line);
        if (!renamed && !oldName.empty() && attribute(line, "name") == oldName) {
            kept.replace(kept.find(" name=\"") + 7, oldName.size(), assembly);
            renamed = true;
        }
        result += kept;
    });
    return result;
}

} // namespace sandbox
