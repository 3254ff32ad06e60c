// Dates as people write them: reading text in the locale's order, and the locale's short date.
#pragma once

#include "automation/Value.h"
#include "basic/Locale.h"

#include <optional>
#include <string>
#include <string_view>

namespace basic {

/// What cDate takes; nothing when the text is no date.
std::optional<automation::Date> parseDate(std::string_view text, const Locale& locale);

/// What cStr gives for a date.
std::string dateText(automation::Date date, const Locale& locale);

/// The day alone, as the locale writes it short.
std::string shortDate(automation::Date date, const Locale& locale);

/// With zeros before it until it has `width` digits; not for negative numbers.
std::string padded(int number, std::size_t width);
/// English, `month` from 1 to 12; the abbreviation is its first three letters.
std::string_view monthName(int month);

} // namespace basic
