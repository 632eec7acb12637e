// Points in time as they stand in a cell. A time is counted in microseconds since 1970-01-01T00:00 UTC, so
// any year from 1 to 9999 fits; finer digits than microseconds are cut off and reported as such.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace app {

using Microseconds = std::int64_t;
constexpr Microseconds kSecond = 1000000;

enum class TimeForm { None, Iso, EpochSeconds, EpochMilliseconds, Custom };

struct ReadTime {
    Microseconds at = 0;
    bool hasZone = false;
    bool cut = false;  // digits beyond the microsecond were not zero
};

// ISO 8601: YYYY-MM-DD, then after T or one blank HH:MM, HH:MM:SS or with a fraction after . or , and then
// nothing, Z, or an offset +HH, +HHMM, +HH:MM. Slashes may stand for the hyphens of the date. A time without
// zone is taken as it stands, as if it were UTC.
bool ReadIsoTime(std::string_view text, ReadTime& time);

// Reads cells of one column in its form.
class TimeReader {
  public:
    TimeReader(TimeForm form, std::string customFormat, char decimalSign);
    ~TimeReader();
    TimeReader(TimeReader&&) noexcept;
    TimeReader& operator=(TimeReader&&) noexcept;
    TimeForm Form() const { return form_; }
    bool Read(std::string_view text, ReadTime& time) const;

  private:
    bool ReadCustom(std::string_view text, ReadTime& time) const;

    TimeForm form_;
    std::string customFormat_;
    char decimalSign_;
    struct Scratch;
    std::unique_ptr<Scratch> scratch_;  // the stream that custom forms are read through
};

// 2013-12-02T21:15:00, with a fraction where there is one and Z when `zone`.
std::string IsoText(Microseconds time, bool zone);
// A length of time for people: "5 min", "1 h 30 min", "36.5 s".
std::string DurationText(double seconds);
// Reads a length such as 90, 90s, 15min, 6h, 0.5d in seconds.
std::optional<double> ReadDuration(std::string_view text);

}  // namespace app
