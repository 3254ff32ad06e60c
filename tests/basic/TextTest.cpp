#include "basic/Text.h"
#include "basic/Apostrophes.h"
#include "tests/basic/ExpectError.h"

#include <climits>

using namespace automation;
using namespace basic;

namespace {

const std::string kCoffee = "Caf\u00e9 \u20ac5 \U0001F600"; // 9 characters, 16 bytes

TEST(Text, IsCutAndPaddedByCharactersNotBytes) {
    const std::pair<std::string, const char*> cases[] = {
        // clang-format off
        {trim("  a b  "), "a b"}, {ltrim("  a "), "a "}, {rtrim(" a  "), " a"}, {trim("   "), ""},
        {trim("\ta\n"), "\ta\n"}, {trim("\u00a0a"), "\u00a0a"}, // blanks only
        {left(kCoffee, 4), "Caf\u00e9"}, {left(kCoffee, 99), kCoffee.c_str()}, {left(kCoffee, 0), ""},
        {right(kCoffee, 1), "\U0001F600"}, {right(kCoffee, 4), "\u20ac5 \U0001F600"},
        {right(kCoffee, INT_MAX), kCoffee.c_str()}, {mid(kCoffee, 4, 3), "\u00e9 \u20ac"},
        {mid(kCoffee, 6), "\u20ac5 \U0001F600"}, {mid(kCoffee, 10), ""}, {mid("", 1), ""},
        {padLeft("\u00e9", 3), "  \u00e9"}, {padRight("\u00e9", 3), "\u00e9  "}, {padLeft("abcd", 3), "abcd"},
        {space(0) + space(-3) + space(2), "  "}, {replaceAll("O'Brien's", "'", "''"), "O''Brien''s"},
        {replaceAll("aaa", "aa", "b"), "ba"}, {replaceAll("abc", "", "x"), "abc"}, {replaceAll("abcb", "b", ""), "ac"},
        {replaceAll("aAa", "a", "aa"), "aaAaa"},
        // What a code page makes an apostrophe is one.
        {replaceApostrophes("'\u02B9\u02BC\u02C8\u02D9\u2032\uFF07", "''"), "''''''''''''''"},
        {replaceApostrophes("O\u2019Neil \u00B4 \u0060 \u02BB \xCA", "''"), "O\u2019Neil \u00B4 \u0060 \u02BB \xCA"},
        {replaceApostrophes("a'\u02BCb", ""), "ab"},
        // clang-format on
    };
    for (const auto& [given, expected] : cases) EXPECT_EQ(given, expected);
    EXPECT_EQ(len(kCoffee), 9);
    EXPECT_TRUE(hasApostrophe("a\uFF07"));
    EXPECT_FALSE(hasApostrophe("a\u2019"));
}

TEST(Text, KeepsBrokenBytes) {
    // The first and the last of each size, beside the codes of surrogates, are whole characters.
    for (const char* text : {"\u0080", "\u07ff", "\u0800", "\ud7ff", "\ue000", "\uffff", "\U00010000", "\U0010ffff"})
        EXPECT_EQ(len(text), 1) << text;
    for (const std::string text : {"a\xff"
                                   "b",
                                   "a\xc3", "\xe2\x82", "\xc0\x80", "\xed\xa0\x80", "\xf5\x80\x80\x80", "\x80\x80",
                                   "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80"}) {
        EXPECT_EQ(len(text), static_cast<int>(text.size()));
        EXPECT_EQ(ucase(lcase(left(text, 1) + mid(text, 2))).size(), text.size());
    }
    EXPECT_EQ(lcase("A\xff"
                    "B"),
              "a\xff"
              "b");
}

TEST(Text, RefusesImpossiblePositions) {
    for (const auto& act :
         std::initializer_list<void (*)()>{[] { left("a", -1); }, [] { right("a", -1); }, [] { mid("a", 0); },
                                           [] { mid("a", 1, -1); }, [] { instr("a", "a", 0); }})
        EXPECT_EQ(errorOf(act), kInvalidCall);
}

TEST(Text, FindsByPosition) {
    const std::tuple<const char*, const char*, int, int> cases[] = {
        {"abcabc", "c", 1, 3}, {"abcabc", "c", 4, 6}, {"abc", "C", 1, 0},       {"abc", "x", 1, 0},
        {"abc", "", 2, 2},     {"", "", 1, 0},        {"ab", "abc", 1, 0},      {"\u00e9\u20ac:=", ":=", 1, 3},
        {"abc", "a", 99, 0},   {"aab", "ab", 1, 2},   {"\u00e9", "\xc3", 1, 0},
    };
    for (const auto& [text, sought, start, expected] : cases)
        EXPECT_EQ(instr(text, sought, start), expected) << text << " " << sought;
}

TEST(Text, ChangesAndComparesCaseOfThreeScripts) {
    const std::pair<const char*, const char*> cases[] = {
        // clang-format off
        {"az09@[`{", "AZ09@[`{"}, {"\u00e0\u00e9\u00f6\u00f8\u00fe", "\u00c0\u00c9\u00d6\u00d8\u00de"},
        {"\u00ff", "\u0178"},
        {"\u0101\u0137\u013a\u0148\u014b\u0177\u017a\u017e", "\u0100\u0136\u0139\u0147\u014a\u0176\u0179\u017d"},
        {"\u012f\u0133\u01ce\u01dc\u01df\u01ef\u01f9\u021f\u0223\u0233",
         "\u012e\u0132\u01cd\u01db\u01de\u01ee\u01f8\u021e\u0222\u0232"},
        {"\u0219\u1e01\u1e95\u1ea1\u1eff", "\u0218\u1e00\u1e94\u1ea0\u1efe"},
        {"\u03af\u03cd\u03cb", "\u038a\u038e\u03ab"},
        {"\u03b1\u03c9\u03ac\u03ad\u03cc\u03ce\u03c3", "\u0391\u03a9\u0386\u0388\u038c\u038f\u03a3"},
        {"\u0430\u044f\u0451\u0491\u04cf", "\u0410\u042f\u0401\u0490\u04c0"},
        {"\u0450\u045f\u0461\u0481\u048b\u04bf\u04c2\u04ce\u04d1\u052f",
         "\u0400\u040f\u0460\u0480\u048a\u04be\u04c1\u04cd\u04d0\u052e"},
        // clang-format on
    };
    for (const auto& [lower, upper] : cases)
        for (const char* text : {lower, upper}) {
            EXPECT_EQ(ucase(text), upper);
            EXPECT_EQ(lcase(text), lower);
        }
    EXPECT_EQ(ucase("\u03c2"), "\u03a3");
    const std::string unchanged = "\u0130\u0131\u01f0\u1e96\u00df\u00d7\u00f7\u0138\u0149\u20ac\u4e2d\u05d0\U0001F600";
    EXPECT_EQ(ucase(unchanged) + lcase(unchanged), unchanged + unchanged);
    EXPECT_TRUE(startsWithNoCase("\u00c9clair", "\u00e9C") && startsWithNoCase("a", ""));
    EXPECT_FALSE(startsWithNoCase("a", "ab"));
    EXPECT_TRUE(containsNoCase("select WHERE x", "Where"));
    EXPECT_FALSE(containsNoCase("abc", "ac"));
}

} // namespace
