#include "app/table/TimeWalker.h"

#include <date/date.h>

#include "app/table/CalendarNames.h"
#include "app/table/ZoneNames.h"

namespace app {

namespace {

constexpr std::size_t kShortestName = 3;

bool IsLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

bool IsAnyLetter(char c) { return IsLetter(c) || static_cast<unsigned char>(c) > 127; }

}  // namespace

std::string_view TimeWalker::Word() const {
    const char* end = at_;
    while (end != end_ && IsAnyLetter(*end)) ++end;
    return {at_, static_cast<std::size_t>(end - at_)};
}

void TimeWalker::SkipLetters() {
    while (IsLetter(Peek())) ++at_;
}

bool TimeWalker::Month(int& month) {
    const std::string_view word = Word();
    month = word.size() < kShortestName ? 0 : MonthNamed(word);
    if (month == 0) return false;
    at_ += word.size();
    return true;
}

bool TimeWalker::Weekday() {
    const std::string_view word = Word();
    if (word.empty() || !IsWeekdayName(word)) return false;
    at_ += word.size();
    Skip('.');
    return true;
}

bool TimeWalker::Zone(Microseconds& at) {
    const char* const start = at_;
    const std::string_view word = Word();
    if (!word.empty()) {
        const auto minutes = ZoneMinutes(word);
        if (!minutes) return false;
        at_ += word.size();
        const bool offset = *minutes == 0 && word.size() > 1 && (Peek() == '+' || Peek() == '-');
        if (!offset) {
            at -= *minutes * 60 * kSecond;
            return true;
        }
    }
    if (Offset(at)) return true;
    at_ = start;
    return false;
}

bool TimeWalker::Offset(Microseconds& at) {
    const bool west = Skip('-');
    if (!west && !Skip('+')) return false;
    int hours = 0;
    int minutes = 0;
    if (!Digits(2, 2, hours)) return false;
    if (Skip(':') ? !Digits(2, 2, minutes) : AtDigit() && !Digits(2, 2, minutes)) return false;
    if (hours > 23 || minutes > 59) return false;
    const Microseconds offset = (hours * 60 + minutes) * 60 * kSecond;
    at += west ? offset : -offset;
    return true;
}

bool DaysOf(int year, int month, int day, std::int64_t& days) {
    const date::year_month_day civil{date::year{year}, date::month{static_cast<unsigned>(month)},
                                     date::day{static_cast<unsigned>(day)}};
    if (!civil.ok()) return false;
    days = date::sys_days{civil}.time_since_epoch().count();
    return true;
}

bool DaysOfYearDay(int year, int dayOfYear, std::int64_t& days) {
    const int most = date::year{year}.is_leap() ? 366 : 365;
    if (dayOfYear < 1 || dayOfYear > most || !DaysOf(year, 1, 1, days)) return false;
    days += dayOfYear - 1;
    return true;
}

bool CivilTime::Days(Microseconds& at) const {
    std::int64_t days = 0;
    const bool isDay = dayOfYear >= 0 ? DaysOfYearDay(year, dayOfYear, days) : DaysOf(year, month, day, days);
    at = days * kDayLength;
    return isDay;
}

bool ClockLength(int hour, int minute, int second, Microseconds fraction, Microseconds& length) {
    if (minute > 59 || second > 60 || hour > 24) return false;
    if (hour == 24 && (minute || second || fraction)) return false;
    length = ((hour * 60 + minute) * Microseconds{60} + second) * kSecond + fraction;
    return true;
}

}  // namespace app
