#include "basic/Conversion.h"
#include "automation/Object.h"
#include "basic/Calendar.h"
#include "tests/basic/ExpectError.h"

#include <cmath>
#include <limits>

using namespace automation;
using namespace basic;

namespace {

/// A field of a record set, as far as its default member goes.
struct FieldOf : Object {
    explicit FieldOf(Value v) : value(std::move(v)) {}
    Value invoke(Access, std::string_view member, Arguments) override {
        if (!member.empty()) raise(kNoSuchMember);
        return value;
    }
    bool has(std::string_view member) const override { return member.empty(); }
    std::string className() const override { return "Field"; }

    Value value;
};

constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();

template <class T> struct Case {
    Value value;
    T expected;
    long error = 0;
};

template <class T> void expectConverts(T (*convert)(const Value&), std::initializer_list<Case<T>> cases) {
    for (const Case<T>& c : cases) {
        SCOPED_TRACE(::testing::Message() << "case " << &c - cases.begin());
        T got = 0;
        EXPECT_EQ(errorOf([&] { got = convert(c.value); }), c.error);
        EXPECT_EQ(got, c.expected);
    }
}

TEST(CInt, RoundsHalvesToEvenAndRefusesWhatDoesNotFit) {
    // clang-format off
    expectConverts(cInt, {
        {0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {2.5000000000000004, 3},
        {2.4999999999999996, 2}, {0.49999999999999994, 0}, {32767.49, 32767}, {32767.5, 0, kOverflow},
        {-32768.5, -32768}, {-32768.51, 0, kOverflow}, {32768.0, 0, kOverflow}, {1e300, 0, kOverflow},
        {std::nan(""), 0, kOverflow}, {-std::numeric_limits<double>::infinity(), 0, kOverflow},
        {std::int32_t{40000}, 0, kOverflow}, {std::int32_t{-32768}, -32768}, {true, -1}, {false, 0}, {Empty(), 0},
        {Null(), 0, kInvalidUseOfNull}, {Missing(), 0, kTypeMismatch}, {Array(), 0, kTypeMismatch}, {Date{2.5}, 2},
        {"2.5", 2}, {"3.5", 4}, {" -3.5 ", -4}, {"2.50000000000000000000001", 3}, {"32767.5", 0, kOverflow},
        {"32767.4999999999999999999", 32767}, {"1,234", 1234}, {"1e3", 1000}, {"99999999999999999999", 0, kOverflow},
        {"1e99999999999", 0, kOverflow}, {"1e-99999999999", 0}, {"", 0, kTypeMismatch}, {"NOTFOUND", 0, kTypeMismatch},
        {"12 pcs", 0, kTypeMismatch}, {"True", 0, kTypeMismatch}, {"&HFFFF", -1}, {Decimal{"2.5"}, 2},
        {Decimal{"2.500000000000000000000000001"}, 3}, {Decimal{"-3.5"}, -4}, {Decimal{"0.5"}, 0},
        {Decimal{"999999999999999999"}, 0, kOverflow}, {Currency{25000}, 2}, {Currency{25001}, 3},
        {Currency{-35000}, -4}, {Currency{327675000}, 0, kOverflow}, {Currency{kLeast}, 0, kOverflow},
    });
    // clang-format on
}

TEST(CLng, HoldsThirtyTwoBits) {
    // clang-format off
    expectConverts(cLng, {
        {2147483647.49, 2147483647}, {2147483647.5, 0, kOverflow}, {-2147483648.5, -2147483647 - 1},
        {-2147483649.0, 0, kOverflow}, {"2147483647", 2147483647}, {"2147483647.5", 0, kOverflow},
        {Decimal{"-2147483648.5"}, -2147483647 - 1}, {Currency{21474836475000}, 0, kOverflow}, {"40000", 40000},
        {"&HFFFF&", 65535}, {"&HFFFFFFFFF", 0, kOverflow},
    });
    // clang-format on
}

TEST(CDbl, ReadsTextAsExactlyAsADoubleHolds) {
    // clang-format off
    expectConverts(cDbl, {
        {"0.1", 0.1}, {"-12.345", -12.345}, {"1,234,567.5", 1234567.5}, {"(5)", -5}, {"5-", -5},
        {"1.7976931348623157E308", 1.7976931348623157e308}, {"1.8E308", 0, kOverflow}, {"1E400", 0, kOverflow},
        {"1E-400", 0}, {"0E400", 0}, {"4.9E-324", 4.9e-324}, {"1.2.3", 0, kTypeMismatch},
        {Decimal{"123456789012345678"}, 123456789012345678.0}, {Currency{-1}, -0.0001}, {true, -1}, {Empty(), 0},
        {Null(), 0, kInvalidUseOfNull},
    });
    // clang-format on
}

TEST(CBool, TakesItsTwoWordsAndNumbers) {
    for (const Value& yes : {Value("True"), Value("tRUE"), Value("1"), Value("-0.5"), Value(2.0), Value(Currency{1}),
                             Value(Decimal{"0.001"}), Value(true)})
        EXPECT_TRUE(cBool(yes));
    for (const Value& no :
         {Value("False"), Value("0"), Value("0.00"), Value(0.0), Value(), Value(Currency{0}), Value(Date{0})})
        EXPECT_FALSE(cBool(no));
    for (const Value& neither : {Value(""), Value("Yes"), Value("Truer"), Value("Tru")})
        EXPECT_EQ(errorOf([&] { cBool(neither); }), kTypeMismatch);
    EXPECT_EQ(errorOf([] { cBool(Null()); }), kInvalidUseOfNull);
}

TEST(CStr, WritesEachKindAsPeopleReadIt) {
    const std::pair<Value, const char*> cases[] = {
        // clang-format off
        {Empty(), ""}, {true, "True"}, {false, "False"}, {std::int16_t{-32768}, "-32768"},
        {std::numeric_limits<std::int32_t>::min(), "-2147483648"}, {0.1 + 0.2, "0.3"}, {-0.0, "0"},
        {Currency{-5}, "-0.0005"}, {Currency{125000}, "12.5"}, {Currency{kLeast}, "-922337203685477.5808"},
        {Decimal{"123456789012345678.123"}, "123456789012345678.123"}, {"Caf\u00e9", "Caf\u00e9"},
        {dateOf(2026, 3, 5), "05/03/2026"}, {dateOf(2026, 3, 5, 7, 8, 9), "05/03/2026 07:08:09"},
        {dateOf(1899, 12, 30, 14, 5), "14:05:00"}, {dateOf(1850, 1, 2, 6), "02/01/1850 06:00:00"},
        // clang-format on
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(cStr(value), expected);
        EXPECT_EQ(concatText(value), expected);
    }
    EXPECT_EQ(errorOf([] { cStr(Null()); }), kInvalidUseOfNull);
    EXPECT_EQ(concatText(Null()), "");
    EXPECT_EQ(errorOf([] { concatText(Missing()); }), kTypeMismatch);
}

constexpr auto dmy = DateOrder::dayMonthYear, mdy = DateOrder::monthDayYear, ymd = DateOrder::yearMonthDay;

TEST(CStr, WritesADateInTheUsersOwnWayAndCDateReadsItBack) {
    const struct {
        DateOrder order;
        const char *shortDate, *expected;
        char separator = 0; ///< none: not to be read back
    } cases[] = {
        // clang-format off
        {mdy, "M/d/yyyy", "3/5/2026", '/'}, {dmy, "dd.MM.yy", "05.03.26", '.'}, {ymd, "yyyy-MM-dd", "2026-03-05", '-'},
        {dmy, "dd-MMM-yyyy", "05-Mar-2026", '-'}, {dmy, "d MMMM yyyy", "5 March 2026", ' '},
        {dmy, "d.M.yyyy 'd.'", "5.3.2026 d.", '.'}, {dmy, "dd.MM.yyyy", "05.03.2026", '.'},
        {dmy, "d_M_yyyy", "5_3_2026", '_'}, {ymd, "yyyy. MM. dd.", "2026. 03. 05.", '.'},
        {dmy, "d.M.yyyy.", "5.3.2026.", '.'}, {dmy, "ddd dd/MM/yy", "Thu 05/03/26", '/'},
        {mdy, "dddd, MMMM d, yyyy", "Thursday, March 5, 2026", ' '}, {dmy, "d 'open", "5 open"},
        {dmy, "d 'o''clock' yy", "5 o'clock 26"}, {dmy, "d'''yy'''", "5'yy'"},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shortDate);
        Locale locale;
        locale.dateOrder = c.order;
        locale.shortDate = c.shortDate;
        EXPECT_EQ(cStr(dateOf(2026, 3, 5), locale), c.expected);
        if (!c.separator) continue;
        locale.dateSeparator = c.separator;
        const Date date = dateOf(2024, 11, 2, 8, 30, 1);
        EXPECT_EQ(civil(cDate(cStr(date, locale), locale)), civil(date));
    }
    Locale names;
    names.shortDate = "dddd MMMM ";
    std::string text;
    for (int i = 1; i <= 12; ++i) text += cStr(dateOf(2026, i, i), names) + cStr(dateOf(2026, 3, i), names);
    for (const char* name :
         {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
          "December", "Monday ", "Tuesday ", "Wednesday ", "Thursday ", "Friday ", "Saturday ", "Sunday "})
        EXPECT_NE(text.find(name), std::string::npos) << name;
}

TEST(CDate, ReadsTheLocalesOrderAndTheYearFirst) {
    const Date fifthOfMarch = dateOf(2026, 3, 5);
    const struct {
        const char* written;
        DateOrder order;
        Date expected;
        int lastTwoDigitYear = 2049;
    } cases[] = {
        // clang-format off
        {"05/03/2026", dmy, fifthOfMarch}, {"5/3/26", dmy, fifthOfMarch}, {"03/05/2026", mdy, fifthOfMarch},
        {"26/03/05", ymd, fifthOfMarch}, {"2026-03-05", dmy, fifthOfMarch}, {"2026/03/05", mdy, fifthOfMarch},
        {" 5.3.2026 ", dmy, fifthOfMarch}, {"5-Mar-2026", mdy, fifthOfMarch}, {"5 march 26", dmy, fifthOfMarch},
        {"Mar 5, 2026", dmy, fifthOfMarch}, {"1/1/29", dmy, dateOf(2029, 1, 1)}, {"1/1/49", dmy, dateOf(2049, 1, 1)},
        {"1/1/50", dmy, dateOf(1950, 1, 1)}, {"1/1/30", dmy, dateOf(1930, 1, 1), 2029},
        {"1/1/99", dmy, dateOf(2099, 1, 1), 2130}, {"1/1/30", dmy, dateOf(2130, 1, 1), 2130},
        {"1/1/00", dmy, dateOf(2000, 1, 1)}, {"29/2/2024", dmy, dateOf(2024, 2, 29)},
        {"31/12/9999", dmy, dateOf(9999, 12, 31)}, {"05/03/2026 14:05", dmy, dateOf(2026, 3, 5, 14, 5)},
        {"05/03/2026 02:05:09 pm", dmy, dateOf(2026, 3, 5, 14, 5, 9)}, {"12:00:00 AM", dmy, Date{0}},
        {"23:59:59", dmy, dateOf(1899, 12, 30, 23, 59, 59)},
        {"2026-03-05 14:05:09.1234567", dmy, dateOf(2026, 3, 5, 14, 5, 9)},
        {"1/2/1850 06:00", dmy, dateOf(1850, 2, 1, 6)},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.written);
        Locale locale;
        locale.dateOrder = c.order;
        locale.lastTwoDigitYear = c.lastTwoDigitYear;
        Date got;
        EXPECT_EQ(errorOf([&] { got = cDate(Value(c.written), locale); }), 0);
        EXPECT_EQ(civil(got), civil(c.expected));
    }
}

TEST(CDate, RefusesWhatIsNoDate) {
    // clang-format off
    for (const char* wrong :
         {"", " ", "soon", "5", "5/3", "29/2/2026", "31/4/2026", "0/1/2026", "1/13/2026", "32/12/9999", "5/3/026",
          "05/03-2026", "05032026", "05/03/20266", "05/03/2026 24:00", "05/03/2026 10", "05/03/2026 10:60",
          "05/03/2026 10:59:60", "05/03/2026 13:00 PM", "05/03/2026 0:30 AM", "05/03/202610:00", "5/3/2026/", "//",
          "::", ":", "1:2:3:4", "Mar Mar 2026", "Foo 5, 2026", "05/03/2026x", "\u0665/3/2026", "0001-01-01"})
        // clang-format on
        EXPECT_EQ(errorOf([&] { cDate(Value(wrong)); }), kTypeMismatch) << wrong;
    EXPECT_EQ(errorOf([] { cDate(Null()); }), kInvalidUseOfNull);
    for (const double far : {3e6, -657435.0, std::nan("")}) EXPECT_EQ(errorOf([&] { cDate(far); }), kOverflow) << far;
    EXPECT_EQ(cDate(std::int32_t{46086}), dateOf(2026, 3, 5));
}

TEST(Conversions, GoThroughReferencesAndDefaultMembers) {
    Value number("7.5");
    const Value reference = Value::byReference(number);
    EXPECT_EQ(cInt(reference), 8);
    EXPECT_EQ(cStr(reference), "7.5");
    const auto field = std::make_shared<FieldOf>(Decimal{"12.500"});
    EXPECT_EQ(cDbl(field), 12.5);
    EXPECT_EQ(cStr(field), "12.5");
    field->value = Null();
    EXPECT_EQ(concatText(field), "");
    EXPECT_EQ(errorOf([&] { cLng(field); }), kInvalidUseOfNull);
    EXPECT_EQ(errorOf([] { cLng(ObjectPtr()); }), kObjectNotSet);
    field->value = field;
    EXPECT_EQ(errorOf([&] { cStr(field); }), kTypeMismatch);
    field->value = Empty();
}

} // namespace
