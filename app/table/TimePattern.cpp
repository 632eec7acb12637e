#include "app/table/TimePattern.h"

namespace app {

namespace {

// Fields that stand for several.
struct Shorthand {
    char field;
    const char* pieces;
};
constexpr Shorthand kShorthands[] = {{'F', "%Y-%m-%d"}, {'D', "%m/%d/%y"}, {'T', "%H:%M:%S"},
                                     {'R', "%H:%M"},    {'n', " "},        {'t', " "}};
constexpr std::string_view kFields = "YymbBhdejHkIlMSfpzZaAs%";

std::string Spelled(const std::string& format) {
    std::string spelled;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char* pieces = nullptr;
        if (format[i] == '%' && i + 1 < format.size())
            for (const auto& shorthand : kShorthands)
                if (shorthand.field == format[i + 1]) pieces = shorthand.pieces;
        if (pieces)
            spelled += pieces;
        else
            spelled.append(format, i, format[i] == '%' ? 2 : 1);
        i += format[i] == '%';
    }
    return spelled;
}

}  // namespace

struct TimePattern::Parts : CivilTime {
    bool twelve = false;  // the hour is one of twelve
    bool marked = false;  // with AM or PM
    bool afternoon = false;
    Microseconds offset = 0;
    Microseconds epoch = 0;
    bool isEpoch = false;
    ReadTime time;
};

const char* TimePattern::FieldsText() {
    return "%Y %y %m %b %d %j %H %I %p %M %S (with its fraction) %f %z %Z %a %s, and %F %D %T %R for several";
}

Result<TimePattern> TimePattern::Compile(const std::string& format) {
    TimePattern pattern;
    std::string fields;
    const std::string spelled = Spelled(format);
    for (std::size_t i = 0; i < spelled.size(); ++i) {
        if (spelled[i] != '%') {
            pattern.pieces_.push_back({0, spelled[i]});
            continue;
        }
        const char field = i + 1 < spelled.size() ? spelled[++i] : '\0';
        if (field == '\0' || kFields.find(field) == std::string_view::npos)
            return UsageError(
                "\"" + format + "\": %" + (field ? std::string(1, field) : "") + " is no field of a time",
                std::string("the fields are ") + FieldsText());
        fields += field;
        pattern.pieces_.push_back(field == '%' ? Piece{0, '%'} : Piece{field, 0});
    }
    const auto has = [&](const char* any) { return fields.find_first_of(any) != std::string::npos; };
    if (!has("s") && !has("Yy"))
        return UsageError("\"" + format + "\" names no day: it needs a year, as in \"%d.%m.%Y %H:%M\"");
    return pattern;
}

bool TimePattern::ReadPiece(Piece piece, TimeWalker& walker, Parts& parts) {
    switch (piece.field) {
        case 0:
            if (piece.literal != ' ') return walker.Skip(piece.literal);
            walker.SkipBlanks();
            return true;
        case 'Y':
            return walker.Digits(1, 4, parts.year);
        case 'y':
            if (!walker.Digits(1, 2, parts.year)) return false;
            parts.year = FullYear(parts.year);
            return true;
        case 'm':
            return walker.Digits(1, 2, parts.month);
        case 'b':
        case 'B':
        case 'h':
            return walker.Month(parts.month);
        case 'd':
        case 'e':
            walker.SkipBlanks();
            return walker.Digits(1, 2, parts.day);
        case 'j':
            return walker.Digits(1, 3, parts.dayOfYear) && parts.dayOfYear > 0;
        case 'H':
        case 'k':
        case 'I':
        case 'l':
            parts.twelve |= piece.field == 'I' || piece.field == 'l';
            walker.SkipBlanks();
            return walker.Digits(1, 2, parts.hour);
        case 'p':
            parts.marked = true;
            parts.afternoon = walker.SkipWord("PM") || walker.SkipWord("P.M.");
            return parts.afternoon || walker.SkipWord("AM") || walker.SkipWord("A.M.");
        case 'M':
            return walker.Digits(1, 2, parts.minute);
        case 'S': {
            if (!walker.Digits(1, 2, parts.second)) return false;
            const bool fraction = walker.Peek() == '.' || walker.Peek() == ',';
            if (!fraction || static_cast<unsigned char>(walker.Peek(1) - '0') > 9) return true;
            walker.Skip(walker.Peek());
            return walker.Fraction(kSecond, parts.fraction, parts.time.cut);
        }
        case 'f':
            return walker.Fraction(kSecond, parts.fraction, parts.time.cut);
        case 'z':
            parts.time.hasZone = true;
            return walker.Zone(parts.offset);
        case 'Z':
            // Letters that name no one zone leave it to the option for the zone.
            parts.time.hasZone = walker.Zone(parts.offset);
            if (!parts.time.hasZone) walker.SkipLetters();
            return true;
        case 'a':
        case 'A':
            return walker.Weekday();
        case 's': {
            const bool negative = walker.Skip('-');
            int high = 0;
            int low = 0;
            if (!walker.Digits(1, 6, high)) return false;
            Microseconds seconds = high;
            for (; walker.AtDigit() && seconds < kSecond * 1000000; seconds = seconds * 10 + low)
                walker.Digits(1, 1, low);
            parts.epoch = (negative ? -seconds : seconds) * kSecond;
            parts.isEpoch = parts.time.hasZone = true;
            return !walker.AtDigit();
        }
        default:
            return false;
    }
}

bool TimePattern::Read(std::string_view text, ReadTime& time) const {
    TimeWalker walker(text);
    Parts parts;
    for (const Piece piece : pieces_)
        if (!ReadPiece(piece, walker, parts)) return false;
    walker.SkipBlanks();
    if (!walker.AtEnd()) return false;
    if (parts.twelve && parts.hour > 12) return false;
    if (parts.marked) parts.hour = HourOfTwelve(parts.hour, parts.afternoon);
    Microseconds day = 0;
    Microseconds clock = 0;
    if ((!parts.isEpoch && !parts.Days(day)) || !parts.Clock(clock)) return false;
    parts.time.at = day + parts.epoch + clock + parts.offset;
    time = parts.time;
    return true;
}

}  // namespace app
