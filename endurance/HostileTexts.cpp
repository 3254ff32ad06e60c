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

const std::vector<Hostile>& hostileTexts() {
    static const std::vector<Hostile> texts = {
        {"an apostrophe", "O'Brien's"},
        {"apostrophes only", "''"},
        {"other apostrophes", "a\xCA\xBC' or 1=1 --\xEF\xBC\x87"},
        {"a statement", "'; delete mesRequesttoShopDetail; --"},
        {"a second condition", "1' or '1'='1"},
        {"a statement after a number", "1; delete aitem"},
        {"comment marks", "/* -- */ --"},
        {"an open comment", "1 /*"},
        {"quotation marks", "\"aitem\" [aitem] `aitem`"},
        {"wild cards", "%_[a-z]^"},
        {"a null character", std::string("1\0' --", 6)},
        {"control characters", "\x01\x02\x1B\x7F"},
        {"letters outside the code page", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80"},
        {"no UTF-8", "\xC3\x28\xFF"},
        {"a bar and a percent sign", "|%s%n|"},
        {"8000 letters", std::string(8000, 'x')},
        {"8000 apostrophes", std::string(8000, '\'')},
        {"8000 digits", std::string(8000, '9')},
    };
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
        for (const Hostile& hostile : hostileTexts()) {
            if (hostile.text.size() > 1000 || (++turn % 16 != 0 && options.quick)) continue;
            const std::string script = "update " + current + " set " + found[1].str() + " = " +
                                       goodsreq::quoted(basic::left(hostile.text, std::stoi(found[2])));
            cases.run(current + "." + found[1].str() + ": " + hostile.name, [&] {
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
