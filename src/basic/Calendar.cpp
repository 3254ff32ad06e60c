#include "basic/Calendar.h"

#include "automation/RunTimeError.h"

#include <chrono>
#include <cmath>

namespace basic {
namespace {

using namespace std::chrono;

constexpr sys_days kDayZero = year{1899} / December / 30;
constexpr int kFirstDay = (sys_days{year{100} / January / 1} - kDayZero).count();
constexpr int kLastDay = (sys_days{year{9999} / December / 31} - kDayZero).count();
constexpr std::int64_t kSecondsADay = 86400;

std::int64_t floorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

} // namespace

automation::Date dateOf(int year, int month, int day, int hour, int minute, int second) {
    const std::int64_t months = std::int64_t{year} * 12 + month - 1;
    const std::int64_t fullYear = floorDivide(months, 12);
    if (fullYear < 0 || fullYear > 20000) automation::raise(automation::kInvalidCall);
    const sys_days firstOfMonth = std::chrono::year{static_cast<int>(fullYear)} /
                                  std::chrono::month{static_cast<unsigned>(months - fullYear * 12 + 1)} / 1;
    const std::int64_t seconds = std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second;
    const std::int64_t carried = floorDivide(seconds, kSecondsADay);
    const std::int64_t days = (firstOfMonth - kDayZero).count() + std::int64_t{day} - 1 + carried;
    if (days < kFirstDay || days > kLastDay) automation::raise(automation::kInvalidCall);
    const double timeOfDay = static_cast<double>(seconds - carried * kSecondsADay) / kSecondsADay;
    return {days < 0 ? static_cast<double>(days) - timeOfDay : static_cast<double>(days) + timeOfDay};
}

CivilTime civil(automation::Date date) {
    if (!(date.days > kFirstDay - 1.0 && date.days < kLastDay + 1.0)) automation::raise(automation::kOverflow);
    int day = static_cast<int>(date.days);
    int seconds = static_cast<int>(std::lround(std::fabs(date.days - day) * kSecondsADay));
    if (seconds == kSecondsADay) {
        ++day;
        seconds = 0;
    }
    if (day > kLastDay) automation::raise(automation::kOverflow);
    const year_month_day parts{kDayZero + days{day}};
    return {static_cast<int>(parts.year()),
            static_cast<int>(static_cast<unsigned>(parts.month())),
            static_cast<int>(static_cast<unsigned>(parts.day())),
            seconds / 3600,
            seconds / 60 % 60,
            seconds % 60};
}

} // namespace basic
