#include "app/table/TimeText.h"

#include <date/date.h>

#include <cmath>
#include <sstream>

#include "app/table/CellNumber.h"

namespace app {

namespace {

// Walks the characters of a time; every reading leaves the place where it was when it fails.
class Walker {
  public:
    explicit Walker(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    bool AtEnd() const { return at_ == end_; }
    char Peek() const { return AtEnd() ? '\0' : *at_; }
    bool Skip(char c) {
        if (Peek() != c) return false;
        ++at_;
        return true;
    }
    // Exactly `count` digits.
    bool Digits(int count, int& value) {
        if (end_ - at_ < count) return false;
        int sum = 0;
        for (int i = 0; i < count; ++i) {
            const unsigned digit = static_cast<unsigned char>(at_[i]) - '0';
            if (digit > 9) return false;
            sum = sum * 10 + static_cast<int>(digit);
        }
        at_ += count;
        value = sum;
        return true;
    }
    // One or more digits of a fraction of a second, in microseconds.
    bool Fraction(Microseconds& value, bool& cut) {
        Microseconds unit = kSecond / 10;
        const char* const start = at_;
        for (; !AtEnd() && *at_ >= '0' && *at_ <= '9'; ++at_, unit /= 10) {
            value += unit * (*at_ - '0');
            cut |= unit == 0 && *at_ != '0';
        }
        return at_ != start;
    }

  private:
    const char* at_;
    const char* end_;
};

bool ReadDate(Walker& walker, Microseconds& days) {
    int year = 0;
    int month = 0;
    int day = 0;
    if (!walker.Digits(4, year)) return false;
    const char between = walker.Peek();
    if (between != '-' && between != '/') return false;
    if (!walker.Skip(between) || !walker.Digits(2, month)) return false;
    if (!walker.Skip(between) || !walker.Digits(2, day)) return false;
    const date::year_month_day civil{date::year{year}, date::month{static_cast<unsigned>(month)},
                                     date::day{static_cast<unsigned>(day)}};
    if (!civil.ok()) return false;
    days = date::sys_days{civil}.time_since_epoch().count();
    return true;
}

// 24:00:00 is the end of the day; a 60th second is a leap second and falls on the next minute.
bool ReadClock(Walker& walker, ReadTime& time) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!walker.Digits(2, hour) || !walker.Skip(':') || !walker.Digits(2, minute)) return false;
    Microseconds fraction = 0;
    if (walker.Skip(':')) {
        if (!walker.Digits(2, second)) return false;
        if (walker.Skip('.') || walker.Skip(','))
            if (!walker.Fraction(fraction, time.cut)) return false;
    }
    if (minute > 59 || second > 60 || hour > 24) return false;
    if (hour == 24 && (minute || second || fraction)) return false;
    time.at += ((hour * 60 + minute) * Microseconds{60} + second) * kSecond + fraction;
    return true;
}

bool ReadZone(Walker& walker, ReadTime& time) {
    if (walker.AtEnd()) return true;
    time.hasZone = true;
    if (walker.Skip('Z') || walker.Skip('z')) return true;
    const bool west = walker.Skip('-');
    if (!west && !walker.Skip('+')) return false;
    int hours = 0;
    int minutes = 0;
    if (!walker.Digits(2, hours)) return false;
    if (walker.Skip(':') && walker.AtEnd()) return false;
    if (!walker.AtEnd() && !walker.Digits(2, minutes)) return false;
    if (hours > 23 || minutes > 59) return false;
    const Microseconds offset = (hours * 60 + minutes) * 60 * kSecond;
    time.at += west ? offset : -offset;
    return true;
}

constexpr double kLatestSecond = 253402300800.0;  // the start of the year 10000

bool ReadEpoch(std::string_view text, char decimalSign, double unitsPerSecond, ReadTime& time) {
    double value = 0;
    if (!ReadNumber(text, decimalSign, value)) return false;
    const double seconds = value / unitsPerSecond;
    if (!(std::fabs(seconds) < kLatestSecond)) return false;
    const double whole = std::floor(value * (kSecond / unitsPerSecond) + 0.5);
    time.at = static_cast<Microseconds>(whole);
    return true;
}

}  // namespace

bool ReadIsoTime(std::string_view text, ReadTime& time) {
    Walker walker(text);
    ReadTime read;
    Microseconds days = 0;
    if (!ReadDate(walker, days)) return false;
    read.at = days * 86400 * kSecond;
    if (!walker.AtEnd()) {
        if (!walker.Skip('T') && !walker.Skip(' ') && !walker.Skip('t')) return false;
        if (!ReadClock(walker, read)) return false;
        walker.Skip(' ');
        if (!ReadZone(walker, read) || !walker.AtEnd()) return false;
    }
    time = read;
    return true;
}

struct TimeReader::Scratch {
    std::istringstream stream;
};

TimeReader::TimeReader(TimeForm form, std::string customFormat, char decimalSign)
    : form_(form), customFormat_(std::move(customFormat)), decimalSign_(decimalSign) {
    if (form_ != TimeForm::Custom) return;
    scratch_ = std::make_unique<Scratch>();
    scratch_->stream.imbue(std::locale::classic());
}
TimeReader::~TimeReader() = default;
TimeReader::TimeReader(TimeReader&&) noexcept = default;
TimeReader& TimeReader::operator=(TimeReader&&) noexcept = default;

bool TimeReader::Read(std::string_view text, ReadTime& time) const {
    switch (form_) {
        case TimeForm::Iso:
            return ReadIsoTime(text, time);
        case TimeForm::EpochSeconds:
            return ReadEpoch(text, decimalSign_, 1.0, time);
        case TimeForm::EpochMilliseconds:
            return ReadEpoch(text, decimalSign_, 1000.0, time);
        case TimeForm::Custom:
            return ReadCustom(text, time);
        case TimeForm::None:
            break;
    }
    return false;
}

bool TimeReader::ReadCustom(std::string_view text, ReadTime& time) const {
    auto& stream = scratch_->stream;
    stream.clear();
    stream.str(std::string(text));
    date::sys_time<std::chrono::microseconds> at{};
    std::string zone;
    std::chrono::minutes offset{0};
    date::from_stream(stream, customFormat_.c_str(), at, &zone, &offset);
    if (stream.fail()) return false;
    stream >> std::ws;
    if (!stream.eof()) return false;
    time.at = at.time_since_epoch().count();
    time.hasZone = customFormat_.find("%z") != std::string::npos;
    return std::fabs(static_cast<double>(time.at) / kSecond) < kLatestSecond;
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
