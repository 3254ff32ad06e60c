#include "basic/DateText.h"

#include "automation/Ascii.h"
#include "automation/Members.h"
#include "basic/Calendar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <vector>

namespace basic {
namespace {

using automation::isBlank;
using automation::isDigit;
using automation::isLetter;

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

/// 0 when the word is no month.
int monthNamed(std::string_view word) {
    for (std::size_t i = 0; i < kMonths.size(); ++i)
        if (automation::sameName(word, kMonths[i]) || automation::sameName(word, kMonths[i].substr(0, 3)))
            return static_cast<int>(i) + 1;
    return 0;
}

struct Field {
    std::string_view text;
    bool isWord() const { return isLetter(text.front()); }
    /// At most four digits were taken.
    int number() const {
        int value = 0;
        for (char c : text) value = value * 10 + (c - '0');
        return value;
    }
};

std::string_view takeWhile(std::string_view& text, bool (*belongs)(char)) {
    std::size_t n = 0;
    while (n < text.size() && belongs(text[n])) ++n;
    const std::string_view taken = text.substr(0, n);
    text.remove_prefix(n);
    return taken;
}

/// The three fields of a date, parted alike unless one is a month's name.
std::optional<std::array<Field, 3>> fieldsOf(std::string_view text, const Locale& locale) {
    std::array<Field, 3> fields;
    std::array<char, 2> separators{};
    bool named = false;
    for (std::size_t i = 0; i < 3; ++i) {
        fields[i].text = takeWhile(text, isDigit);
        if (fields[i].text.empty()) fields[i].text = takeWhile(text, isLetter);
        if (fields[i].text.empty()) return std::nullopt;
        if (fields[i].isWord()) {
            if (named) return std::nullopt;
            named = true;
        } else if (fields[i].text.size() > 4) {
            return std::nullopt;
        }
        if (i == 2) break;
        separators[i] = takeWhile(text, isBlank).empty() ? '\0' : ' ';
        if (!text.empty() && (std::string_view("/-.,").find(text.front()) != std::string_view::npos ||
                              text.front() == locale.dateSeparator)) {
            separators[i] = text.front();
            text.remove_prefix(1);
            takeWhile(text, isBlank);
        }
        if (separators[i] == '\0' && !named) return std::nullopt;
    }
    if (!text.empty() || (!named && separators[0] != separators[1])) return std::nullopt;
    return fields;
}

std::optional<int> yearOf(const Field& field, const Locale& locale) {
    if (field.isWord()) return std::nullopt;
    const int year = field.number();
    if (field.text.size() == 4) return year >= 100 ? std::optional(year) : std::nullopt;
    if (field.text.size() > 2) return std::nullopt;
    const int inLastCentury = locale.lastTwoDigitYear / 100 * 100 + year;
    return inLastCentury > locale.lastTwoDigitYear ? inLastCentury - 100 : inLastCentury;
}

/// Day or month by number; 0 when it can be neither.
int shortNumber(const Field& field) { return field.isWord() || field.text.size() > 2 ? 0 : field.number(); }

std::chrono::year_month_day calendarDay(int year, int month, int day) {
    return {std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
            std::chrono::day{static_cast<unsigned>(day)}};
}

/// Nothing where the calendar has no such day.
std::optional<CivilTime> dayOf(std::optional<int> year, int month, int day) {
    if (!year || !calendarDay(*year, month, day).ok()) return std::nullopt;
    return CivilTime{*year, month, day};
}

std::optional<CivilTime> parseDay(std::string_view text, const Locale& locale) {
    const auto fields = fieldsOf(text, locale);
    if (!fields) return std::nullopt;
    const auto& [a, b, c] = *fields;
    std::optional<int> year;
    int month = 0, day = 0;
    const auto take = [&](const Field& y, int m, const Field& d) {
        year = yearOf(y, locale);
        month = m;
        day = shortNumber(d);
    };
    const bool yearFirst = a.text.size() == 4 || locale.dateOrder == DateOrder::yearMonthDay;
    if (a.isWord())
        take(c, monthNamed(a.text), b);
    else if (b.isWord())
        a.text.size() == 4 ? take(a, monthNamed(b.text), c) : take(c, monthNamed(b.text), a);
    else if (yearFirst)
        take(a, shortNumber(b), c);
    else if (locale.dateOrder == DateOrder::monthDayYear)
        take(c, shortNumber(a), b);
    else
        take(c, shortNumber(b), a);
    return dayOf(year, month, day);
}

/// A run of one letter of a short date's pattern, or what stands between such runs.
struct PatternPart {
    char letter = 0; ///< d, M or y; 0 for a literal
    std::size_t length = 0;
    std::string_view literal;
};

/// Takes the first part off a pattern that is not empty.
PatternPart takePart(std::string_view& pattern) {
    const char c = pattern.front();
    if (c == '\'') {
        const std::size_t end = std::min(pattern.find('\'', 1), pattern.size());
        // Within a quoted part two apostrophes are one: the first ends this part with itself, the second opens the
        // next.
        const bool doubled = end + 1 < pattern.size() && pattern[end + 1] == '\'';
        const PatternPart part{0, 0, pattern.substr(1, end - 1 + doubled)};
        pattern.remove_prefix(std::min(end + 1, pattern.size()));
        return part;
    }
    const std::size_t run = std::min(pattern.find_first_not_of(c), pattern.size());
    const bool isField = c == 'd' || c == 'M' || c == 'y';
    const PatternPart part = isField ? PatternPart{c, run, {}} : PatternPart{0, 0, pattern.substr(0, run)};
    pattern.remove_prefix(run);
    return part;
}

std::string_view weekdayOf(const CivilTime& day) {
    const std::chrono::sys_days calendar(calendarDay(day.year, day.month, day.day));
    return kWeekdays[std::chrono::weekday(calendar).c_encoding()];
}

/// The name, or its first three letters.
std::string named(std::string_view name, std::size_t length) {
    return std::string(length == 3 ? name.substr(0, 3) : name);
}

/// What shortDate wrote: in a pattern like "yyyy. MM. dd." more stands around the fields than parts them.
std::optional<CivilTime> parseShortDate(std::string_view text, const Locale& locale) {
    std::optional<int> year;
    int month = 0, day = 0;
    for (std::string_view pattern = automation::trimmed(locale.shortDate, automation::kBlanks); !pattern.empty();) {
        const PatternPart part = takePart(pattern);
        if (!part.letter) {
            if (!text.starts_with(part.literal)) return std::nullopt;
            text.remove_prefix(part.literal.size());
            continue;
        }
        const bool word = part.letter != 'y' && part.length > 2;
        const Field field{takeWhile(text, word ? isLetter : isDigit)};
        if (field.text.empty() || (!word && field.text.size() > 4)) return std::nullopt;
        if (part.letter == 'y') year = yearOf(field, locale);
        if (part.letter == 'M') month = word ? monthNamed(field.text) : shortNumber(field);
        if (part.letter == 'd' && !word) day = shortNumber(field);
    }
    return text.empty() ? dayOf(year, month, day) : std::nullopt;
}

bool parseTime(std::string_view text, CivilTime& parts) {
    std::vector<int> numbers;
    for (;;) {
        const std::string_view digits = takeWhile(text, isDigit);
        if (digits.empty() || digits.size() > 2) return false;
        numbers.push_back(Field{digits}.number());
        if (text.empty() || text.front() != ':') break;
        text.remove_prefix(1);
    }
    if (numbers.size() < 2 || numbers.size() > 3) return false;
    // As servers write the time of a row; the fraction is dropped.
    if (numbers.size() == 3 && !text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        if (takeWhile(text, isDigit).empty()) return false;
    }
    numbers.resize(3);
    text = automation::trimmed(text, automation::kBlanks);
    if (!text.empty()) {
        const bool afternoon = automation::sameName(text, "PM");
        if ((!afternoon && !automation::sameName(text, "AM")) || numbers[0] < 1 || numbers[0] > 12) return false;
        numbers[0] = numbers[0] % 12 + (afternoon ? 12 : 0);
    }
    if (numbers[0] > 23 || numbers[1] > 59 || numbers[2] > 59) return false;
    parts.hour = numbers[0];
    parts.minute = numbers[1];
    parts.second = numbers[2];
    return true;
}

} // namespace

std::optional<automation::Date> parseDate(std::string_view text, const Locale& locale) {
    text = automation::trimmed(text, automation::kBlanks);
    CivilTime parts;
    std::size_t dayEnd = text.size();
    if (const std::size_t colon = text.find(':'); colon != std::string_view::npos) {
        std::size_t timeStart = colon;
        while (timeStart > 0 && isDigit(text[timeStart - 1])) --timeStart;
        CivilTime time;
        if (!parseTime(text.substr(timeStart), time)) return std::nullopt;
        if (timeStart == 0) return dateOf(time.year, time.month, time.day, time.hour, time.minute, time.second);
        if (!isBlank(text[timeStart - 1])) return std::nullopt;
        dayEnd = timeStart;
        parts = time;
    }
    const std::string_view dayText = automation::trimmed(text.substr(0, dayEnd), automation::kBlanks);
    std::optional<CivilTime> day = parseDay(dayText, locale);
    if (!day) day = parseShortDate(dayText, locale);
    if (!day) return std::nullopt;
    return dateOf(day->year, day->month, day->day, parts.hour, parts.minute, parts.second);
}

std::string dateText(automation::Date date, const Locale& locale) {
    const CivilTime parts = civil(date);
    const auto time = [&] {
        return padded(parts.hour, 2) + ":" + padded(parts.minute, 2) + ":" + padded(parts.second, 2);
    };
    if (parts.year == 1899 && parts.month == 12 && parts.day == 30) return time();
    const std::string day = shortDate(date, locale);
    return parts.hour || parts.minute || parts.second ? day + " " + time() : day;
}

std::string shortDate(automation::Date date, const Locale& locale) {
    const CivilTime parts = civil(date);
    std::string text;
    for (std::string_view pattern = locale.shortDate; !pattern.empty();) {
        const PatternPart part = takePart(pattern);
        switch (part.letter) {
        case 'd':
            text += part.length <= 2 ? padded(parts.day, part.length) : named(weekdayOf(parts), part.length);
            break;
        case 'M':
            text += part.length <= 2 ? padded(parts.month, part.length) : named(monthName(parts.month), part.length);
            break;
        case 'y': text += part.length <= 2 ? padded(parts.year % 100, 2) : padded(parts.year, 4); break;
        default: text += part.literal;
        }
    }
    return text;
}

std::string padded(int number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

std::string_view monthName(int month) { return kMonths[static_cast<std::size_t>(month - 1)]; }

} // namespace basic
