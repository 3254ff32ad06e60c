// What the host program is told on its command line.
#pragma once

#include "sandbox/data/SampleCompany.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sandbox {

struct HostOptions {
    std::string database = "company.db"; ///< the sandbox's database file
    std::optional<std::string> connect; ///< a connection string for the machine's own ADO, in place of the sandbox
    std::string trace;                  ///< file for the statements; none where it is empty
    std::string log;                    ///< file for what the windows do; none where it is empty
    std::string open;                   ///< the dialog that F11 opens over line entry: "scan", "fetch" or none
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

/// The text of --help.
const char* hostHelp();

} // namespace sandbox
