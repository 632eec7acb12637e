#include "app/table/TimeText.h"

#include <date/date.h>

#include <cmath>

#include "app/table/CellNumber.h"

namespace app {

namespace {

constexpr double kLatestSecond = 253402300800.0;  // the start of the year 10000

// Two digits; `bad` keeps whether any was none.
inline int Two(const char* text, unsigned& bad) {
    const unsigned high = static_cast<unsigned char>(text[0]) - unsigned{'0'};
    const unsigned low = static_cast<unsigned char>(text[1]) - unsigned{'0'};
    bad |= static_cast<unsigned>(high > 9) | static_cast<unsigned>(low > 9);
    return static_cast<int>(high * 10 + low);
}

// The usual case without detours: YYYY-MM-DD?HH:MM, with :SS and with Z or not. False: look closer.
bool ReadPlainIso(std::string_view text, ReadTime& time) {
    std::size_t size = text.size();
    const bool zone = size > 0 && text[size - 1] == 'Z';
    size -= zone;
    if (size != 16 && size != 19) return false;
    const char* const t = text.data();
    if (t[4] != '-' || t[7] != '-' || (t[10] != 'T' && t[10] != ' ') || t[13] != ':') return false;
    unsigned bad = size == 19 && t[16] != ':';
    const int year = Two(t, bad) * 100 + Two(t + 2, bad);
    const int month = Two(t + 5, bad);
    const int day = Two(t + 8, bad);
    const int hour = Two(t + 11, bad);
    const int minute = Two(t + 14, bad);
    const int second = size == 19 ? Two(t + 17, bad) : 0;
    if (bad || hour > 23 || minute > 59 || second > 59) return false;
    std::int64_t days = 0;
    if (!DaysOf(year, month, day, days)) return false;
    time.at = days * kDayLength + ((hour * 60 + minute) * Microseconds{60} + second) * kSecond;
    time.hasZone = zone;
    time.cut = false;
    return true;
}

constexpr bool IsDateSign(char c) { return c == '-' || c == '/' || c == '.' || c == ' '; }

// What stands between the parts of a date: the same sign in both places, and behind it any blanks.
bool SkipBetween(TimeWalker& walker, char& sign) {
    walker.Skip(',');
    if (sign == 0) sign = walker.Peek();
    if (!IsDateSign(sign) || !walker.Skip(sign)) return false;
    walker.SkipBlanks();
    return true;
}

bool MonthOrName(TimeWalker& walker, int& month) { return walker.Digits(1, 2, month) || walker.Month(month); }

bool ReadYear(TimeWalker& walker, int& year) {
    if (walker.Digits(4, 4, year)) return true;
    if (!walker.Digits(2, 2, year)) return false;
    year = FullYear(year);
    return true;
}

bool ReadYearFirst(TimeWalker& walker, std::int64_t& days) {
    int year = 0;
    int month = 0;
    int day = 0;
    char sign = 0;
    if (!walker.Digits(4, 4, year) || !SkipBetween(walker, sign) || sign == ' ') return false;
    if (sign == '-' && walker.Digits(3, 3, day)) return DaysOfYearDay(year, day, days);
    return MonthOrName(walker, month) && SkipBetween(walker, sign) && walker.Digits(1, 2, day) &&
           DaysOf(year, month, day, days);
}

bool ReadYearLast(TimeWalker& walker, bool monthFirst, std::int64_t& days) {
    int year = 0;
    int month = 0;
    int day = 0;
    char sign = 0;
    if (monthFirst)
        return MonthOrName(walker, month) && SkipBetween(walker, sign) && walker.Digits(1, 2, day) &&
               SkipBetween(walker, sign) && ReadYear(walker, year) && DaysOf(year, month, day, days);
    return walker.Digits(1, 2, day) && SkipBetween(walker, sign) && MonthOrName(walker, month) &&
           SkipBetween(walker, sign) && ReadYear(walker, year) && DaysOf(year, month, day, days);
}

bool ReadClock(TimeWalker& walker, ReadTime& time) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    Microseconds fraction = 0;
    if (!walker.Digits(1, 2, hour) || !walker.Skip(':') || !walker.Digits(2, 2, minute)) return false;
    if (walker.Skip(':')) {
        if (!walker.Digits(2, 2, second)) return false;
        if ((walker.Skip('.') || walker.Skip(',')) && !walker.Fraction(kSecond, fraction, time.cut))
            return false;
    }
    walker.SkipBlanks();
    const bool afternoon = walker.SkipWord("PM") || walker.SkipWord("P.M.");
    if (afternoon || walker.SkipWord("AM") || walker.SkipWord("A.M.")) {
        if (hour < 1 || hour > 12) return false;
        hour = HourOfTwelve(hour, afternoon);
    }
    Microseconds length = 0;
    if (!ClockLength(hour, minute, second, fraction, length)) return false;
    time.at += length;
    return true;
}

bool ReadZone(TimeWalker& walker, ReadTime& time) {
    walker.SkipBlanks();
    if (walker.AtEnd()) return true;
    time.hasZone = true;
    return walker.Zone(time.at) && walker.AtEnd();
}

// YYYYMMDD and, behind nothing, T, a blank or _, hh, hhmm or hhmmss or a clock with colons.
bool ReadCompact(TimeWalker& walker, ReadTime& time) {
    int year = 0;
    int month = 0;
    int day = 0;
    std::int64_t days = 0;
    if (!walker.Digits(4, 4, year) || !walker.Digits(2, 2, month) || !walker.Digits(2, 2, day)) return false;
    if (!DaysOf(year, month, day, days)) return false;
    time.at = days * kDayLength;
    if (walker.AtEnd()) return true;
    if (!walker.Skip('T') && !walker.Skip('t') && !walker.Skip('_')) walker.SkipBlanks();
    if (walker.Peek(1) == ':' || walker.Peek(2) == ':')
        return ReadClock(walker, time) && ReadZone(walker, time);
    int hour = 0;
    int minute = 0;
    int second = 0;
    Microseconds fraction = 0;
    if (!walker.Digits(2, 2, hour)) return false;
    if (walker.Digits(2, 2, minute) && walker.Digits(2, 2, second) && walker.Skip('.'))
        walker.Fraction(kSecond, fraction, time.cut);
    Microseconds length = 0;
    if (!ClockLength(hour, minute, second, fraction, length)) return false;
    time.at += length;
    return ReadZone(walker, time);
}

bool ReadDated(TimeForm form, std::string_view text, ReadTime& time) {
    TimeWalker walker(text);
    ReadTime read;
    std::int64_t days = 0;
    if (form == TimeForm::Compact) {
        if (!ReadCompact(walker, read)) return false;
        time = read;
        return true;
    }
    if (form == TimeForm::Iso ? !ReadYearFirst(walker, days)
                              : !ReadYearLast(walker, form == TimeForm::MonthFirst, days))
        return false;
    read.at = days * kDayLength;
    if (!walker.AtEnd()) {
        walker.Skip(',');
        const bool clock = walker.Skip('T') || walker.Skip('t') || walker.Skip(':');
        if (!clock && !walker.SkipBlanks()) return false;
        if ((clock || !walker.AtEnd()) && !(ReadClock(walker, read) && ReadZone(walker, read))) return false;
    }
    time = read;
    return true;
}

bool ReadEpoch(std::string_view text, char decimalSign, double unitsPerSecond, ReadTime& time) {
    double value = 0;
    if (!ReadNumber(text, decimalSign, value)) return false;
    const double seconds = value / unitsPerSecond;
    if (!(std::fabs(seconds) < kLatestSecond)) return false;
    time.at = static_cast<Microseconds>(std::floor(value * (kSecond / unitsPerSecond) + 0.5));
    return true;
}

// The number of one part; false where it cannot be one.
bool ReadPartNumber(std::string_view text, char decimalSign, double& value) {
    return ReadNumber(text, decimalSign, value) && value >= 0 && value < 10000;
}

// Hours and minutes written as one number: 30 is 00:30, 1530 is 15:30; above 2400 seconds follow.
bool ReadHourMinute(std::string_view text, int& hour, int& minute, int& second) {
    double value = 0;
    if (!ReadNumber(text, '.', value) || value < 0 || value > 240000 || value != std::floor(value))
        return false;
    auto digits = static_cast<int>(value);
    second = 0;
    if (text.size() > 4) {
        second = digits % 100;
        digits /= 100;
    }
    hour = digits / 100;
    minute = digits % 100;
    return true;
}

// A date and a clock summed up from the cells of several columns.
struct Composed {
    double year = -1;
    double month = 1;
    double day = 1;
    double dayOfYear = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    double length = 0;  // of fractions of hours, minutes and seconds, in microseconds
    ReadTime time;      // of a date or a clock that is text

    bool Add(TimeRole role, TimeForm form, std::string_view cell, char decimalSign);
    bool Sum(ReadTime& result) const;
};

bool Composed::Add(TimeRole role, TimeForm form, std::string_view cell, char decimalSign) {
    ReadTime part;
    double value = 0;
    if (role == TimeRole::Date || role == TimeRole::Clock) {
        if (role == TimeRole::Date ? !ReadTimeOf(form, cell, part) : !ReadClockAlone(cell, part))
            return false;
        time.at += part.at;
        time.hasZone |= part.hasZone;
        time.cut |= part.cut;
        return true;
    }
    if (role == TimeRole::HourMinute) return ReadHourMinute(cell, hour, minute, second);
    if (!ReadPartNumber(cell, decimalSign, value)) return false;
    switch (role) {
        case TimeRole::Year:
            year = cell.size() <= 2 ? FullYear(static_cast<int>(value)) : value;
            break;
        case TimeRole::Month:
            month = value;
            break;
        case TimeRole::Day:
            day = value;
            break;
        case TimeRole::DayOfYear:
            dayOfYear = value;
            break;
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
    return true;
}

bool Composed::Sum(ReadTime& result) const {
    std::int64_t days = 0;
    const double whole = dayOfYear > 0 ? dayOfYear : day;
    if (year >= 0) {
        const auto y = static_cast<int>(year);
        const auto number = static_cast<int>(whole);
        if (y != year || month != std::floor(month)) return false;
        if (dayOfYear > 0 ? !DaysOfYearDay(y, number, days)
                          : !DaysOf(y, static_cast<int>(month), number, days))
            return false;
    }
    Microseconds clock = 0;
    if (!ClockLength(hour, minute, second, 0, clock)) return false;
    result = time;
    result.at += days * kDayLength + clock +
                 static_cast<Microseconds>(
                     length + (whole - std::floor(whole)) * static_cast<double>(kDayLength) + 0.5);
    return true;
}

}  // namespace

const NamedTimeForm* FindTimeForm(const std::string& name) {
    for (const auto& row : kTimeFormNames)
        if (name == row.name) return &row;
    return nullptr;
}

const char* NameOf(TimeForm form) {
    for (const auto& row : kTimeFormNames)
        if (form == row.form) return row.name;
    return "";
}

std::optional<Failure> CheckTimeFormat(const std::string& format) {
    if (format.empty() || FindTimeForm(format)) return std::nullopt;
    if (format.find('%') != std::string::npos) {
        const auto pattern = TimePattern::Compile(format);
        if (pattern) return std::nullopt;
        return pattern.Error().About("--time-format");
    }
    std::string names;
    for (const auto& form : kTimeFormNames) names += std::string(form.name) + ", ";
    return UsageError("--time-format " + format + ": expected " + names + "or a form with % fields");
}

bool ReadIsoTime(std::string_view text, ReadTime& time) {
    return ReadPlainIso(text, time) || ReadDated(TimeForm::Iso, text, time);
}

bool ReadTimeOf(TimeForm form, std::string_view text, ReadTime& time) {
    return form == TimeForm::Iso ? ReadIsoTime(text, time) : ReadDated(form, text, time);
}

bool ReadClockAlone(std::string_view text, ReadTime& time) {
    TimeWalker walker(text);
    ReadTime read;
    if (!ReadClock(walker, read) || !ReadZone(walker, read)) return false;
    time = read;
    return true;
}

TimeReader::TimeReader(TimeForm form, const std::string& customFormat, char decimalSign,
                       std::vector<TimePart> parts)
    : form_(form), parts_(std::move(parts)), decimalSign_(decimalSign) {
    if (form != TimeForm::Custom) return;
    if (auto pattern = TimePattern::Compile(customFormat)) pattern_ = std::move(*pattern);
}

bool TimeReader::Read(std::string_view text, ReadTime& time) const {
    switch (form_) {
        case TimeForm::Iso:
            return ReadIsoTime(text, time);
        case TimeForm::DayFirst:
        case TimeForm::MonthFirst:
        case TimeForm::Compact:
            return ReadDated(form_, text, time);
        case TimeForm::EpochSeconds:
            return ReadEpoch(text, decimalSign_, 1.0, time);
        case TimeForm::EpochMilliseconds:
            return ReadEpoch(text, decimalSign_, 1e3, time);
        case TimeForm::EpochMicroseconds:
            return ReadEpoch(text, decimalSign_, 1e6, time);
        case TimeForm::Custom:
            return pattern_.Read(text, time);
        case TimeForm::Fields:
        case TimeForm::None:
            break;
    }
    return false;
}

bool TimeReader::ReadParts(const std::vector<std::string>& cells, ReadTime& time) const {
    if (form_ == TimeForm::Custom) {
        std::string joined;
        for (const auto& cell : cells) joined.append(joined.empty() ? "" : " ").append(cell);
        return pattern_.Read(joined, time);
    }
    Composed composed;
    for (std::size_t i = 0; i < cells.size() && i < parts_.size(); ++i)
        if (!composed.Add(parts_[i].role, form_, cells[i], decimalSign_)) return false;
    return composed.Sum(time);
}

std::string IsoText(Microseconds time, bool zone) {
    const date::sys_time<std::chrono::microseconds> at{std::chrono::microseconds{time}};
    std::string text = date::format("%FT%T", at);
    const auto dot = text.find('.');
    if (dot != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.size() == dot + 1) text.pop_back();
    }
    return zone ? text + "Z" : text;
}

namespace {

struct DurationUnit {
    const char* name;
    double seconds;
};
constexpr DurationUnit kUnits[] = {{"d", 86400}, {"h", 3600}, {"min", 60}, {"s", 1}};

}  // namespace

std::string DurationText(double seconds) {
    std::string text = seconds < 0 ? "-" : "";
    double rest = std::fabs(seconds);
    const double fraction = rest - std::floor(rest);
    if (rest < 60 || (fraction != 0 && rest < 3600)) return text + ShortNumber(rest) + " s";
    const char* between = "";
    for (const auto& unit : kUnits) {
        const double whole = unit.seconds == 1 ? rest : std::floor(rest / unit.seconds);
        if (whole <= 0) continue;
        text.append(between).append(ShortNumber(whole)).append(" ").append(unit.name);
        rest -= whole * unit.seconds;
        between = " ";
    }
    return text;
}

std::optional<double> ReadDuration(std::string_view text) {
    double factor = 1;
    for (const auto& unit : kUnits) {
        const std::string_view name = unit.name;
        if (text.size() <= name.size() || text.substr(text.size() - name.size()) != name) continue;
        factor = unit.seconds;
        text.remove_suffix(name.size());
        break;
    }
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    double value = 0;
    if (!ReadNumber(text, '.', value)) return std::nullopt;
    return value * factor;
}

}  // namespace app
