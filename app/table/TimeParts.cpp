#include "app/table/TimeParts.h"

#include <cmath>

#include "app/table/CellNumber.h"

namespace app {

namespace {

// The number of one part; false where it cannot be one.
bool ReadPartNumber(std::string_view text, char decimalSign, double& value) {
    return ReadNumber(text, decimalSign, value) && value >= 0 && value < 10000;
}

bool TakeWhole(double value, int& part) {
    part = static_cast<int>(value);
    return part == value;
}

// Hours and minutes written as one number: 30 is 00:30, 1530 is 15:30; above 2400 seconds follow.
bool ReadHourMinute(std::string_view text, CivilTime& civil) {
    double value = 0;
    int digits = 0;
    if (!ReadNumber(text, '.', value) || value < 0 || value > 240000 || !TakeWhole(value, digits))
        return false;
    civil.second = 0;
    if (text.size() > 4) {
        civil.second = digits % 100;
        digits /= 100;
    }
    civil.hour = digits / 100;
    civil.minute = digits % 100;
    return true;
}

// What the cells add up to.
struct Sum {
    CivilTime civil;
    bool hasDay = false;  // by numbers
    double length = 0;    // of fractions of days, and of hours, minutes and seconds, in microseconds
    ReadTime time;        // of a date or a clock that is text

    bool Add(TimeRole role, TimeForm form, std::string_view cell, char decimalSign);
    bool AddText(TimeRole role, TimeForm form, std::string_view cell);
    bool TakeDay(double value, int& day) {
        day = static_cast<int>(value);
        length += (value - day) * double(kDayLength);
        return true;
    }
};

bool Sum::AddText(TimeRole role, TimeForm form, std::string_view cell) {
    ReadTime part;
    if (role == TimeRole::Date ? !ReadTimeOf(form, cell, part) : !ReadClockAlone(cell, part)) return false;
    time.at += part.at;
    time.hasZone |= part.hasZone;
    time.cut |= part.cut;
    return true;
}

bool Sum::Add(TimeRole role, TimeForm form, std::string_view cell, char decimalSign) {
    if (role == TimeRole::Date || role == TimeRole::Clock) return AddText(role, form, cell);
    if (role == TimeRole::HourMinute) return ReadHourMinute(cell, civil);
    double value = 0;
    if (!ReadPartNumber(cell, decimalSign, value)) return false;
    switch (role) {
        case TimeRole::Year:
            hasDay = true;
            if (!TakeWhole(value, civil.year)) return false;
            if (cell.size() <= 2) civil.year = FullYear(civil.year);
            return true;
        case TimeRole::Month:
            return TakeWhole(value, civil.month);
        case TimeRole::Day:
            return TakeDay(value, civil.day);
        case TimeRole::DayOfYear:
            return TakeDay(value, civil.dayOfYear);
        case TimeRole::Hour:
            length += value * 3600e6;
            return value <= 24;
        case TimeRole::Minute:
            length += value * 60e6;
            return value < 60;
        default:
            length += value * 1e6;
            return value <= 60;
    }
}

}  // namespace

bool ReadTimeParts(TimeForm form, char decimalSign, const std::vector<TimePart>& parts,
                   const std::vector<std::string>& cells, ReadTime& time) {
    Sum sum;
    for (std::size_t i = 0; i < cells.size() && i < parts.size(); ++i)
        if (!sum.Add(parts[i].role, form, cells[i], decimalSign)) return false;
    Microseconds days = 0;
    Microseconds clock = 0;
    if ((sum.hasDay && !sum.civil.Days(days)) || !sum.civil.Clock(clock)) return false;
    time = sum.time;
    time.at += days + clock + static_cast<Microseconds>(sum.length + 0.5);
    return true;
}

}  // namespace app
