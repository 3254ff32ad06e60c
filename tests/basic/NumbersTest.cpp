#include "basic/Numbers.h"
#include "basic/Digits.h"
#include "tests/basic/ExpectError.h"

#include <limits>

using namespace automation;
using namespace basic;

namespace {

TEST(Val, ReadsTheNumberAtTheStart) {
    const std::pair<const char*, double> cases[] = {
        // clang-format off
        {"", 0}, {"abc", 0}, {"12", 12}, {"  12", 12}, {"1 2 3", 123}, {"12pcs", 12}, {"1,234", 1}, {"1.5.7", 1.5},
        {".5", 0.5}, {"5.", 5}, {".", 0}, {"-", 0}, {"--5", 0}, {"-  5", -5}, {"+7", 7}, {"1e3", 1000}, {"1d3", 1000},
        {"1E-2", 0.01}, {"1e", 1}, {"1e+", 1}, {"1 e 3", 1000}, {"2e3e4", 2000}, {"e3", 0}, {"&H1F", 31}, {"&h1fz", 31}, {"&H1@", 1},
        {"&HFFFF", -1}, {"&HFFFF&", 65535}, {"&H", 0}, {"&O17", 15}, {"5-", 5}, {"(5)", 0}, {"$5", 0}, {"1\t2\n3", 123},
        {"0.1", 0.1}, {"1e-999999999999", 0}, {"\u00bd", 0}, {"-0.0004", -0.0004},
        // clang-format on
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(val(text), expected) << text;
    for (const char* much : {"1e400", "1e99999999999999999999"}) EXPECT_EQ(errorOf([&] { val(much); }), kOverflow);
    EXPECT_EQ(val(std::string(400, '0') + "7"), 7);
    EXPECT_EQ(val(std::string("4\0005", 3)), 4);
}

TEST(IsNumeric, IsWiderThanVal) {
    for (const char* yes : {"0", " 12 ", "-5", "+5", "5-", "- 5", "(5)", "1e3", "1E+3", "1d3", "1,234.50", "12,3", ".5",
                            "5.", "&H1F", "\t7\r\n", "00000000000000000000001"})
        EXPECT_TRUE(isNumeric(Value(yes))) << yes;
    for (const char* no :
         {"",   " ",  "abc", "12a",   "1 2", "1.2.3", ".",   "-",     "()",   "(-5)",    "--5",        "-5-",
          ",5", "1e", "e3",  "1e5.0", "$5",  "&H",    "&HG", "1e400", "True", "1.5,000", "05/03/2026", "\u0665"})
        EXPECT_FALSE(isNumeric(Value(no))) << no;
    for (const Value& yes :
         {Value(), Value(std::int16_t{1}), Value(1.5), Value(true), Value(Currency{1}), Value(Decimal{"1"})})
        EXPECT_TRUE(isNumeric(yes));
    for (const Value& no : {Value(Null()), Value(Date{1}), Value(Missing()), Value(Array()), Value(ObjectPtr())})
        EXPECT_FALSE(isNumeric(no));
}

TEST(NumberText, ShowsFifteenDigits) {
    const std::tuple<double, const char*, std::string> cases[] = {
        // clang-format off
        {0, "0", "0"}, {-0.0, "0", "0"}, {0.5, "0.5", "0.5"}, {-0.5, "-0.5", "-0.5"}, {100, "100", "100"},
        {0.1 + 0.2, "0.3", "0.3"}, {1.0 / 3, "0.333333333333333", "0.333333333333333"},
        {2.0 / 3, "0.666666666666667", "0.666666666666667"}, {1234567.891, "1234567.891", "1234567.891"},
        {0.9999999999999999, "1", "1"}, {999999999999999.0, "999999999999999", "999999999999999"},
        {999999999999999.9, "1E+15", "1000000000000000"}, {1e15, "1E+15", "1000000000000000"},
        {-1.5e20, "-1.5E+20", "-150000000000000000000"},
        {123456789012345678.0, "1.23456789012346E+17", "123456789012346000"}, {0.001, "0.001", "0.001"},
        {1e-15, "0.000000000000001", "0.000000000000001"}, {1.25e-16, "1.25E-16", "0.000000000000000125"},
        {1e100, "1E+100", "1" + std::string(100, '0')},
        // clang-format on
    };
    for (const auto& [number, text, plain] : cases) {
        EXPECT_EQ(numberText(number), text);
        EXPECT_EQ(decimalText(number), plain);
    }
    EXPECT_EQ(errorOf([] { numberText(std::numeric_limits<double>::infinity()); }), kOverflow);
    EXPECT_EQ(val(decimalText(std::numeric_limits<double>::denorm_min())), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(decimalText(1e300).size(), 301u);
}

TEST(Digits, AddAndCompareWithoutLosingOne) {
    const struct {
        const char *a, *b, *sum;
        int order;
    } cases[] = {
        // clang-format off
        {"123456789012345678.125", "0.001", "123456789012345678.126", 1}, {"9.5", "10", "19.5", -1},
        {"999.9", "0.1", "1000", 1}, {"-1.5", "1.50", "0", -1}, {"2", "-10.25", "-8.25", 1},
        {"-2", "-10.25", "-12.25", 1}, {"0.100", ".1", "0.2", 0},
        // clang-format on
    };
    for (const auto& c : cases) {
        const Digits a = *parseNumber(c.a), b = *parseNumber(c.b);
        EXPECT_EQ(plainText(sum(a, b)), c.sum) << c.a;
        EXPECT_EQ(plainText(sum(b, a)), c.sum) << c.b;
        const int order = compare(a, b);
        EXPECT_EQ(order < 0 ? -1 : order > 0, c.order) << c.a;
    }
}

} // namespace
