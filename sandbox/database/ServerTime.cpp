#include "sandbox/database/ServerTime.h"

#include "automation/Members.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

namespace sandbox {
namespace {

using namespace std::chrono;

constexpr sys_days kDayZero = sys_days(year(1899) / 12 / 30);
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

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

struct Piece {
    enum class Sort { number, word, symbol } sort;
    std::string text;
    int number = 0;
};

std::optional<std::vector<Piece>> cut(std::string_view text) {
    std::vector<Piece> pieces;
    auto digit = [](char c) { return c >= '0' && c <= '9'; };
    auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        Piece::Sort sort = Piece::Sort::symbol;
        if (digit(text[i])) {
            sort = Piece::Sort::number;
            while (end < text.size() && digit(text[end])) ++end;
            if (end - i > 8) return std::nullopt;
        } else if (letter(text[i])) {
            sort = Piece::Sort::word;
            while (end < text.size() && letter(text[end])) ++end;
        } else if (text[i] == ' ') {
            ++i;
            continue;
        }
        Piece piece{sort, std::string(text.substr(i, end - i))};
        if (sort == Piece::Sort::number) piece.number = std::stoi(piece.text);
        pieces.push_back(std::move(piece));
        i = end;
    }
    return pieces;
}

int fullYear(const Piece& piece) {
    if (piece.text.size() > 2) return piece.number;
    return piece.number < 50 ? 2000 + piece.number : 1900 + piece.number;
}

int monthNamed(const std::string& word) {
    if (word.size() < 3) return 0;
    for (int i = 0; i < 12; ++i)
        if (automation::sameName(word.substr(0, 3), kMonths[i])) return i + 1;
    return 0;
}

/// Reads pieces one after another; every reader leaves the position alone where it does not apply.
class MomentReader {
public:
    explicit MomentReader(std::vector<Piece> pieces) : pieces_(std::move(pieces)) {}

    std::optional<Moment> read() {
        if (pieces_.empty()) return kServerEpoch;
        Moment moment = kServerEpoch;
        if (!isSymbol(1, ":") && !isMeridian(1)) {
            auto day = readDay();
            if (!day) return std::nullopt;
            moment = *day;
            if (isWord(0, "T")) ++at_;
        }
        if (at_ < pieces_.size()) {
            auto time = readTime();
            if (!time) return std::nullopt;
            moment += *time;
        }
        if (at_ != pieces_.size()) return std::nullopt;
        return roundToTick(moment);
    }

private:
    const Piece* peek(std::size_t ahead) const {
        return at_ + ahead < pieces_.size() ? &pieces_[at_ + ahead] : nullptr;
    }
    bool isNumber(std::size_t ahead) const { return peek(ahead) && peek(ahead)->sort == Piece::Sort::number; }
    bool isSymbol(std::size_t ahead, std::string_view text) const { return peek(ahead) && peek(ahead)->text == text; }
    bool isWord(std::size_t ahead, std::string_view text) const {
        return peek(ahead) && automation::sameName(peek(ahead)->text, text);
    }
    bool isMeridian(std::size_t ahead) const { return isWord(ahead, "AM") || isWord(ahead, "PM"); }
    bool isSeparator(std::size_t ahead) const {
        return isSymbol(ahead, "/") || isSymbol(ahead, "-") || isSymbol(ahead, ".");
    }

    std::optional<Moment> readDay() {
        if (isNumber(0) && isSeparator(1) && isNumber(2) && isSeparator(3) && isNumber(4)) {
            const Piece a = pieces_[at_], b = pieces_[at_ + 2], c = pieces_[at_ + 4];
            at_ += 5;
            if (a.text.size() == 4) return dayOf(a.number, b.number, c.number);
            return dayOf(fullYear(c), a.number, b.number);
        }
        if (isNumber(0) && peek(0)->text.size() == 8) {
            const int number = pieces_[at_++].number;
            return dayOf(number / 10000, number / 100 % 100, number % 100);
        }
        if (isNumber(0) && peek(0)->text.size() == 6) {
            const int number = pieces_[at_++].number;
            const int y = number / 10000;
            return dayOf(y < 50 ? 2000 + y : 1900 + y, number / 100 % 100, number % 100);
        }
        const bool dayFirst = isNumber(0);
        const Piece* word = peek(dayFirst ? 1 : 0);
        if (!word || word->sort != Piece::Sort::word || monthNamed(word->text) == 0) return std::nullopt;
        const int month = monthNamed(word->text);
        const Piece* dayPiece = peek(dayFirst ? 0 : 1);
        if (!dayPiece || dayPiece->sort != Piece::Sort::number) return std::nullopt;
        const std::size_t yearAt = isSymbol(2, ",") ? 3 : 2;
        if (!isNumber(yearAt)) return std::nullopt;
        auto day = dayOf(fullYear(*peek(yearAt)), month, dayPiece->number);
        at_ += yearAt + 1;
        return day;
    }

    std::optional<Moment> readTime() {
        if (!isNumber(0)) return std::nullopt;
        int parts[3] = {pieces_[at_++].number, 0, 0};
        Moment milliseconds = 0;
        int count = 1;
        while (count < 3 && isSymbol(0, ":") && isNumber(1)) {
            parts[count++] = pieces_[at_ + 1].number;
            at_ += 2;
        }
        if (count == 3 && (isSymbol(0, ".") || isSymbol(0, ":")) && isNumber(1)) {
            const std::string digits = (pieces_[at_ + 1].text + "00").substr(0, 3);
            milliseconds = isSymbol(0, ".") ? std::stoi(digits) : pieces_[at_ + 1].number;
            at_ += 2;
        }
        if (isMeridian(0)) {
            if (parts[0] < 1 || parts[0] > 12) return std::nullopt;
            parts[0] = parts[0] % 12 + (isWord(0, "PM") ? 12 : 0);
            ++at_;
        } else if (count == 1) {
            return std::nullopt;
        }
        if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return std::nullopt;
        return ((parts[0] * 60LL + parts[1]) * 60 + parts[2]) * 1000 + milliseconds;
    }

    std::vector<Piece> pieces_;
    std::size_t at_ = 0;
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
    auto pieces = cut(text);
    if (!pieces) return std::nullopt;
    return MomentReader(std::move(*pieces)).read();
}

std::optional<std::string> momentText(Moment moment, int style) {
    const Moment dayNumber = floorDiv(moment, kMillisecondsPerDay);
    const year_month_day date{kDayZero + days(dayNumber)};
    const int y = static_cast<int>(date.year());
    const int m = static_cast<int>(static_cast<unsigned>(date.month()));
    const int d = static_cast<int>(static_cast<unsigned>(date.day()));
    const int inDay = static_cast<int>(moment - dayNumber * kMillisecondsPerDay);
    const int hour = inDay / 3'600'000, minute = inDay / 60'000 % 60, second = inDay / 1000 % 60, milli = inDay % 1000;
    char out[64];
    auto write = [&](const char* pattern, auto... values) {
        std::snprintf(out, sizeof out, pattern, values...);
        return std::string(out);
    };
    switch (style) {
    case 0:
    case 100:
        return write("%s %2d %04d %2d:%02d%s", kMonths[m - 1], d, y, hour % 12 == 0 ? 12 : hour % 12, minute,
                     hour < 12 ? "AM" : "PM");
    case 101: return write("%02d/%02d/%04d", m, d, y);
    case 103: return write("%02d/%02d/%04d", d, m, y);
    case 104: return write("%02d.%02d.%04d", d, m, y);
    case 108: return write("%02d:%02d:%02d", hour, minute, second);
    case 111: return write("%04d/%02d/%02d", y, m, d);
    case 112: return write("%04d%02d%02d", y, m, d);
    case 120: return write("%04d-%02d-%02d %02d:%02d:%02d", y, m, d, hour, minute, second);
    case 121: return write("%04d-%02d-%02d %02d:%02d:%02d.%03d", y, m, d, hour, minute, second, milli);
    default: return std::nullopt;
    }
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
