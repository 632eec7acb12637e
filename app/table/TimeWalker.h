// Walks the characters of a time and adds up what it says.
#pragma once

#include <cstdint>
#include <string_view>

namespace app {

using Microseconds = std::int64_t;
constexpr Microseconds kSecond = 1000000;
constexpr Microseconds kDayLength = 86400 * kSecond;

// Every reading leaves the place where it was when it fails.
class TimeWalker {
  public:
    explicit TimeWalker(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    bool AtEnd() const { return at_ == end_; }
    char Peek(int ahead = 0) const { return end_ - at_ > ahead ? at_[ahead] : '\0'; }
    bool AtDigit() const { return static_cast<unsigned char>(Peek() - '0') <= 9; }
    bool Skip(char c) {
        if (Peek() != c || AtEnd()) return false;
        ++at_;
        return true;
    }
    bool SkipBlanks() {
        const char* const start = at_;
        while (Peek() == ' ' || Peek() == '\t') ++at_;
        return at_ != start;
    }
    // The word in letters of either case.
    bool SkipWord(std::string_view word) {
        if (static_cast<std::size_t>(end_ - at_) < word.size()) return false;
        for (std::size_t i = 0; i < word.size(); ++i)
            if ((at_[i] | 0x20) != (word[i] | 0x20)) return false;
        at_ += word.size();
        return true;
    }
    // `least` to `most` digits, as many as there are.
    bool Digits(int least, int most, int& value) {
        int sum = 0;
        int count = 0;
        for (; count < most && at_ + count != end_; ++count) {
            const unsigned digit = static_cast<unsigned char>(at_[count]) - unsigned{'0'};
            if (digit > 9) break;
            sum = sum * 10 + static_cast<int>(digit);
        }
        if (count < least) return false;
        at_ += count;
        value = sum;
        return true;
    }
    // One or more digits of a fraction of `unit`; `cut` when they say more than microseconds.
    bool Fraction(Microseconds unit, Microseconds& value, bool& cut) {
        const char* const start = at_;
        for (; AtDigit(); ++at_) {
            cut |= unit % 10 != 0 && *at_ != '0';
            unit /= 10;
            value += unit * (*at_ - '0');
        }
        return at_ != start;
    }
    // The letters here, those that are not of ASCII too.
    std::string_view Word() const;
    void SkipLetters();
    // The name of a month, whole or cut off.
    bool Month(int& month);
    // The name of a weekday, whole or cut off.
    bool Weekday();
    // Letters that name one zone, UTC+HH, or an offset +HH, +HHMM, +HH:MM; it is taken from `at`.
    bool Zone(Microseconds& at);

  private:
    bool Offset(Microseconds& at);

    const char* at_;
    const char* end_;
};

// Days since 1970-01-01; false when there is no such day. Years are 0 to 9999.
bool DaysOf(int year, int month, int day, std::int64_t& days);
bool DaysOfYearDay(int year, int dayOfYear, std::int64_t& days);
// 70 to 99 are of the twentieth century, 0 to 69 of the next.
constexpr int FullYear(int twoDigits) { return twoDigits + (twoDigits < 70 ? 2000 : 1900); }
// The length of a part of a day; false for one that no clock shows. 24:00:00 is the end of the day; a 60th
// second is a leap second and falls on the next minute.
bool ClockLength(int hour, int minute, int second, Microseconds fraction, Microseconds& length);
// A date and a clock in the parts that they are written in.
struct CivilTime {
    int year = 0;
    int month = 1;
    int day = 1;
    int dayOfYear = -1;  // in place of month and day; negative: not given
    int hour = 0;
    int minute = 0;
    int second = 0;
    Microseconds fraction = 0;

    // The start of the day; false when there is no such day.
    bool Days(Microseconds& at) const;
    bool Clock(Microseconds& length) const { return ClockLength(hour, minute, second, fraction, length); }
};
// Turns the hour of a clock of twice twelve hours into one of 24; hours above 12 stay as they are.
constexpr int HourOfTwelve(int hour, bool afternoon) {
    return hour > 12 ? hour : hour % 12 + (afternoon ? 12 : 0);
}

}  // namespace app
