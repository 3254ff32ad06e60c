// The user's regional choices, as far as dates and encodings need them.
#pragma once

#include <string>

namespace basic {

enum class DateOrder { dayMonthYear, monthDayYear, yearMonthDay };

struct Locale {
    DateOrder dateOrder = DateOrder::dayMonthYear;
    char dateSeparator = '/';
    /// Windows notation: d dd ddd dddd M MM MMM MMMM yy yyyy, 'quoted text', all else literal.
    std::string shortDate = "dd/MM/yyyy";
    char decimalSeparator = '.';
    /// The code page of plain (not Unicode) text files and printers.
    int codePage = 1252;
    /// The last year that two digits stand for; the first is 99 years before.
    int lastTwoDigitYear = 2049;
};

} // namespace basic
