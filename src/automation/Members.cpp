#include "automation/Members.h"

#include "automation/Ascii.h"

#include <algorithm>

namespace automation {

bool NameLess::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

std::size_t NameHash::operator()(std::string_view name) const {
    std::uint64_t hash = 0xCBF29CE484222325u; // FNV-1a
    for (char c : name) hash = (hash ^ static_cast<unsigned char>(lower(c))) * 0x100000001B3u;
    return static_cast<std::size_t>(hash);
}

Array Object::elements() { raise(kNoSuchMember); }

} // namespace automation
