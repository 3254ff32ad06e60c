// Settings files: plain text, on each line a name, one blank, ":=" and the value up to the line's end.
#pragma once

#include "common/Module.h"

#include <optional>
#include <string>
#include <string_view>

namespace goodsreq {

/// The value of the first line with that name, in any letter case, as it stands; nothing when no line has it. The
/// content is UTF-8; the name ends one character before ":=", whatever that character is. Lines end in CR LF, CR or LF,
/// the last one perhaps in nothing; a line without ":=", or with it in front, has no name.
std::optional<std::string_view> findSetting(std::string_view content, std::string_view key);

/// The value of `key` in the file at `path`, read anew each time. A missing key shows a message and gives "NotFound";
/// an empty value and "NOTFOUND" give "". A missing file shows a message and gives "". Other errors are reported.
std::string FileCode(Module& module, const std::string& key, const std::string& path);

} // namespace goodsreq
