#include "basic/Calendar.h"
#include "tests/basic/ExpectError.h"

#include <climits>
#include <cmath>

using namespace automation;
using namespace basic;

namespace {

TEST(Calendar, KnowsTheDaysOfTheEra) {
    const std::pair<double, CivilTime> cases[] = {
        // clang-format off
        {0, {1899, 12, 30}}, {1, {1899, 12, 31}}, {2, {1900, 1, 1}},
        {60, {1900, 2, 28}}, // 1900 had no 29 February
        {61, {1900, 3, 1}}, {36526.5, {2000, 1, 1, 12}}, {46086.25, {2026, 3, 5, 6}}, {0.75, {1899, 12, 30, 18}},
        {-1, {1899, 12, 29}},
        {-1.25, {1899, 12, 29, 6}}, // the time of day counts up before the era too
        {-1.75, {1899, 12, 29, 18}}, {-657434, {100, 1, 1}}, {-657434.5, {100, 1, 1, 12}}, {2958465, {9999, 12, 31}},
        // clang-format on
    };
    for (const auto& [days, p] : cases) {
        EXPECT_EQ(civil(Date{days}), p) << days;
        EXPECT_EQ(dateOf(p.year, p.month, p.day, p.hour, p.minute, p.second).days, days);
    }
}

TEST(Calendar, RoundsToTheSecond) {
    EXPECT_EQ(civil(Date{0.9999999}), (CivilTime{1899, 12, 31}));
    EXPECT_EQ(civil(Date{-1.9999999}), (CivilTime{1899, 12, 30}));
    EXPECT_EQ(civil(Date{46086.999994}), (CivilTime{2026, 3, 5, 23, 59, 59}));
    for (int second = 0; second < 86400; second += 7) {
        const CivilTime parts{2026, 3, 5, second / 3600, second / 60 % 60, second % 60};
        ASSERT_EQ(civil(dateOf(2026, 3, 5, 0, 0, second)), parts);
    }
}

TEST(Calendar, CarriesPartsOutOfRange) {
    const std::pair<Date, Date> cases[] = {
        // clang-format off
        {dateOf(2026, 13, 1), dateOf(2027, 1, 1)}, {dateOf(2026, 0, 1), dateOf(2025, 12, 1)},
        {dateOf(2026, -11, 1), dateOf(2025, 1, 1)}, {dateOf(2026, 3, 0), dateOf(2026, 2, 28)},
        {dateOf(2026, 3, 5 - 60), dateOf(2026, 1, 4)}, {dateOf(2026, 3, 5, 24), dateOf(2026, 3, 6)},
        {dateOf(2026, 3, 5, 0, 0, -1), dateOf(2026, 3, 4, 23, 59, 59)},
        // clang-format on
    };
    for (const auto& [carried, plain] : cases) EXPECT_EQ(carried, plain);
}

TEST(Calendar, RefusesOtherYears) {
    for (const CivilTime& p : std::initializer_list<CivilTime>{
             {99, 12, 31}, {9999, 12, 32}, {INT_MIN, INT_MIN, INT_MIN}, {INT_MAX, INT_MAX, INT_MAX}})
        EXPECT_EQ(errorOf([&] { dateOf(p.year, p.month, p.day, p.month, p.month, p.month); }), kInvalidCall) << p.year;
    for (const double days : {2958466.0, 2958465.9999999, -657435.0, std::nan(""), 1e300})
        EXPECT_EQ(errorOf([&] { civil(Date{days}); }), kOverflow) << days;
}

} // namespace
