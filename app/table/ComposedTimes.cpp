#include "app/table/ComposedTimes.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "app/table/ColumnCells.h"

namespace app {

namespace {

// Dates without a clock, which another column may hold.
bool HoldsDates(const Column& column, const Trial& trial) {
    if (column.kind != ColumnKind::Time || IsEpoch(column.timeForm) || column.timeForm == TimeForm::Custom)
        return false;
    const auto cells = CellsOf(trial, column.field);
    return std::all_of(cells.begin(), cells.end(), [&](const auto& cell) {
        ReadTime time;
        return !ReadTimeOf(column.timeForm, cell, time) ||
               (time.at % kDayLength == 0 && cell.find(':') == std::string::npos);
    });
}

bool HoldsHourMinutes(const Column& column, const Trial& trial) {
    if (column.kind != ColumnKind::Number) return false;
    const auto role = RoleByName(column.name, {TimeRole::Date});
    if (role != TimeRole::HourMinute && role != TimeRole::Hour) return false;
    const auto cells = CellsOf(trial, column.field);
    return std::all_of(cells.begin(), cells.end(), [&](const auto& cell) {
        const Extent one = ExtentOf({cell}, trial.decimalSign);
        return one.whole && one.allNumbers && one.Within(0, 240000) && std::fmod(one.most, 100) < 60;
    });
}

struct RoleNames {
    TimeRole role;
    double least;
    double most;
    std::initializer_list<const char*> names;
};
const RoleNames kRoles[] = {
    {TimeRole::Year, kFirstYear, kLastYear, {"year", "yyyy", "yr", "yy", "jahr"}},
    {TimeRole::Month, 1, 12, {"month", "mo", "mon", "mm", "monat", "mnth"}},
    {TimeRole::Day, 1, 32, {"day", "dd", "dy", "tag", "dom", "mday"}},
    {TimeRole::DayOfYear,
     1,
     367,
     {"doy", "dayofyear", "jday", "julian", "julianday", "yday", "yearday", "ddd"}},
    {TimeRole::Hour, 0, 24, {"hour", "hh", "hr", "hours", "stunde"}},
    {TimeRole::HourMinute, 0, 240000, {"hhmm", "hrmn", "hourminute", "hhmmss", "time"}},
    {TimeRole::Minute, 0, 60, {"minute", "min", "mn", "mi", "mm", "minutes"}},
    {TimeRole::Second, 0, 61, {"second", "ss", "sec", "seconds"}}};

const RoleNames& RowOf(TimeRole role) {
    return *std::find_if(std::begin(kRoles), std::end(kRoles),
                         [&](const auto& row) { return row.role == role; });
}

bool Contains(const std::vector<TimeRole>& roles, TimeRole role) {
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

// Whether the cells can be this part of a time; years may have two digits where a name says what they are.
bool FitsRole(TimeRole role, const Column& column, const Trial& trial, bool named) {
    const auto cells = CellsOf(trial, column.field);
    const Extent extent = ExtentOf(cells, trial.decimalSign);
    const RoleNames& row = RowOf(role);
    if (!extent.allNumbers || extent.least > extent.most) return false;
    if (role == TimeRole::Year || role == TimeRole::Month)
        return extent.whole && (extent.Within(row.least, row.most) ||
                                (role == TimeRole::Year && named && extent.Within(0, 99)));
    return extent.least >= row.least && extent.most < row.most + (extent.whole ? 1 : 0) &&
           (named || extent.whole);
}

std::vector<TimeRole> RolesOf(const std::vector<TimePart>& parts) {
    std::vector<TimeRole> roles;
    for (const auto& part : parts) roles.push_back(part.role);
    return roles;
}

// The times that these columns compose; empty where a row composes none.
std::vector<Microseconds> TimesOf(const std::vector<TimePart>& parts, const Trial& trial) {
    const TimeReader reader(TimeForm::Fields, "", trial.decimalSign, parts);
    std::vector<Microseconds> times;
    for (std::size_t r = trial.data; r < trial.sample.size(); ++r) {
        if (trial.sample[r].cells.size() < trial.fields) continue;
        std::vector<std::string> cells;
        for (const auto& part : parts)
            cells.emplace_back(trial.Cell(r, static_cast<std::size_t>(part.field)));
        ReadTime time;
        if (!reader.ReadParts(cells, time)) return {};
        times.push_back(time.at);
    }
    return times;
}

// Neighbouring columns whose names say that they are parts of a time.
std::vector<TimePart> NamedParts(const Layout& layout, const Trial& trial) {
    std::vector<TimePart> parts;
    for (const auto& column : layout.columns) {
        const bool clock = column.role == TimeRole::Clock;
        auto role = clock                               ? column.role
                    : column.kind == ColumnKind::Number ? RoleByName(column.name, RolesOf(parts))
                                                        : std::nullopt;
        const bool begins = role == TimeRole::Year || role == TimeRole::Month || role == TimeRole::Day;
        if (role && (!parts.empty() || begins) && (clock || FitsRole(*role, column, trial, true)))
            parts.push_back({column.field, *role});
        else if (!parts.empty())
            break;
    }
    while (parts.size() > 1 && TimesOf(parts, trial).empty()) parts.pop_back();
    const auto roles = RolesOf(parts);
    const bool day = Contains(roles, TimeRole::Month) || Contains(roles, TimeRole::DayOfYear);
    return Contains(roles, TimeRole::Year) && day ? parts : std::vector<TimePart>();
}

// In a table without names: a year and what follows it, as many columns as make the times ascend evenly.
std::vector<TimePart> UnnamedParts(const Layout& layout, const Trial& trial) {
    constexpr TimeRole kOrders[][6] = {
        {TimeRole::Year, TimeRole::Month, TimeRole::Day, TimeRole::Hour, TimeRole::Minute, TimeRole::Second},
        {TimeRole::Year, TimeRole::DayOfYear, TimeRole::Hour, TimeRole::Minute, TimeRole::Second,
         TimeRole::Second}};
    constexpr std::size_t kLeast[] = {2, 2};
    constexpr std::size_t kMost[] = {6, 5};
    std::vector<TimePart> best;
    std::size_t bestRepeats = 0;
    std::int64_t bestIrregular = 0;
    for (const int order : {0, 1}) {
        std::vector<TimePart> parts;
        // Small numbers behind a year are months.
        if (order == 1 && layout.columns.size() > 1 &&
            ExtentOf(CellsOf(trial, 1), trial.decimalSign).most <= 12)
            continue;
        // One column at least is left for values.
        for (std::size_t i = 0; i < kMost[order] && i + 1 < layout.columns.size(); ++i) {
            const TimeRole role = kOrders[order][i];
            if (layout.columns[i].kind != ColumnKind::Number ||
                !FitsRole(role, layout.columns[i], trial, false))
                break;
            parts.push_back({static_cast<int>(i), role});
            if (parts.size() < kLeast[order]) continue;
            const auto times = TimesOf(parts, trial);
            if (times.size() < 3 || !std::is_sorted(times.begin(), times.end())) continue;
            const std::int64_t irregular = IrregularSteps(times);
            if (2 * irregular > static_cast<std::int64_t>(times.size())) continue;
            std::size_t repeats = 0;
            for (std::size_t t = 1; t < times.size(); ++t) repeats += times[t] == times[t - 1];
            if (!best.empty() && std::tie(repeats, irregular) >= std::tie(bestRepeats, bestIrregular))
                continue;
            best = parts;
            bestRepeats = repeats;
            bestIrregular = irregular;
        }
    }
    return bestRepeats == 0 ? best : std::vector<TimePart>();
}

// A column of dates and the clock in one beside it.
std::vector<TimePart> DateAndClock(const Layout& layout, const Trial& trial) {
    for (const auto& date : layout.columns) {
        if (!HoldsDates(date, trial)) continue;
        for (const int other : {date.field + 1, date.field - 1}) {
            if (other < 0 || static_cast<std::size_t>(other) >= layout.columns.size()) continue;
            const Column& clock = layout.columns[static_cast<std::size_t>(other)];
            if (clock.role == TimeRole::Clock)
                return {{date.field, TimeRole::Date}, {other, TimeRole::Clock}};
            if (HoldsHourMinutes(clock, trial))
                return {{date.field, TimeRole::Date}, {other, *RoleByName(clock.name, {TimeRole::Date})}};
        }
        return {};
    }
    return {};
}

}  // namespace

std::optional<TimeRole> RoleByName(const std::string& name, const std::vector<TimeRole>& before) {
    std::string plain = name;
    std::transform(plain.begin(), plain.end(), plain.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    std::erase_if(plain, [](char c) { return c == '_' || c == ' ' || c == '#' || c == '-'; });
    for (const auto& row : kRoles) {
        const bool called =
            std::any_of(row.names.begin(), row.names.end(), [&](const char* one) { return plain == one; });
        // Minutes follow an hour: "min" may be a least value, "mm" the month or rain.
        const bool minute = row.role == TimeRole::Minute && !Contains(before, TimeRole::Hour);
        if (called && !minute && !Contains(before, row.role)) return row.role;
    }
    return std::nullopt;
}

Column Compose(const Layout& layout, const std::vector<TimePart>& parts) {
    Column composed;
    composed.field = parts.front().field;
    composed.kind = ColumnKind::Time;
    composed.timeForm = TimeForm::Fields;
    composed.parts = parts;
    for (const auto& part : parts) {
        const Column& column = layout.columns[static_cast<std::size_t>(part.field)];
        composed.name += (composed.name.empty() ? "" : " + ") + column.name;
        composed.example += (composed.example.empty() ? "" : " ") + column.example;
        composed.exampleLine = std::max(composed.exampleLine, column.exampleLine);
        if (part.role != TimeRole::Date) continue;
        composed.timeForm = column.timeForm;
        composed.dayOrderOpen = column.dayOrderOpen;
    }
    return composed;
}

std::vector<TimePart> FindParts(const Layout& layout, const Trial& trial) {
    auto parts = NamedParts(layout, trial);
    if (parts.empty()) parts = DateAndClock(layout, trial);
    if (parts.empty() && !layout.hasHeader) parts = UnnamedParts(layout, trial);
    return parts;
}

}  // namespace app
