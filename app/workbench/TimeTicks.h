// Ticks of a time axis: at round times of the calendar, with labels that say as much as the distance between
// ticks needs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/table/TimeText.h"

namespace app {

// The distance of neighbouring ticks: so many microseconds, or so many months.
struct TimeStep {
    Microseconds microseconds = 0;
    int months = 0;
    double Seconds() const;  // on average
};

// The shortest round step of at least so many seconds; steps are 1, 2 or 5 times a power of ten below a
// second and from a year on, and the usual parts of minutes, hours, days and years between.
TimeStep TimeStepFor(double leastSeconds);

// The round times from `from` to `to`, both included; never more than a thousand. Weeks begin on Monday.
std::vector<Microseconds> TimesAt(TimeStep step, Microseconds from, Microseconds to);

// The label of a tick, and what it leaves out: the date of a time of day, the year of a day.
std::string TimeTickText(Microseconds at, TimeStep step);
std::string TimeTickContext(Microseconds at, TimeStep step);
// A text about as wide as labels for this step get.
std::string WidestTickText(TimeStep step);

// A time to the precision that one pixel of so many seconds shows.
std::string TimeReadOut(Microseconds at, double secondsPerPixel);

}  // namespace app
