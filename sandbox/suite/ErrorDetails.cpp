#include "sandbox/suite/ErrorDetails.h"

#include "basic/Conversion.h"
#include "basic/Format.h"

#include <filesystem>
#include <fstream>

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

/// One field of a log line.
std::string field(const std::string& text) {
    std::string flat = text;
    for (char& c : flat)
        if (c == '\t' || c == '\r' || c == '\n') c = ' ';
    return flat;
}

} // namespace

const automation::Members<ErrorDetails>& ErrorDetails::members() {
    static const auto table = [] {
        automation::Members<ErrorDetails> m;
        m.method("ErrorTrack", 8, 8, [](ErrorDetails& self, Arguments a) {
            self.ErrorTrack({basic::concatText(a[0]), basic::concatText(a[1]), basic::concatText(a[2]),
                             basic::concatText(a[3]), basic::concatText(a[4]), basic::concatText(a[5]),
                             basic::concatText(a[6])});
            return Value();
        });
        return m;
    }();
    return table;
}

void ErrorDetails::ErrorTrack(const Details& details) {
    writeLog(details);
    desktop_.messageBox({"Error " + details.number + ": " + details.description + "\r\n\r\nWhere: " + details.module +
                             ", " + details.routine + "\r\nSource: " + details.source,
                         "Error", forms::MessageIcon::critical, forms::MessageButtons::ok, forms::Answer::ok});
}

/// A log that cannot be written keeps nobody from seeing the message.
void ErrorDetails::writeLog(const Details& details) {
    if (logFolder_.empty()) return;
    const auto name = std::u8string(logFolder_.begin(), logFolder_.end());
    std::ofstream log(std::filesystem::path(name) / "errors.log", std::ios::app | std::ios::binary);
    log << basic::format(desktop_.now(), "yyyy/mm/dd hh:nn:ss") << '\t' << field(details.number) << '\t'
        << field(details.module) << '\t' << field(details.routine) << '\t' << field(details.user) << '\t'
        << field(details.mode) << '\t' << field(details.source) << '\t' << field(details.description) << '\n';
}

} // namespace sandbox
