#include "app/table/ColumnChoice.h"

#include <algorithm>

#include "app/table/ComposedTimes.h"
#include "app/table/QartodFlag.h"
#include "app/table/TimeColumns.h"
#include "app/table/ZoneNames.h"

namespace app {

namespace {

bool HasValues(const Column& column) {
    return column.kind == ColumnKind::Number || column.kind == ColumnKind::Time;
}

std::string Named(const Column& column) { return "column \"" + column.name + "\""; }

const Column& At(const Layout& layout, int field) { return layout.columns[static_cast<std::size_t>(field)]; }

// Epoch times may stand in any column of numbers: nothing but the name of the form tells.
Column AsTimeForm(Column column, const std::string& timeFormat) {
    const auto* const named = FindTimeForm(timeFormat);
    if (!named || !IsEpoch(named->form) || column.kind != ColumnKind::Number) return column;
    column.timeForm = named->form;
    column.kind = ColumnKind::Time;
    return column;
}

std::string Quoted(const Column& column) { return "\"" + column.example + "\""; }

Failure HoldsNot(const Column& column, const std::string& what, const std::string& advice) {
    const std::string cell = column.example.empty() ? ": its cells are empty" : ": " + Quoted(column);
    return Refusal(Named(column) + " holds " + what + cell, advice).In(column.exampleLine);
}

// With several columns to choose from, the user says which are meant to be edited.
Failure AskWhichColumns(const Choice& choice) {
    std::string names;
    for (const auto& column : choice.columns) names += (names.empty() ? "\"" : ", \"") + column.name + "\"";
    return UsageError("which columns are to be cleaned? There are " + names, "name them with -y");
}

// Text that may be a time in a form that is not known: three groups of digits, a year of our times, digits
// under a telling name, or others in other rows.
bool LooksLikeTime(const Column& column) {
    if (column.kind != ColumnKind::Text) return false;
    if (column.role == TimeRole::Clock || column.mayBeTime) return true;
    const std::string& text = column.example;
    int groups = 0;
    bool year = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = std::min(text.find_first_of("0123456789", at), text.size());
        at = std::min(text.find_first_not_of("0123456789", begin), text.size());
        groups += at > begin;
        const auto century = text.substr(begin, 2);
        year |= at - begin == 4 && (century == "19" || century == "20");
    }
    const bool separated = text.find_first_of("-/.:") != std::string::npos;
    return year || (groups >= 3 && separated) || (groups >= 1 && SoundsLikeTime(column.name));
}

// The last letters of a time, which may name its zone.
std::string_view LastLetters(std::string_view time) {
    const auto begin = time.find_last_of("0123456789 :.");
    return begin == std::string_view::npos ? time : time.substr(begin + 1);
}

Failure UnknownTimes(const Column& column) {
    if (column.role == TimeRole::Clock)
        return Refusal(Named(column) + " holds times of the day (" + Quoted(column) + ") without a date",
                       "join it with the column of the date: --time-column DATE+TIME, or name another column "
                       "with -x")
            .In(column.exampleLine);
    const std::string zone(LastLetters(column.example));
    if (const char* const readings = ZoneReadings(zone))
        return Refusal(
                   Quoted(column) + " in " + Named(column) + ": " + zone + " is " + readings,
                   "say which with --zone, as in America/Chicago, and give --time-format a form that ends "
                   "in %Z, as in \"%Y-%m-%d %H:%M:%S %Z\"")
            .In(column.exampleLine);
    return Refusal(
               Named(column) + " looks like times, but " + Quoted(column) + " is in no form that is known",
               "say the form with --time-format, as in \"%d.%m.%Y %H:%M\", or name another column with -x")
        .In(column.exampleLine);
}

Failure OpenDayOrder(const Column& column) {
    std::string day;
    std::string month;
    ReadTime time;
    const auto text = column.example.substr(0, column.example.find_first_of(" T"));
    if (ReadTimeOf(TimeForm::DayFirst, text, time)) day = IsoText(time.at, false).substr(0, 10);
    if (ReadTimeOf(TimeForm::MonthFirst, text, time)) month = IsoText(time.at, false).substr(0, 10);
    return Refusal(Quoted(column) + " in " + Named(column) + " is " + day + " with the day first, or " +
                       month + " with the month first, and every row fits both",
                   "say which with --time-format dmy or --time-format mdy")
        .In(column.exampleLine);
}

// Numbers that are flags of another column.
bool IsFlagColumn(const Layout& layout, const Column& column) {
    return std::any_of(layout.columns.begin(), layout.columns.end(), [&](const Column& other) {
        return other.kind == ColumnKind::Number && QartodColumnName(other) == column.name;
    });
}

// The columns named as "A+B".
Result<Column> NamedComposition(const Layout& layout, const std::string& names) {
    constexpr TimeRole kFollowing[] = {TimeRole::Year, TimeRole::Month,  TimeRole::Day,
                                       TimeRole::Hour, TimeRole::Minute, TimeRole::Second};
    std::vector<TimePart> parts;
    std::vector<TimeRole> roles;
    for (std::size_t at = 0; at <= names.size();) {
        const std::size_t end = std::min(names.find('+', at), names.size());
        const auto found = FindColumn(layout, names.substr(at, end - at));
        if (!found) return found.Error();
        at = end + 1;
        const Column& column = At(layout, *found);
        TimeRole role = TimeRole::Date;
        if (column.role == TimeRole::Clock) {
            role = TimeRole::Clock;
        } else if (column.kind == ColumnKind::Number) {
            const auto named = RoleByName(column.name, roles);
            const auto date = std::find(roles.begin(), roles.end(), TimeRole::Date);
            role = named                 ? *named
                   : date != roles.end() ? TimeRole::HourMinute
                                         : kFollowing[std::min<std::size_t>(roles.size(), 5)];
        } else if (column.kind == ColumnKind::Text && layout.customTime.empty()) {
            return UnknownTimes(column);
        }
        roles.push_back(role);
        parts.push_back({*found, role});
    }
    Column composed = Compose(layout, parts);
    if (!layout.customTime.empty()) composed.timeForm = TimeForm::Custom;
    return composed;
}

Result<Column> NamedX(const Layout& layout, const ReadOptions& options) {
    const auto found = FindColumn(layout, options.x);
    if (!found && options.x.find('+') != std::string::npos) return NamedComposition(layout, options.x);
    if (!found) return found.Error();
    return At(layout, *found);
}

// The first time, composed or of one column; else the first numbers, unless a column before them may be a
// time that was not understood.
Result<Column> GuessedX(const Layout& layout) {
    if (layout.composed) return *layout.composed;
    const auto& columns = layout.columns;
    const auto time = std::find_if(columns.begin(), columns.end(),
                                   [](const auto& column) { return column.kind == ColumnKind::Time; });
    if (time != columns.end()) return *time;
    const auto first = std::find_if(columns.begin(), columns.end(), HasValues);
    const auto unknown = std::find_if(columns.begin(), first, LooksLikeTime);
    if (unknown != first) return UnknownTimes(*unknown);
    if (first == columns.end()) return Refusal("there is no column of times or numbers");
    return *first;
}

}  // namespace

bool IsPartOf(const Column& column, const Column& x) {
    return column.field == x.field || std::any_of(x.parts.begin(), x.parts.end(), [&](const TimePart& part) {
               return part.field == column.field;
           });
}

Result<Choice> ChooseColumns(const Layout& layout, const ReadOptions& options) {
    const auto& y = options.y;
    const auto x = options.x.empty() ? GuessedX(layout) : NamedX(layout, options);
    if (!x) return x.Error();
    Choice choice{AsTimeForm(*x, options.timeFormat), {}};
    if (LooksLikeTime(choice.x)) return UnknownTimes(choice.x);
    if (!HasValues(choice.x)) return HoldsNot(choice.x, "neither times nor numbers", "name another with -x");
    if (choice.x.dayOrderOpen && options.timeFormat.empty()) return OpenDayOrder(choice.x);
    for (const auto& name : y) {
        const auto found = FindColumn(layout, name);
        if (!found) return found.Error();
        const Column& column = At(layout, *found);
        if (IsPartOf(column, choice.x)) return UsageError(Named(column) + " cannot be both x and y");
        if (column.kind != ColumnKind::Number) return HoldsNot(column, "no numbers", {});
        const auto same = [&](const Column& other) { return other.field == column.field; };
        if (std::none_of(choice.columns.begin(), choice.columns.end(), same))
            choice.columns.push_back(column);
    }
    if (y.empty())
        for (const auto& column : layout.columns)
            if (column.kind == ColumnKind::Number && !IsPartOf(column, choice.x) &&
                !IsFlagColumn(layout, column))
                choice.columns.push_back(column);
    if (choice.columns.empty())
        return Refusal("beside " + Named(choice.x) + " there is no column of numbers");
    if (options.chooseY && y.empty() && choice.columns.size() > 1) return AskWhichColumns(choice);
    return choice;
}

}  // namespace app
