// What the host program is told on its command line.
#pragma once

#include "sandbox/data/SampleCompany.h"

#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sandbox {

struct HostOptions {
    std::string database = "company.db"; ///< the sandbox's database file
    std::optional<std::string> connect;  ///< a connection string for the machine's own ADO, in place of the sandbox
    std::string trace;                   ///< file for the statements; none where it is empty
    std::string log;                     ///< file for what the windows do; none where it is empty
    std::int32_t interfaceId = kGoodsRequest;
    std::int16_t company = kSampleCompanyId;
    std::int16_t user = kFullRightsUser;
    std::int16_t shop = kMainShop;
    Day date = kSampleProcessDate;
    std::string key = "KOVA/XB/TRAM/842";
    std::string caption = "Retail Back Office";
    bool help = false;
};

/// The options, or one line that says what is wrong with them. The program's own name is not among the arguments.
std::variant<HostOptions, std::string> parseHostOptions(const std::vector<std::string>& arguments);

/// Puts the connection string itself in place of "-" (the first line of `input`) and of "env:NAME" (that variable), so
/// that no command line has to hold it. Throws std::runtime_error, for the person, where there is none.
void readConnection(HostOptions& options, const std::function<std::string(const std::string&)>& environment,
                    std::istream& input);

/// A text for people or a file, without the connection string and its password.
std::string withoutSecrets(std::string text, const HostOptions& options);

/// The text of --help.
const char* hostHelp();

} // namespace sandbox
