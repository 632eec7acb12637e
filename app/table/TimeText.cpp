#include "app/table/TimeText.h"

#include <date/date.h>

#include <cmath>

#include "app/table/CellNumber.h"
#include "app/table/TimeParts.h"

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

// Whether a number comes behind the word here, as it does behind names in dates. Looking names up takes some
// megabytes, which tables without such names need not spend.
bool IsWordBeforeNumber(const TimeWalker& walker) {
    auto at = static_cast<int>(walker.Word().size());
    const auto skipSigns = [&] {
        while (IsDateSign(walker.Peek(at)) || walker.Peek(at) == ',') ++at;
    };
    skipSigns();
    if (walker.Peek(at) == 'd' && walker.Peek(at + 1) == 'e') at += 2;
    skipSigns();
    return at > 0 && walker.Peek(at) >= '0' && walker.Peek(at) <= '9';
}

// A month and what stands behind it; a name may be cut off with a point, or have "de" on either side.
bool ReadMonth(TimeWalker& walker, char& sign, int& month) {
    if (walker.Digits(1, 2, month)) return SkipBetween(walker, sign);
    walker.SkipWord("de ");
    if (!IsWordBeforeNumber(walker) || !walker.Month(month)) return false;
    bool any = false;
    while (IsDateSign(walker.Peek()) || walker.Peek() == ',') any = walker.Skip(walker.Peek());
    walker.SkipWord("de ");
    return any;
}

bool ReadYear(TimeWalker& walker, int& year) {
    if (walker.Digits(4, 4, year)) return true;
    if (!walker.Digits(2, 2, year)) return false;
    year = FullYear(year);
    return true;
}

bool ReadYearFirst(TimeWalker& walker, Microseconds& at) {
    CivilTime civil;
    char sign = 0;
    if (!walker.Digits(4, 4, civil.year) || !SkipBetween(walker, sign) || sign == ' ') return false;
    if (sign == '-' && walker.Digits(3, 3, civil.dayOfYear)) return civil.Days(at);
    return ReadMonth(walker, sign, civil.month) && walker.Digits(1, 2, civil.day) && civil.Days(at);
}

// A weekday says nothing more. Before a month's name it could be one itself ("mar").
void SkipWeekday(TimeWalker& walker) {
    if (!IsWordBeforeNumber(walker) || !walker.Weekday()) return;
    walker.Skip(',');
    walker.SkipBlanks();
}

bool ReadYearLast(TimeWalker& walker, bool monthFirst, Microseconds& at) {
    CivilTime civil;
    char sign = 0;
    if (!monthFirst) SkipWeekday(walker);
    const bool day = monthFirst ? ReadMonth(walker, sign, civil.month) && walker.Digits(1, 2, civil.day) &&
                                      SkipBetween(walker, sign)
                                : walker.Digits(1, 2, civil.day) && SkipBetween(walker, sign) &&
                                      ReadMonth(walker, sign, civil.month);
    return day && ReadYear(walker, civil.year) && civil.Days(at);
}

bool ReadClock(TimeWalker& walker, ReadTime& time) {
    CivilTime civil;
    if (!walker.Digits(1, 2, civil.hour) || !walker.Skip(':') || !walker.Digits(2, 2, civil.minute))
        return false;
    if (walker.Skip(':')) {
        if (!walker.Digits(2, 2, civil.second)) return false;
        if ((walker.Skip('.') || walker.Skip(',')) && !walker.Fraction(kSecond, civil.fraction, time.cut))
            return false;
    }
    walker.SkipBlanks();
    const bool afternoon = walker.SkipWord("PM") || walker.SkipWord("P.M.");
    if (afternoon || walker.SkipWord("AM") || walker.SkipWord("A.M.")) {
        if (civil.hour < 1 || civil.hour > 12) return false;
        civil.hour = HourOfTwelve(civil.hour, afternoon);
    }
    walker.SkipWord("Uhr");
    Microseconds length = 0;
    if (!civil.Clock(length)) return false;
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
    CivilTime civil;
    if (!walker.Digits(4, 4, civil.year) || !walker.Digits(2, 2, civil.month) ||
        !walker.Digits(2, 2, civil.day) || !civil.Days(time.at))
        return false;
    if (walker.AtEnd()) return true;
    if (!walker.Skip('T') && !walker.Skip('t') && !walker.Skip('_')) walker.SkipBlanks();
    if (walker.Peek(1) == ':' || walker.Peek(2) == ':')
        return ReadClock(walker, time) && ReadZone(walker, time);
    if (!walker.Digits(2, 2, civil.hour)) return false;
    if (walker.Digits(2, 2, civil.minute) && walker.Digits(2, 2, civil.second) && walker.Skip('.'))
        walker.Fraction(kSecond, civil.fraction, time.cut);
    Microseconds length = 0;
    if (!civil.Clock(length)) return false;
    time.at += length;
    return ReadZone(walker, time);
}

bool ReadDated(TimeForm form, std::string_view text, ReadTime& time) {
    TimeWalker walker(text);
    ReadTime read;
    if (form == TimeForm::Compact) {
        if (!ReadCompact(walker, read)) return false;
        time = read;
        return true;
    }
    if (form == TimeForm::Iso ? !ReadYearFirst(walker, read.at)
                              : !ReadYearLast(walker, form == TimeForm::MonthFirst, read.at))
        return false;
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
        return pattern ? std::nullopt : std::optional(pattern.Error());
    }
    std::string names;
    for (const auto& form : kTimeFormNames) names += std::string(form.name) + ", ";
    return UsageError("there is no form of times \"" + format + "\"",
                      "--time-format takes " + names + "or a form with % fields");
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
    return ReadTimeParts(form_, decimalSign_, parts_, cells, time);
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

}  // namespace app
