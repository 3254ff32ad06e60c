#include "slip/SettingsFile.h"

#include "automation/RunTimeError.h"
#include "basic/Text.h"
#include "common/basGRtoShop.h"

namespace goodsreq {
namespace {

constexpr std::string_view kAssign = ":=";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// What callers get for a key that is not there; it is not the text that the rule for empty values looks for.
constexpr const char* kNotFound = "NotFound";
constexpr const char* kNoValue = "NOTFOUND";
/// A character takes four bytes at most.
constexpr std::size_t kLongestCharacter = 4;

void complain(Module& module, const std::string& text) {
    module.ask({text, module.session.messageBoxCaption, forms::MessageIcon::critical, forms::MessageButtons::ok,
                forms::Answer::ok});
}

/// Takes the first line off `rest`, without its end.
std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (end == std::string_view::npos)
        rest = {};
    else
        rest.remove_prefix(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1));
    return line;
}

} // namespace

std::optional<std::string_view> findSetting(std::string_view content, std::string_view key) {
    const std::string sought = basic::ucase(key);
    while (!content.empty()) {
        const std::string_view line = takeLine(content);
        const std::size_t at = line.find(kAssign);
        if (at == std::string_view::npos || at == 0) continue;
        std::size_t end = at - 1; // of the name: before the last character
        while (end > 0 && (line[end] & 0xC0) == 0x80) --end;
        const std::string_view name = line.substr(0, end);
        if (name.size() <= sought.size() * kLongestCharacter && basic::ucase(name) == sought)
            return line.substr(at + kAssign.size());
    }
    return std::nullopt;
}

std::string FileCode(Module& module, const std::string& key, const std::string& path) {
    std::string result;
    trap(module, "basGoodsPurchase", "FileCode ", [&] {
        std::string content;
        try {
            content = module.system().readFile(path);
        } catch (const automation::RunTimeError& error) {
            if (error.number() != automation::kFileNotFound)
                throw automation::RunTimeError(error.number(), error.description() + ": " + path, error.source());
            complain(module, " Settings.ini file not found");
            return;
        }
        content = content.starts_with(kByteOrderMark) ? content.substr(kByteOrderMark.size())
                                                      : module.system().decode(content);
        const std::optional<std::string_view> value = findSetting(content, key);
        if (!value) {
            complain(module, key + "  invalid parameter in Settings.ini file");
            result = kNotFound;
        } else if (*value != kNoValue) {
            result = *value;
        }
    });
    return result;
}

} // namespace goodsreq
