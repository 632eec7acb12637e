#include "app/workbench/TimeTicks.h"

#include <date/date.h>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr Microseconds kMinute = 60 * kSecond;
constexpr Microseconds kHour = 60 * kMinute;
constexpr Microseconds kDay = 24 * kHour;
constexpr double kMonthSeconds = 365.2425 / 12 * 86400;
constexpr std::size_t kMostTicks = 1000;

using SystemTime = date::sys_time<std::chrono::microseconds>;

SystemTime TimeOf(Microseconds at) { return SystemTime{std::chrono::microseconds{at}}; }

Microseconds FloorTo(Microseconds at, Microseconds step, Microseconds anchor) {
    const Microseconds since = at - anchor;
    const Microseconds rest = ((since % step) + step) % step;
    return at - rest;
}

// 1970-01-05 was a Monday.
Microseconds AnchorOf(Microseconds step) { return step % (7 * kDay) == 0 ? 4 * kDay : 0; }

int MonthsSinceYear0(Microseconds at) {
    const date::year_month_day day{date::floor<date::days>(TimeOf(at))};
    return static_cast<int>(day.year()) * 12 + static_cast<int>(static_cast<unsigned>(day.month())) - 1;
}

Microseconds StartOfMonth(int months) {
    const int year = months >= 0 ? months / 12 : (months - 11) / 12;
    const auto month = static_cast<unsigned>(months - year * 12 + 1);
    const date::sys_days day{date::year{year} / date::month{month} / 1};
    return std::chrono::duration_cast<std::chrono::microseconds>(day.time_since_epoch()).count();
}

std::vector<Microseconds> MonthsAt(int step, Microseconds from, Microseconds to) {
    std::vector<Microseconds> times;
    const int first = MonthsSinceYear0(from);
    for (int month = first - first % step; times.size() < kMostTicks; month += step) {
        const Microseconds at = StartOfMonth(month);
        if (at > to) break;
        if (at >= from) times.push_back(at);
    }
    return times;
}

// How many digits of a second's fraction a step needs.
int FractionDigits(Microseconds step) {
    int digits = 6;
    for (; digits > 0 && step % 10 == 0; step /= 10) --digits;
    return digits;
}

std::string ClockText(Microseconds at, Microseconds step) {
    if (step >= kMinute && step % kMinute == 0) return date::format("%H:%M", TimeOf(at));
    std::string text = date::format("%T", TimeOf(at));
    const int digits = step < kSecond ? FractionDigits(step) : 0;
    return text.substr(0, digits == 0 ? 8 : 9 + static_cast<std::size_t>(digits));
}

}  // namespace

double TimeStep::Seconds() const {
    return months ? months * kMonthSeconds : static_cast<double>(microseconds) / 1e6;
}

TimeStep TimeStepFor(double leastSeconds) {
    for (Microseconds power = 1; power < kSecond; power *= 10)
        for (const int factor : {1, 2, 5})
            if (static_cast<double>(power * factor) >= leastSeconds * 1e6) return {power * factor, 0};
    for (const Microseconds unit : {kSecond, kMinute})
        for (const int count : {1, 2, 5, 10, 15, 30})
            if (static_cast<double>(unit * count) >= leastSeconds * 1e6) return {unit * count, 0};
    for (const Microseconds count :
         {kHour, 2 * kHour, 3 * kHour, 6 * kHour, 12 * kHour, kDay, 2 * kDay, 7 * kDay, 14 * kDay})
        if (static_cast<double>(count) >= leastSeconds * 1e6) return {count, 0};
    for (const int months : {1, 2, 3, 6})
        if (months * kMonthSeconds >= leastSeconds) return {0, months};
    for (int power = 12; power < 12000; power *= 10)
        for (const int factor : {1, 2, 5})
            if (power * factor * kMonthSeconds >= leastSeconds) return {0, power * factor};
    return {0, 12000};
}

std::vector<Microseconds> TimesAt(TimeStep step, Microseconds from, Microseconds to) {
    if (step.months > 0) return MonthsAt(step.months, from, to);
    std::vector<Microseconds> times;
    if (step.microseconds <= 0) return times;
    Microseconds at = FloorTo(from, step.microseconds, AnchorOf(step.microseconds));
    for (; at <= to && times.size() < kMostTicks; at += step.microseconds)
        if (at >= from) times.push_back(at);
    return times;
}

std::string TimeTickText(Microseconds at, TimeStep step) {
    if (step.months >= 12) return date::format("%Y", TimeOf(at));
    if (step.months > 0) return date::format("%Y-%m", TimeOf(at));
    return step.microseconds >= kDay ? date::format("%m-%d", TimeOf(at)) : ClockText(at, step.microseconds);
}

std::string TimeTickContext(Microseconds at, TimeStep step) {
    if (step.months > 0) return {};
    return date::format(step.microseconds >= kDay ? "%Y" : "%F", TimeOf(at));
}

std::string WidestTickText(TimeStep step) {
    if (step.months >= 12) return "00000";
    if (step.months > 0) return "0000-00 ";
    if (step.microseconds >= kDay || step.microseconds % kMinute == 0) return "00:00";
    return step.microseconds >= kSecond ? "00:00:00" : "00:00:00.000";
}

std::string TimeReadOut(Microseconds at, double secondsPerPixel) {
    Microseconds step = 1;
    while (step < kSecond && static_cast<double>(step) * 10 <= secondsPerPixel * 1e6) step *= 10;
    if (secondsPerPixel >= 60) step = kMinute;
    const Microseconds rounded = FloorTo(at + step / 2, step, 0);
    return date::format("%F ", TimeOf(rounded)) + ClockText(rounded, step);
}

}  // namespace app
