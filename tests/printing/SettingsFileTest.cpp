// The settings file: which line a key finds, what the person is told, and numbers strict and lenient.
#include "slip/SettingsFile.h"
#include "automation/RunTimeError.h"
#include "slip/SlipSettings.h"
#include "tests/printing/SlipWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace printing {
namespace {

using goodsreq::findSetting;

TEST(SettingsFile, FindsTheFirstLineWithTheName) {
    struct Case {
        const char* what;
        std::string content;
        const char* key;
        std::optional<std::string> value;
    };
    const Case cases[] = {
        {"any letter case", "PageWidth :=80\r\n", "pagewidth", "80"},
        {"the first of two", "a :=1\nA :=2\n", "a", "1"},
        {"no blank before the sign: the last letter is lost", "printtoscreen:=1\n", "printtoscreen", std::nullopt},
        {"... and another key is found", "printtoscreenx:=1\n", "printtoscreen", "1"},
        {"two blanks belong to the name", "port  :=x\n", "port", std::nullopt},
        {"the value is not trimmed", "port := LPT1 \r\n", "port", " LPT1 "},
        {"a value with the sign in it", "port :=a:=b\n", "port", "a:=b"},
        {"no value", "port :=\r\nq :=1", "port", ""},
        {"a last line without an end", "a :=1\nb :=2", "b", "2"},
        {"carriage returns only", "a :=1\rb :=2\r", "b", "2"},
        {"empty lines and remarks are passed over", "\n\nremark\na :=1", "a", "1"},
        {"the sign in the first column makes no name", ":=5\na :=1", "a", "1"},
        {"nothing at all", "", "a", std::nullopt},
    };
    for (const Case& c : cases) {
        const auto found = findSetting(c.content, c.key);
        EXPECT_EQ(found ? std::optional<std::string>(*found) : std::nullopt, c.value) << c.what;
    }
}

TEST(SettingsFile, ReadsRandomBytesAndTenMegabytes) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string content;
        for (int i = 0; i < 500; ++i)
            content += static_cast<char>(random() % 12 == 0 ? ":= \r\n\0a"[random() % 7] : random());
        findSetting(content, "a");
    }
    std::string large;
    while (large.size() < 10'000'000) large += "somekey :=some value that nobody asks for\r\n";
    EXPECT_FALSE(findSetting(large, "pagewidth"));
    large += "pagewidth :=80";
    EXPECT_EQ(findSetting(large, "pagewidth"), "80");
    EXPECT_FALSE(findSetting(std::string(10'000'000, 'x'), "pagewidth"));
}

class SettingsReader : public testing::Test {
protected:
    SlipWorld world;
    const std::string path = "C:\\Retail\\ShopSetting.txt";

    std::string read(const std::string& content, const std::string& key = "k") {
        world.desktop.messages.clear();
        world.setSettings(content);
        return goodsreq::FileCode(world.module, key, path);
    }
};

TEST_F(SettingsReader, TellsOfAMissingKeyAndOnlyOfThat) {
    EXPECT_EQ(read("a :=1\r\n", "PageWidth"), "NotFound");
    EXPECT_EQ(world.desktop.messages, std::vector<std::string>{"PageWidth  invalid parameter in Settings.ini file"});
    EXPECT_EQ(read(""), "NotFound");
    EXPECT_EQ(world.desktop.messages.size(), 1u);
    for (const char* silent : {"k :=", "k :=NOTFOUND", "k :=NOTFOUND\r\n"}) {
        EXPECT_EQ(read(silent), "") << silent;
        EXPECT_TRUE(world.desktop.messages.empty()) << silent;
    }
    EXPECT_EQ(read("k :=notfound"), "notfound");
}

TEST_F(SettingsReader, TellsOfAMissingFile) {
    EXPECT_EQ(goodsreq::FileCode(world.module, "k", "C:\\Retail\\Other.txt"), "");
    EXPECT_EQ(world.desktop.messages, std::vector<std::string>{" Settings.ini file not found"});
}

TEST_F(SettingsReader, ReadsTheCodePageAndUtf8) {
    EXPECT_EQ(read("k :=Caf\xE9"), "Café");
    EXPECT_EQ(read("\xEF\xBB\xBFk :=Caf\xC3\xA9"), "Café");
}

TEST_F(SettingsReader, TurnsValuesIntoNumbers) {
    struct Case {
        const char* value;
        int strict; ///< or the error's number, negative
        int lenient;
    };
    constexpr int kMismatch = -13;
    constexpr int kOverflow = -6;
    const Case cases[] = {
        // clang-format off
        {"80", 80, 80},       {" 80 ", 80, 80},          {"-3", -3, -3},
        {"2.5", 2, 2},        {"3.5", 4, 4},             {"", kMismatch, 0},
        {"12x", kMismatch, 12}, {"x12", kMismatch, 0},   {"32767", 32767, 32767},
        {"40000", kOverflow, kOverflow},                 {"-40000", kOverflow, kOverflow},
    };
    // clang-format on
    const auto outcome = [](const auto& read) {
        try {
            return read();
        } catch (const automation::RunTimeError& error) {
            return static_cast<int>(-error.number());
        }
    };
    const goodsreq::PrintSettings settings(world.module);
    for (const Case& c : cases) {
        world.setSettings(std::string("k :=") + c.value + "\r\n");
        EXPECT_EQ(outcome([&] { return settings.strict("k"); }), c.strict) << c.value;
        EXPECT_EQ(outcome([&] { return settings.lenient("k"); }), c.lenient) << c.value;
    }
    world.setSettings("");
    EXPECT_EQ(outcome([&] { return settings.strict("k"); }), kMismatch);
    EXPECT_EQ(outcome([&] { return settings.lenient("k"); }), 0);
}

// Whatever the settings say, printing ends, and prints no more than the lines ask for.
TEST_F(SettingsReader, BadSettingsNeitherHangNorFlood) {
    const std::string text = SlipWorld::settingsText({});
    std::vector<std::string> keys;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1)
        keys.push_back(text.substr(at, text.find(" :=", at) - at));
    ASSERT_GT(keys.size(), 30u);
    for (const std::string& key : keys)
        for (const char* value : {"0", "-1", "-32768", "40000", "12x", "", "-"}) {
            world.setSettings(SlipWorld::settingsText({{key, value}}));
            world.system.files["LPT1"].clear();
            try {
                world.print(kThreeLines);
            } catch (const automation::RunTimeError&) {
            } catch (const std::out_of_range&) { // the port setting itself: written elsewhere
            }
            EXPECT_LT(world.system.files["LPT1"].size(), 1'000'000u) << key << " " << value;
        }
}

TEST_F(SettingsReader, AMissingStrictKeyEndsThePrintAndALenientOneDoesNot) {
    world.setSettings(SlipWorld::settingsText({{"pagewidth", "-"}}));
    EXPECT_THROW(world.print(kThreeLines), automation::RunTimeError);
    EXPECT_EQ(world.desktop.messages, std::vector<std::string>{"pagewidth  invalid parameter in Settings.ini file"});
    EXPECT_FALSE(world.system.files.contains("LPT1"));
    const std::size_t files = world.system.files.size();
    for (const char* port : {"-", ""}) {
        world.setSettings(SlipWorld::settingsText({{"port", port}}));
        EXPECT_THROW(world.print(kThreeLines), automation::RunTimeError) << port;
        EXPECT_EQ(world.system.files.size(), files) << "no file by the name of nothing";
    }

    world.desktop.messages.clear();
    world.setSettings(SlipWorld::settingsText({{"showtotalqty", "-"}}));
    EXPECT_FALSE(world.print(kThreeLines).empty());
    EXPECT_EQ(world.desktop.messages, std::vector<std::string>{"showtotalqty  invalid parameter in Settings.ini file"});
}

// The header's own trap reports its missing key; the rest of the slip is printed.
TEST_F(SettingsReader, AMissingKeyOfTheHeaderLeavesTheHeaderOut) {
    world.setSettings(SlipWorld::settingsText({{"linesafteraddress", "-"}}));
    const std::string slip = world.print(kThreeLines);
    ASSERT_EQ(world.desktop.messages.size(), 2u);
    EXPECT_EQ(world.desktop.messages[0], "linesafteraddress  invalid parameter in Settings.ini file");
    EXPECT_NE(world.desktop.messages[1].find("HeaderPrint"), std::string::npos);
    EXPECT_EQ(slip.find("From :"), std::string::npos);
    EXPECT_NE(slip.find("Sl.No"), std::string::npos);
}

TEST_F(SettingsReader, OneAndTwoChooseTheOrderOfTheLinesAndOthersNone) {
    const std::pair<const char*, const char*> orders[] = {{"0", "u.UnitId "},
                                                          {"1", " order by srdShopId, SRDrequestid, srdItemId"},
                                                          {"2", " order by a.itemdescription"},
                                                          {"3", "u.UnitId "}};
    for (const auto& [setting, ending] : orders) {
        world.setSettings(SlipWorld::settingsText({{"printinsavedorder", setting}}));
        world.statements.clear();
        world.print(kThreeLines);
        EXPECT_TRUE(world.statements.at(0).ends_with(ending)) << world.statements.at(0);
    }
}

TEST_F(SettingsReader, NothingIsOpenedOrLookedUpForWhatIsNotPrinted) {
    world.setSettings(SlipWorld::settingsText({{"spaceinlinecode", "-1"}}));
    const auto files = world.system.files;
    EXPECT_THROW(world.print(kThreeLines), automation::RunTimeError);
    EXPECT_EQ(world.system.files, files);
    EXPECT_TRUE(world.statements.empty());
    const auto lookedUp = [&](const char* table) {
        return std::count_if(world.statements.begin(), world.statements.end(),
                             [&](const std::string& s) { return s.find(table) != s.npos; });
    };
    struct Case {
        const char* height;
        int company, sender; ///< look-ups
    };
    for (const Case& c : {Case{"2", 0, 0}, {"3", 0, 0}, {"4", 1, 0}, {"5", 2, 0}, {"8", 4, 1}, {"0", 4, 1}}) {
        SCOPED_TRACE(c.height);
        world.setSettings(SlipWorld::settingsText({{"totalheadcount", c.height},
                                                   {"linetoskipfirst", "2"},
                                                   {"PrintCompanyName", "1"},
                                                   {"printadd1", "1"},
                                                   {"printadd2", "1"},
                                                   {"printadd3", "1"}}));
        world.statements.clear();
        world.print(kThreeLines);
        EXPECT_EQ(lookedUp("acompanymaster"), c.company);
        EXPECT_EQ(lookedUp("acountrymaster"), c.sender);
    }
}

TEST_F(SettingsReader, AddressesAreAskedForOnlyWithTheCompany) {
    world.setSettings(SlipWorld::settingsText({{"PrintCompanyName", "0"}, {"printadd1", "-"}}));
    world.print(kThreeLines);
    EXPECT_TRUE(world.desktop.messages.empty());
}

TEST(SlipSettingsFile, LineEndsAndByteOrderMarkChangeNothing) {
    const Settings changes{{"showcostintrans", "1"}};
    SlipWorld world(changes);
    const std::string printed = world.print(kThreeLines);
    std::string withoutLastEnd = SlipWorld::settingsText(changes);
    withoutLastEnd.erase(withoutLastEnd.size() - 2);
    for (const std::string& content : {SlipWorld::settingsText(changes, "\n"), SlipWorld::settingsText(changes, "\r"),
                                       "\xEF\xBB\xBF" + SlipWorld::settingsText(changes), withoutLastEnd}) {
        world.setSettings(content);
        EXPECT_EQ(world.print(kThreeLines), printed);
    }
    EXPECT_TRUE(world.desktop.messages.empty());
}

} // namespace
} // namespace printing
