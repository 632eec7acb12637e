// Points in time as they stand in a cell or in several. A time is counted in microseconds since
// 1970-01-01T00:00 UTC, so any year from 0 to 9999 fits; finer digits than microseconds are cut off and
// reported as such. A time that names no zone is counted as if it were UTC.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/table/TimePattern.h"
#include "app/table/TimeWalker.h"

namespace app {

enum class TimeForm {
    None,
    Iso,
    DayFirst,
    MonthFirst,
    Compact,
    EpochSeconds,
    EpochMilliseconds,
    EpochMicroseconds,
    Custom,  // a pattern
    Fields   // year, month, ... in columns of their own
};

// The names of the forms on the command line, and what people call them.
struct NamedTimeForm {
    TimeForm form;
    const char* name;
    const char* meaning;
};
constexpr NamedTimeForm kTimeFormNames[] = {
    {TimeForm::Iso, "iso", "year-month-day, ISO 8601 (2024-03-14T08:00)"},
    {TimeForm::DayFirst, "dmy", "day, month, year (14.03.2024 08:00)"},
    {TimeForm::MonthFirst, "mdy", "month, day, year (03/14/2024 8:00 AM)"},
    {TimeForm::Compact, "compact", "digits only (20240314T0800)"},
    {TimeForm::EpochSeconds, "epoch", "seconds since 1970"},
    {TimeForm::EpochMilliseconds, "epoch-ms", "milliseconds since 1970"},
    {TimeForm::EpochMicroseconds, "epoch-us", "microseconds since 1970"},
    {TimeForm::None, "number", "plain numbers"},
};
// Its row; none for a form with % fields.
const NamedTimeForm* FindTimeForm(const std::string& name);
// Nothing when it is such a name, a pattern without fault or empty.
std::optional<Failure> CheckTimeFormat(const std::string& format);
constexpr bool IsEpoch(TimeForm form) {
    return form == TimeForm::EpochSeconds || form == TimeForm::EpochMilliseconds ||
           form == TimeForm::EpochMicroseconds;
}
const char* NameOf(TimeForm form);  // "" for Custom and Fields

// ISO 8601: YYYY-MM-DD or the day of the year YYYY-DDD, then after T or a blank a clock as below. Slashes and
// points may stand for the hyphens of the date, and months be named.
bool ReadIsoTime(std::string_view text, ReadTime& time);
// A date of this form and, behind T, a blank or a comma, a clock: H:MM, H:MM:SS or with a fraction after . or
// ",", with AM or PM, and then nothing, the letters of a zone (Z, UTC, CET ...), or an
// offset +HH, +HHMM, +HH:MM.
bool ReadTimeOf(TimeForm form, std::string_view text, ReadTime& time);
// A clock alone, as a length from midnight.
bool ReadClockAlone(std::string_view text, ReadTime& time);

// What one of several columns says about a time.
enum class TimeRole { Date, Clock, Year, Month, Day, DayOfYear, Hour, HourMinute, Minute, Second };
struct TimePart {
    int field = 0;
    TimeRole role = TimeRole::Date;
};

// Reads cells of one column in its form, or of several that compose a time.
class TimeReader {
  public:
    // `customFormat` has been compiled before without fault.
    TimeReader(TimeForm form, const std::string& customFormat, char decimalSign,
               std::vector<TimePart> parts = {});
    TimeForm Form() const { return form_; }
    bool Read(std::string_view text, ReadTime& time) const;
    // `cells` are those of the parts, in their order. A pattern reads them joined by blanks.
    bool ReadParts(const std::vector<std::string>& cells, ReadTime& time) const;

  private:
    TimeForm form_;
    TimePattern pattern_;
    std::vector<TimePart> parts_;
    char decimalSign_;
};

// 2013-12-02T21:15:00, with a fraction where there is one and Z when `zone`.
std::string IsoText(Microseconds time, bool zone);

}  // namespace app
