#include "com/MemberNames.h"

#include "automation/Members.h"

#include <map>
#include <mutex>
#include <vector>

namespace com {
namespace {

struct Table {
    std::mutex mutex;
    std::map<std::string, DISPID, automation::NameLess> ids;
    std::vector<std::string> names;
};

// Never destroyed: objects may outlive the DLL's own clean-up at the end of the process.
Table& table() {
    static Table& theTable = *new Table;
    return theTable;
}

} // namespace

DISPID memberId(std::string_view name) {
    if (name.empty()) return DISPID_VALUE;
    if (automation::sameName(name, "_NewEnum")) return DISPID_NEWENUM;
    Table& all = table();
    const std::lock_guard lock(all.mutex);
    if (const auto found = all.ids.find(name); found != all.ids.end()) return found->second;
    all.names.emplace_back(name);
    const auto id = static_cast<DISPID>(all.names.size());
    all.ids.emplace(name, id);
    return id;
}

std::optional<std::string> memberName(DISPID id) {
    if (id == DISPID_VALUE) return std::string();
    Table& all = table();
    const std::lock_guard lock(all.mutex);
    if (id < 1 || static_cast<std::size_t>(id) > all.names.size()) return std::nullopt;
    return all.names[static_cast<std::size_t>(id) - 1];
}

} // namespace com
