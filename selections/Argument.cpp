// The arguments of rules, from their text.
#include <charconv>
#include <cmath>
#include <limits>

#include "selections/Term.h"
#include "sources/PointFlagNames.h"

namespace selections {

namespace {

struct TimeUnitName {
    std::string_view name;
    double seconds;
};
constexpr TimeUnitName kTimeUnits[] = {{"ms", 0.001}, {"s", 1}, {"min", 60}, {"h", 3600}, {"d", 86400}};

struct CodeName {
    std::string_view name;
    int code;
};
constexpr CodeName kCodes[] = {{"spike", REJECT_SPIKE}, {"moved", REJECT_MOVED}};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The finite number that `text` begins with; what follows it remains in `text`.
bool TakeNumber(std::string_view& text, double& number) {
    std::string_view digits = text;
    if (digits.starts_with('+')) digits.remove_prefix(1);
    const auto unsignedDigits =
        digits.starts_with('-') && digits.size() == text.size() ? digits.substr(1) : digits;
    if (unsignedDigits.empty() || !(IsDigit(unsignedDigits[0]) || unsignedDigits[0] == '.')) return false;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || !std::isfinite(number)) return false;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return true;
}

bool ReadUnit(std::string_view text, Argument& argument) {
    for (const auto& unit : kTimeUnits) {
        if (text != unit.name) continue;
        argument.secondsPerUnit = unit.seconds;
        return true;
    }
    return text.empty();
}

void TrimBlanks(std::string_view& text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
}

bool ReadLength(std::string_view text, Argument& argument) {
    if (!TakeNumber(text, argument.number) || !(argument.number > 0)) return false;
    TrimBlanks(text);
    return ReadUnit(text, argument);
}

bool ReadRate(std::string_view text, Argument& argument) {
    if (!TakeNumber(text, argument.number) || argument.number < 0) return false;
    TrimBlanks(text);
    if (text.empty()) return true;
    if (text.front() != '/') return false;
    text.remove_prefix(1);
    TrimBlanks(text);
    return ReadUnit(text, argument) && argument.secondsPerUnit > 0;
}

bool ReadCount(std::string_view text, Argument& argument) {
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return TakeNumber(text, argument.number) && text.empty() && argument.number >= 1 &&
           argument.number <= kMost && argument.number == std::floor(argument.number);
}

bool ReadCode(std::string_view text, Argument& argument) {
    for (const auto& row : kCodes)
        if (text == row.name) argument.number = row.code;
    if (argument.number != 0) return true;
    const bool hex = text.starts_with("0x");
    if (hex) text.remove_prefix(2);
    unsigned code = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), code, hex ? 16 : 10);
    argument.number = code;
    return read.ec == std::errc() && read.ptr == text.data() + text.size() && code != 0;
}

bool ReadBound(std::string_view text, TimeFromText readTime, Argument& argument) {
    argument.isOpen = text.empty();
    if (argument.isOpen) return true;
    std::string_view rest = text;
    if (TakeNumber(rest, argument.number) && rest.empty()) return true;
    argument.time = readTime ? readTime(text) : std::nullopt;
    return argument.time.has_value();
}

bool ReadPlainNumber(std::string_view text, Argument& argument) {
    return TakeNumber(text, argument.number) && text.empty();
}

}  // namespace

bool ReadArgument(ParameterKind kind, std::string_view text, TimeFromText readTime, Argument& argument) {
    TrimBlanks(text);
    argument = {};
    argument.text = text;
    switch (kind) {
        case ParameterKind::Low:
        case ParameterKind::High:
        case ParameterKind::YBound:
            argument.isOpen = text.empty();
            return argument.isOpen || ReadPlainNumber(text, argument);
        case ParameterKind::XBound:
            return ReadBound(text, readTime, argument);
        case ParameterKind::Threshold:
            return ReadPlainNumber(text, argument) && argument.number >= 0;
        case ParameterKind::Factor:
            return ReadPlainNumber(text, argument) && argument.number > 0;
        case ParameterKind::Rate:
            return ReadRate(text, argument);
        case ParameterKind::Length:
            return ReadLength(text, argument);
        case ParameterKind::LengthOrCount:
            return ReadCount(text, argument) || (ReadLength(text, argument) && argument.secondsPerUnit > 0);
        case ParameterKind::Count:
            return ReadCount(text, argument);
        case ParameterKind::Flag:
            argument.number = PointFlagNamed(text);
            return argument.number != 0;
        case ParameterKind::Code:
            return ReadCode(text, argument);
        case ParameterKind::None:
            break;
    }
    return false;
}

const char* ExpectedArgument(ParameterKind kind) {
    switch (kind) {
        case ParameterKind::Low:
        case ParameterKind::High:
            return "a limit in units of y, or nothing";
        case ParameterKind::XBound:
        case ParameterKind::YBound:
            return "FROM:TO, numbers or times, of which one may be left out";
        case ParameterKind::Threshold:
            return "a number in units of y that is not negative";
        case ParameterKind::Factor:
            return "a number above 0";
        case ParameterKind::Rate:
            return "a rate that is not negative, such as 0.5/h (units of y by s, min, h, d or unit of x)";
        case ParameterKind::Length:
            return "a length above 0, such as 3h (ms, s, min, h, d, or a number in units of x)";
        case ParameterKind::LengthOrCount:
            return "a number of points such as 2, or a length with a unit of time such as 1h";
        case ParameterKind::Count:
            return "a whole number of points above 0";
        case ParameterKind::Flag:
            return "deleted, rejected, spike, moved, smoothed, interpolated or edited";
        case ParameterKind::Code:
            return "spike, moved, or a rejection code other than 0";
        case ParameterKind::None:
            break;
    }
    return "nothing";
}

}  // namespace selections
