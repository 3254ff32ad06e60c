#include "basic/Format.h"
#include "basic/Calendar.h"
#include "tests/basic/ExpectError.h"

#include <limits>

using namespace automation;
using namespace basic;

namespace {

TEST(FormatNumber, RoundsWhatPeopleReadAndKeepsEveryDigitOfWhatIsNoDouble) {
    const std::tuple<Value, const char*, const char*> cases[] = {
        // clang-format off
        {12.345, "0.00", "12.35"}, {12.347, "0.00", "12.35"}, {1.005, "0.00", "1.01"}, {-1.005, "0.00", "-1.01"},
        {2.5, "0", "3"}, {0.5, "0", "1"},
        {0.49999999999999994, "0", "1"}, // 15 digits read 0.5
        {0.4999999999999, "0", "0"}, {-0.0004, "0.00", "0.00"}, {-0.005, "0.00", "-0.01"}, {9.995, "0.00", "10.00"},
        {999.9995, "#0.000", "1000.000"}, {0.0, "#0.000", "0.000"}, {0.5, "#0.00", "0.50"},
        {1234.5, "#0.000", "1234.500"}, {0.5, "#.00", ".50"}, {0.0, "#", ""}, {0.0, "#.##", "."}, {7.0, "000", "007"},
        {7.0, "0#", "07"}, {-7.0, "000", "-007"}, {1234567.5, "###,###,##0.000", "1,234,567.500"},
        {1234567890.5, "###,###,##0.000", "1,234,567,890.500"}, {999.0, "###,###,##0.000", "999.000"},
        {-1000.0, "###,###,##0.000", "-1,000.000"}, {12.5, "###,###,##0.000#####", "12.500"},
        {12.12345678, "###,###,##0.000#####", "12.12345678"}, {12.123456785, "###,###,##0.000#####", "12.12345679"},
        {12.1234, "###,###,##0.000#####", "12.1234"}, {1e20, "0.00", "100000000000000000000.00"},
        {1e-300, "0.00", "0.00"}, {0.1 + 0.2, "0.000#################", "0.300"}, {1234.0, "0,000,000", "0,001,234"},
        {Decimal{"123456789012345678.123"}, "#0.000", "123456789012345678.123"},
        {Decimal{"999999999999999999999.9995"}, "#0.000", "1000000000000000000000.000"},
        {Decimal{"0.0004999999999999999999"}, "#0.000", "0.000"}, {Decimal{"-0.0005"}, "#0.000", "-0.001"},
        {"123456789012345678.125", "0.00", "123456789012345678.13"}, {"1.00499999999999999999", "0.00", "1.00"},
        {" 1,234.5 ", "0.000", "1234.500"}, {"1e3", "0.00", "1000.00"},
        {Currency{std::numeric_limits<std::int64_t>::max()}, "#,##0.0000", "922,337,203,685,477.5807"},
        {Currency{-5}, "0.000", "-0.001"}, {std::int16_t{-32768}, "0.00", "-32768.00"}, {true, "0", "-1"},
        {Date{1.5}, "0.0", "1.5"}, {"", "0.00", ""}, {"n/a", "0.00", "n/a"}, {"12 pcs", "0.00", "12 pcs"},
        {"1e400", "0.00", "1e400"}, {Null(), "0.00", ""}, {Empty(), "0.00", ""}, {Null(), "yyyy/mm/dd", ""},
        {12.5, "", "12.5"},
        // clang-format on
    };
    for (Value copy; const auto& [value, pattern, expected] : cases) {
        EXPECT_EQ(format(value, pattern), expected) << pattern;
        copy = value;
        EXPECT_EQ(format(Value::byReference(copy), pattern), expected) << pattern;
    }
    EXPECT_EQ(errorOf([] { format(std::numeric_limits<double>::infinity(), "0.00"); }), kOverflow);
    for (const Value& wrong : {Value(Missing()), Value(Decimal{"rubbish"})})
        EXPECT_EQ(errorOf([&] { format(wrong, "0.00"); }), kTypeMismatch);
}

TEST(FormatDate, WritesDatesAndTimes) {
    const Date date = dateOf(2026, 3, 5, 7, 8, 9);
    Locale american;
    american.dateOrder = DateOrder::monthDayYear;
    const struct {
        Value value;
        const char *pattern, *expected;
        Locale locale = {};
    } cases[] = {
        // clang-format off
        {date, "yyyy/mm/dd", "2026/03/05"}, {date, "yyyymmdd", "20260305"}, {date, "dd/mm/yyyy", "05/03/2026"},
        {date, "HH:MM:SS", "07:08:09"}, {date, "hh:nn:ss", "07:08:09"}, {date, "h:n:s", "7:8:9"},
        {date, "yy-m-d", "26-3-5"}, {date, "d mmm yyyy", "5 Mar 2026"}, {date, "d mmmm", "5 March"},
        {date, "dd/mm/yyyy hh:mm", "05/03/2026 07:08"}, {date, "hhmm mm", "0708 03"},
        {date, "yyyy\"y\" \\d", "2026y d"}, {date, "\"Nr 0\" dd", "Nr 0 05"}, {1.0, "dd\\", "31"},
        {dateOf(1850, 1, 2, 18, 30), "yyyy/mm/dd hh:nn", "1850/01/02 18:30"}, {46086.0, "yyyymmdd", "20260305"},
        {"05/03/2026", "yyyy/mm/dd", "2026/03/05"}, {"05/03/2026", "yyyy/mm/dd", "2026/05/03", american},
        // clang-format on
    };
    for (const auto& c : cases) EXPECT_EQ(format(c.value, c.pattern, c.locale), c.expected) << c.pattern;
    EXPECT_EQ(errorOf([] { format("tomorrow", "yyyy/mm/dd"); }), kTypeMismatch);
}

TEST(Format, RefusesPatternsItDoesNotKnow) {
    for (const char* pattern : {"0.0.0", "0,0.0,0", "0%", "yyy", "mmmmm", "hhh", "AM/PM", "\"open", "Standard"})
        EXPECT_EQ(errorOf([&] { format(1.0, pattern); }), kInvalidCall) << pattern;
}

} // namespace
