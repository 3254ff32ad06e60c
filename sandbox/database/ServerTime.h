// The server's datetime: reading and writing it as text, and its storage form.
#pragma once

#include "automation/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sandbox {

/// Milliseconds since 1899-12-30 00:00, rounded to the server's 1/300 s.
using Moment = std::int64_t;

constexpr Moment kMillisecondsPerDay = 86'400'000;
/// Where the server's day numbers start: 1900-01-01.
constexpr Moment kServerEpoch = 2 * kMillisecondsPerDay;

Moment momentOf(automation::Date date);
automation::Date dateOf(Moment moment);

/// "yyyymmdd", "yyyy/mm/dd" and "yyyy-mm-dd" (also with one digit), each with an optional " hh:mm[:ss[.mmm]]"; empty
/// text is 1900-01-01. Nothing for other text or a day that does not exist; years run from 1753.
std::optional<Moment> parseMoment(std::string_view text);

/// As "yyyymmdd hh:mm:ss.mmm", which is read alike whatever date order the session has.
std::string momentText(Moment moment);

/// The machine's local time.
Moment now();

} // namespace sandbox
