#include "sandbox/database/ServerTime.h"

#include "automation/Ascii.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace sandbox {
namespace {

using namespace std::chrono;

constexpr sys_days kDayZero = sys_days(year(1899) / 12 / 30);

Moment floorDiv(Moment a, Moment b) { return a / b - (a % b < 0 ? 1 : 0); }

Moment roundToTick(Moment milliseconds) {
    const Moment day = floorDiv(milliseconds, kMillisecondsPerDay);
    const Moment ticks = ((milliseconds - day * kMillisecondsPerDay) * 3 + 5) / 10;
    return day * kMillisecondsPerDay + (ticks * 10 + 1) / 3;
}

std::optional<Moment> dayOf(int y, int m, int d) {
    if (y < 1753 || y > 9999 || m < 1 || d < 1) return std::nullopt;
    const year_month_day date{year(y), month(static_cast<unsigned>(m)), day(static_cast<unsigned>(d))};
    if (!date.ok()) return std::nullopt;
    return (sys_days(date) - kDayZero).count() * kMillisecondsPerDay;
}

/// Takes a text from its front.
struct MomentReader {
    std::string_view text;

    bool accept(char c) {
        if (text.empty() || text.front() != c) return false;
        text.remove_prefix(1);
        return true;
    }
    /// So many digits, or none where there are fewer or more.
    std::optional<int> number(std::size_t fewest, std::size_t most) {
        const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
        if (length < fewest || length > most) return std::nullopt;
        int number = 0;
        std::from_chars(text.data(), text.data() + length, number);
        text.remove_prefix(length);
        return number;
    }

    std::optional<Moment> day() {
        if (const auto whole = number(8, 8)) return dayOf(*whole / 10000, *whole / 100 % 100, *whole % 100);
        const auto year = number(4, 4);
        const char separator = text.empty() ? ' ' : text.front();
        if (!year || (separator != '/' && separator != '-')) return std::nullopt;
        accept(separator);
        const auto month = number(1, 2);
        if (!month || !accept(separator)) return std::nullopt;
        const auto dayOfMonth = number(1, 2);
        return dayOfMonth ? dayOf(*year, *month, *dayOfMonth) : std::nullopt;
    }

    std::optional<Moment> time() {
        const auto hour = number(1, 2);
        if (!hour || !accept(':')) return std::nullopt;
        const auto minute = number(1, 2);
        const auto second = accept(':') ? number(1, 2) : std::optional(0);
        const auto milli = accept('.') ? number(3, 3) : std::optional(0);
        if (!minute || !second || !milli || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
        return ((*hour * 60LL + *minute) * 60 + *second) * 1000 + *milli;
    }
};

} // namespace

Moment momentOf(automation::Date date) {
    const double day = std::trunc(date.days);
    const double timeOfDay = std::fabs(date.days - day);
    return roundToTick(static_cast<Moment>(day) * kMillisecondsPerDay +
                       std::llround(timeOfDay * static_cast<double>(kMillisecondsPerDay)));
}

automation::Date dateOf(Moment moment) {
    const Moment day = floorDiv(moment, kMillisecondsPerDay);
    const double timeOfDay =
        static_cast<double>(moment - day * kMillisecondsPerDay) / static_cast<double>(kMillisecondsPerDay);
    const double days = static_cast<double>(day);
    return automation::Date{day < 0 ? days - timeOfDay : days + timeOfDay};
}

std::optional<Moment> parseMoment(std::string_view text) {
    MomentReader reader{automation::trimmed(text)};
    if (reader.text.empty()) return kServerEpoch;
    const auto day = reader.day();
    if (!day || reader.text.empty()) return day;
    if (!reader.accept(' ')) return std::nullopt;
    const auto time = reader.time();
    if (!time || !reader.text.empty()) return std::nullopt;
    return roundToTick(*day + *time);
}

std::string momentText(Moment moment) {
    const Moment dayNumber = floorDiv(moment, kMillisecondsPerDay);
    const year_month_day date{kDayZero + days(dayNumber)};
    const int inDay = static_cast<int>(moment - dayNumber * kMillisecondsPerDay);
    char out[64];
    std::snprintf(out, sizeof out, "%04d%02u%02u %02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), inDay / 3'600'000,
                  inDay / 60'000 % 60, inDay / 1000 % 60, inDay % 1000);
    return out;
}

Moment now() {
    const auto point = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(point);
    const auto milliseconds = duration_cast<std::chrono::milliseconds>(point - system_clock::from_time_t(seconds));
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    auto day = dayOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(kServerEpoch);
    return roundToTick(day + ((local.tm_hour * 60LL + local.tm_min) * 60 + local.tm_sec) * 1000 + milliseconds.count());
}

} // namespace sandbox
