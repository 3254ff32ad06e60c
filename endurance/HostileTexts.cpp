// Texts that mean something to a database or to a program: clerks enter them, and they lie in every text column.
#include "automation/RunTimeError.h"
#include "basic/Text.h"
#include "common/basGRtoShop.h"
#include "endurance/Endurance.h"
#include "endurance/clerk/Run.h"
#include "sandbox/data/SchemaText.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace endurance {

const std::vector<std::string>& hostileTexts() {
    // clang-format off
    static const std::vector<std::string> texts = {
        "O'Brien's", "''", "a\xCA\xBC' or 1=1 --\xEF\xBC\x87", "'; delete mesRequesttoShopDetail; --", "1' or '1'='1",
        "1; delete aitem", "/* -- */ --", "1 /*", "\"aitem\" [aitem] `aitem`", "%_[a-z]^", std::string("1\0' --", 6),
        "\x01\x02\x1B\x7F", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80", "\xC3\x28\xFF", "|%s%n|",
        std::string(8000, 'x'), std::string(8000, '\''), std::string(8000, '9')};
    // clang-format on
    return texts;
}

void workOnHostileTexts(const Options& options, Report& report) {
    constexpr int kSteps = 60;
    static const std::regex table("^create table (\\w+).*"), column("^    (\\w+) n?varchar\\((\\d+)\\).*");
    std::istringstream schema(sandbox::schemaText());
    std::string current;
    std::smatch found;
    unsigned turn = 0;
    Cases cases;
    for (std::string line; std::getline(schema, line);) {
        if (std::regex_match(line, found, table)) current = found[1];
        if (!std::regex_match(line, found, column)) continue;
        for (const std::string& hostile : hostileTexts()) {
            if (hostile.size() > 1000 || (++turn % 16 != 0 && options.quick)) continue;
            const std::string script = "update " + current + " set " + found[1].str() + " = " +
                                       goodsreq::quoted(basic::left(hostile, std::stoi(found[2])));
            cases.run(current + "." + found[1].str() + ": " + hostile, [&] {
                try {
                    EXPECT_EQ(clerk::play(options.seed + turn, kSteps, script).broken, "");
                } catch (const automation::RunTimeError&) {
                    // A key of that table, or a text that the server does not store.
                }
            });
        }
    }
    report.add(cases.row("hostile texts in every text column", "companies"));
}

} // namespace endurance
