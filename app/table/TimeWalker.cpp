#include "app/table/TimeWalker.h"

#include <date/date.h>

#include <iterator>

namespace app {

namespace {

constexpr std::string_view kMonths[] = {"january",   "february", "march",    "april",
                                        "may",       "june",     "july",     "august",
                                        "september", "october",  "november", "december"};
constexpr std::string_view kDays[] = {"monday", "tuesday",  "wednesday", "thursday",
                                      "friday", "saturday", "sunday"};

constexpr bool IsLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

// The number of the name from 1; 0 when there is none.
template <std::size_t N>
int ReadName(TimeWalker& walker, const std::string_view (&names)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        if (!walker.SkipWord(names[i]) && !walker.SkipWord(names[i].substr(0, 4)) &&
            !walker.SkipWord(names[i].substr(0, 3)))
            continue;
        return IsLetter(walker.Peek()) ? 0 : static_cast<int>(i) + 1;
    }
    return 0;
}

}  // namespace

bool TimeWalker::Month(int& month) {
    const char* const start = at_;
    month = ReadName(*this, kMonths);
    if (month == 0) at_ = start;
    return month != 0;
}

bool TimeWalker::Weekday() {
    const char* const start = at_;
    if (ReadName(*this, kDays) != 0) return true;
    at_ = start;
    return false;
}

bool TimeWalker::Zone(Microseconds& at) {
    if (SkipWord("UTC") || SkipWord("GMT")) {
        if (Peek() != '+' && Peek() != '-') return true;
    } else if (Skip('Z') || Skip('z')) {
        return true;
    }
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

bool ClockLength(int hour, int minute, int second, Microseconds fraction, Microseconds& length) {
    if (minute > 59 || second > 60 || hour > 24) return false;
    if (hour == 24 && (minute || second || fraction)) return false;
    length = ((hour * 60 + minute) * Microseconds{60} + second) * kSecond + fraction;
    return true;
}

}  // namespace app
