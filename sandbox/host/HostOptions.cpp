#include "sandbox/host/HostOptions.h"

#include "basic/Text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>
#include <map>
#include <stdexcept>
#include <string_view>

namespace sandbox {

namespace {

/// A wrong option; the text is for the person.
struct OptionError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void take(std::string& field, const std::string&, const std::string& text) { field = text; }
void take(std::optional<std::string>& field, const std::string&, const std::string& text) { field = text; }

template <class Integer> void take(Integer& field, const std::string& option, const std::string& text) {
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, field);
    if (error != std::errc() || read != end)
        throw OptionError(option + " wants a whole number from " + std::to_string(std::numeric_limits<Integer>::min()) +
                          " to " + std::to_string(std::numeric_limits<Integer>::max()) + ", not \"" + text + "\"");
}

void take(Day& field, const std::string& option, const std::string& text) {
    const OptionError wrong(option + " wants a day as yyyy-mm-dd, not \"" + text + "\"");
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') throw wrong;
    const auto part = [&](std::size_t from, std::size_t count) {
        int value = 0;
        for (const char c : text.substr(from, count)) {
            if (c < '0' || c > '9') throw wrong;
            value = value * 10 + (c - '0');
        }
        return value;
    };
    field = {part(0, 4), part(5, 2), part(8, 2)};
    const std::chrono::year_month_day date{std::chrono::year(field.year),
                                           std::chrono::month(static_cast<unsigned>(field.month)),
                                           std::chrono::day(static_cast<unsigned>(field.day))};
    if (!date.ok() || field.year < 1900) throw wrong;
}

using O = HostOptions;
using Member =
    std::variant<std::string O::*, std::optional<std::string> O::*, std::int16_t O::*, std::int32_t O::*, Day O::*>;
const std::map<std::string, Member> kMembers = {
    {"--database", &O::database}, {"--connect", &O::connect},       {"--trace", &O::trace},     {"--log", &O::log},
    {"--key", &O::key},           {"--caption", &O::caption},       {"--date", &O::date},       {"--user", &O::user},
    {"--shop", &O::shop},         {"--interface", &O::interfaceId}, {"--company", &O::company},
};

/// What may be part of a connection string is not said again.
std::string unknownOption(const std::vector<std::string>& arguments, const std::string& option) {
    const bool connects = std::any_of(arguments.begin(), arguments.end(),
                                      [](const std::string& argument) { return argument.starts_with("--connect"); });
    if (!connects) return "unknown option \"" + option + "\" (--help lists them)";
    const std::string shown = option.starts_with("--") ? '"' + option.substr(0, option.find('=')) + '"' : "an argument";
    return shown +
           " is unknown (--help lists the options); --connect wants its text behind it, as one argument in quotes";
}

HostOptions parse(const std::vector<std::string>& arguments) {
    HostOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& option = arguments[i];
        if (option == "--help" || option == "-h" || option == "/?") {
            options.help = true;
            continue;
        }
        const auto found = kMembers.find(option);
        if (found == kMembers.end()) throw OptionError(unknownOption(arguments, option));
        // The key alone may be empty, to show that a wrong one opens nothing.
        if (++i == arguments.size() || (arguments[i].empty() && option != "--key"))
            throw OptionError(option + " wants a value");
        std::visit([&](auto member) { take(options.*member, option, arguments[i]); }, found->second);
    }
    if (options.connect && !options.trace.empty())
        throw OptionError("--trace works on the sandbox's database only: with --connect let the server trace");
    return options;
}

/// What a connection string says of passwords: each as it stands there, and without its quotes.
std::vector<std::string> secretsIn(std::string_view connection) {
    std::vector<std::string> secrets;
    while (!connection.empty()) {
        std::size_t end = 0;
        for (char quote = 0; end < connection.size() && (quote || connection[end] != ';'); ++end) {
            const char c = connection[end];
            if (quote == c)
                quote = 0;
            else if (!quote && (c == '"' || c == '\''))
                quote = c;
        }
        const std::string_view part = connection.substr(0, end);
        connection.remove_prefix(std::min(end + 1, connection.size()));
        const std::size_t sign = part.find('=');
        if (sign == std::string_view::npos) continue;
        const std::string key = basic::lcase(part.substr(0, sign));
        const std::string value = basic::trim(part.substr(sign + 1));
        std::string bare = value;
        if (value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0]) {
            const std::string quote(1, value[0]);
            bare = basic::replaceAll(value.substr(1, value.size() - 2), quote + quote, quote);
            for (std::string& inner : secretsIn(bare)) secrets.push_back(std::move(inner));
        }
        if (key.find("password") == std::string::npos && key.find("pwd") == std::string::npos) continue;
        for (const std::string& secret : {value, bare})
            if (!secret.empty()) secrets.push_back(secret);
    }
    return secrets;
}

} // namespace

std::variant<HostOptions, std::string> parseHostOptions(const std::vector<std::string>& arguments) {
    try {
        return parse(arguments);
    } catch (const OptionError& error) {
        return error.what();
    }
}

void readConnection(HostOptions& options, const std::function<std::string(const std::string&)>& environment,
                    std::istream& input) {
    if (!options.connect) return;
    constexpr std::string_view kVariable = "env:";
    std::string& text = *options.connect;
    if (text == "-") {
        std::getline(input, text);
        if (text.ends_with('\r')) text.pop_back();
        if (!input || text.empty()) throw OptionError("--connect -: no connection string came in");
    } else if (text.starts_with(kVariable)) {
        const std::string name = text.substr(kVariable.size());
        text = environment(name);
        if (text.empty()) throw OptionError("--connect: the environment has no connection string in " + name);
    }
}

std::string withoutSecrets(std::string text, const HostOptions& options) {
    constexpr const char* kShown = "...";
    if (!options.connect || options.connect->empty()) return text;
    text = basic::replaceAll(text, *options.connect, kShown);
    for (const std::string& secret : secretsIn(*options.connect)) text = basic::replaceAll(text, secret, kShown);
    return text;
}

const char* hostHelp() {
    return "goodsreq-host: opens the goods request module as the back office does.\n"
           "\n"
           "  --database FILE      the sandbox's database; made with the sample company where it is missing\n"
           "                       (company.db)\n"
           "  --connect TEXT       an ADO connection string for a real server, in place of --database; untried on one.\n"
           "                       \"-\" reads it from standard input, \"env:NAME\" from that variable: a process list shows\n"
           "                       what stands on a command line\n"
           "  --trace FILE         write every statement to FILE, one a line; not with --connect, where the module's\n"
           "                       record sets are ADO's own and only the server sees every statement\n"
           "  --log FILE           write what happens to the windows to FILE, such as \"active frmMaster\", and the texts of\n"
           "                       messages\n"
           "  --interface N        1507 goods request (default), 1611 inter-division sales request\n"
           "  --user N             1 all rights (default), 2 no deletion, 3 administrator, 4 without a rights row\n"
           "  --shop N             the requesting shop (1)\n"
           "  --company N          the company (1)\n"
           "  --date yyyy-mm-dd    the processing date (2026-03-31)\n"
           "  --caption TEXT       title of message boxes (Retail Back Office)\n"
           "  --key TEXT           the project key\n"
           "  --help               this text\n";
}

} // namespace sandbox
