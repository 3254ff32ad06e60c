// The settings file: which line a key finds, what the person is told, and numbers strict and lenient.
#include "slip/SettingsFile.h"
#include "slip/SlipSettings.h"
#include "tests/basic/ExpectError.h"
#include "tests/printing/SlipWorld.h"

#include <algorithm>
#include <sstream>

namespace printing {
namespace {

TEST(SettingsFile, FindsTheFirstLineWithTheName) {
    const std::tuple<const char*, std::string, const char*, std::optional<std::string>> cases[] = {
        {"any letter case", "PageWidth :=80\r\n", "pagewidth", "80"},
        {"the first of two", "a :=1\nA :=2\n", "a", "1"},
        {"no blank before the sign: the last letter is lost", "printtoscreen:=1\n", "printtoscreen", std::nullopt},
        {"... and another key is found", "printtoscreenx:=1\n", "printtoscreen", "1"},
        {"two blanks belong to the name", "port  :=x\n", "port", std::nullopt},
        {"a blank of two bytes", "port\xC2\xA0:=x\n", "port", "x"},
        {"the value is not trimmed", "port := LPT1 \r\n", "port", " LPT1 "},
        {"a value with the sign in it", "port :=a:=b\n", "port", "a:=b"},
        {"no value", "port :=\r\nq :=1", "port", ""},
        {"a last line without an end", "a :=1\nb :=2", "b", "2"},
        {"carriage returns only", "a :=1\rb :=2\r", "b", "2"},
        {"empty lines and remarks are passed over", "\n\nremark\na :=1", "a", "1"},
        {"the sign in the first column makes no name", ":=5\n", ":=5", std::nullopt},
        {"nothing at all", "", "a", std::nullopt},
    };
    for (const auto& [what, content, key, value] : cases) EXPECT_EQ(goodsreq::findSetting(content, key), value) << what;
}

class SettingsReader : public testing::Test {
protected:
    SlipWorld world;

    std::string read(const std::string& content) {
        world.setSettings(content);
        return goodsreq::FileCode(world.module, "k", "C:\\Retail\\ShopSetting.txt");
    }
};

TEST_F(SettingsReader, ReadsTheCodePageAndUtf8AndSaysNothingOfAValueThatIsEmptyOrNone) {
    EXPECT_EQ(read("k :=Caf\xE9"), "Café");
    EXPECT_EQ(read("\xEF\xBB\xBFk :=Caf\xC3\xA9"), "Café");
    for (const char* silent : {"k :=", "k :=NOTFOUND", "k :=NOTFOUND\r\n"}) EXPECT_EQ(read(silent), "") << silent;
    EXPECT_EQ(read("k :=notfound"), "notfound");
    EXPECT_TRUE(world.desktop.messages.empty());
    EXPECT_EQ(read(""), "NotFound");
}

TEST_F(SettingsReader, TurnsValuesIntoNumbers) {
    constexpr int kMismatch = -13, kOverflow = -6; // for the error's number
    const std::tuple<const char*, int, int> cases[] = {
        // clang-format off
        {"80", 80, 80},       {" 80 ", 80, 80},          {"-3", -3, -3},
        {"2.5", 2, 2},        {"3.5", 4, 4},             {"", kMismatch, 0},
        {"12x", kMismatch, 12}, {"x12", kMismatch, 0},   {"32767", 32767, 32767},
        {"40000", kOverflow, kOverflow},                 {"-40000", kOverflow, kOverflow},
        {nullptr, kMismatch, 0},
    };
    // clang-format on
    const goodsreq::PrintSettings settings(world.module);
    int number = 0;
    const auto outcome = [&](const auto& read) { return errorOf(read) ? -errorOf(read) : number; };
    for (const auto& [value, strict, lenient] : cases) {
        world.setSettings(value ? std::string("k :=") + value + "\r\n" : "");
        EXPECT_EQ(outcome([&] { number = settings.strict("k"); }), strict) << value;
        EXPECT_EQ(outcome([&] { number = settings.lenient("k"); }), lenient) << value;
    }
}

// A strict key ends the print before anything is opened, one of the header ends the header, a lenient one counts as 0.
TEST_F(SettingsReader, EachKeyThatIsMissingOrNoNumberEndsWhatItsKindSays) {
    enum Kind { strict, ofHeader, lenient };
    const std::pair<Kind, const char*> kinds[] = {
        {strict,
         "internalprintnoofrecords pagewidth SlNo Qty Unit Rate Amount ExtraLine EndPage Seperator printheadertopline "
         "printheaderbottomline printdetailbottomline spaceinlinecode printfooterineachpage"},
        {ofHeader, "headerleftmargin linetoskipfirst linesafteraddress linesafterheader PrintCompanyName printadd1 "
                   "printadd2 printadd3"},
        {lenient, "showcostintrans showspintransrep showitemcodeinprint printinsavedorder showtotalqty totalheadcount "
                  "printtransnameabove"}};
    for (const auto& [kind, keys] : kinds) {
        std::istringstream words(keys);
        for (std::string key; words >> key;) {
            for (const char* value : {"-", "0x"}) {
                SCOPED_TRACE(key + " " + value);
                world.setSettings(SlipWorld::settingsText({{key, value}}));
                world.desktop.messages.clear();
                world.system.files.erase("LPT1");
                std::string slip;
                const Failure failure = failureOf([&] { slip = world.print(kThreeLines); });
                std::string told = failure.number ? failure.text : "";
                auto& boxes = world.desktop.messages;
                if (*value == '-') {
                    ASSERT_FALSE(boxes.empty());
                    EXPECT_EQ(boxes.front(), key + "  invalid parameter in Settings.ini file");
                    boxes.erase(boxes.begin());
                }
                EXPECT_EQ(boxes.size(), kind == ofHeader ? 1u : 0u);
                if (kind == ofHeader) told = boxes.front();
                EXPECT_EQ(told.find('"' + key + '"') != std::string::npos, kind != lenient) << told;
                EXPECT_EQ(world.system.files.contains("LPT1"), kind != strict);
                EXPECT_EQ(slip.find("From :") != std::string::npos, kind == lenient);
                EXPECT_EQ(slip.find("Sl.No") != std::string::npos, kind != strict);
            }
        }
    }
}

TEST_F(SettingsReader, NothingIsOpenedOrLookedUpOrSortedForWhatIsNotPrinted) {
    world.setSettings(SlipWorld::settingsText({{"spaceinlinecode", "-1"}}));
    const auto files = world.system.files;
    EXPECT_NE(errorOf([&] { world.print(kThreeLines); }), 0);
    EXPECT_EQ(world.system.files, files);
    EXPECT_TRUE(world.statements.empty());
    // Other numbers than 1 and 2 choose no order of the lines.
    for (const char* number : {"0", "3"}) {
        world.setSettings(SlipWorld::settingsText({{"printinsavedorder", number}}));
        world.statements.clear();
        world.print(kThreeLines);
        EXPECT_TRUE(world.statements.at(0).ends_with("u.UnitId ")) << world.statements.at(0);
    }
    const auto lookedUp = [&](const char* table) {
        return std::count_if(world.statements.begin(), world.statements.end(),
                             [&](const std::string& s) { return s.find(table) != s.npos; });
    };
    for (const auto& [height, company, sender] :
         {std::tuple("2", 0, 0), {"3", 0, 0}, {"4", 1, 0}, {"5", 2, 0}, {"8", 4, 1}, {"0", 4, 1}}) {
        SCOPED_TRACE(height);
        world.setSettings(
            SlipWorld::settingsText({{"totalheadcount", height}, {"linetoskipfirst", "2"}, {"printadd2", "1"}}));
        world.statements.clear();
        world.print(kThreeLines);
        EXPECT_EQ(lookedUp("acompanymaster"), company);
        EXPECT_EQ(lookedUp("acountrymaster"), sender);
    }
}

TEST_F(SettingsReader, LeavesTheWayOfADateToTheUser) {
    world.desktop.userLocale.shortDate = "yyyy-MM-dd";
    EXPECT_NE(world.print(kThreeLines).find("Request Date   : 2026-03-30"), std::string::npos);
}

} // namespace
} // namespace printing
