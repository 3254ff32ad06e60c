// Dates as days since 1899-12-30, to and from year, month, day and time of day.
#pragma once

#include "automation/Value.h"

namespace basic {

struct CivilTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const CivilTime&) const = default;
};

/// Parts out of their range carry over: day 0 is the last day of the month before, hour 24 the next midnight. The year
/// is meant in full. Error 5 outside the years 100 to 9999.
automation::Date dateOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

/// To the nearest second. Error 6 outside the years 100 to 9999.
CivilTime civil(automation::Date date);

} // namespace basic
