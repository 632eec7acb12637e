#include "app/table/TimeColumns.h"

#include <algorithm>

#include "app/table/ColumnCells.h"
#include "app/table/ComposedTimes.h"

namespace app {

namespace {

constexpr double kEarliest = 473385600;  // 1985, in seconds since 1970
constexpr double kLatest = 4102444800;   // 2100

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

// Numbers between 1985 and 2100, when read as seconds, milliseconds or microseconds since 1970.
TimeForm EpochForm(const Extent& extent) {
    if (extent.Within(kEarliest, kLatest)) return TimeForm::EpochSeconds;
    if (extent.Within(kEarliest * 1e3, kLatest * 1e3)) return TimeForm::EpochMilliseconds;
    if (extent.Within(kEarliest * 1e6, kLatest * 1e6)) return TimeForm::EpochMicroseconds;
    return TimeForm::None;
}

// YYYYMMDD, with hh, hhmm or hhmmss: digits alone, all cells of one length.
bool IsCompact(const std::vector<std::string>& cells) {
    if (cells.empty()) return false;
    const std::size_t size = cells.front().size();
    if (size != 8 && size != 10 && size != 12 && size != 14) return false;
    return std::all_of(cells.begin(), cells.end(), [&](const auto& cell) {
        ReadTime time;
        const int year = std::atoi(cell.substr(0, 4).c_str());
        return cell.size() == size && year >= kFirstYear && year <= kLastYear &&
               ReadTimeOf(TimeForm::Compact, cell, time);
    });
}

// How well the times of one form follow each other.
class Run {
  public:
    explicit Run(TimeForm form) : form_(form) {}
    bool Add(std::string_view cell) {
        ReadTime time;
        if (!ReadTimeOf(form_, cell, time)) return false;
        times_.push_back(time.at);
        return true;
    }
    std::size_t Count() const { return times_.size(); }
    bool Ascends() const { return std::is_sorted(times_.begin(), times_.end()); }
    std::int64_t Irregular() const { return IrregularSteps(times_); }
    bool operator==(const Run& other) const { return times_ == other.times_; }

  private:
    TimeForm form_;
    std::vector<Microseconds> times_;
};

struct DayOrder {
    Run day{TimeForm::DayFirst};
    Run month{TimeForm::MonthFirst};

    void Add(std::string_view cell) {
        day.Add(cell);
        month.Add(cell);
    }
    // None: both readings are as good.
    TimeForm Decision() const {
        if (day.Count() != month.Count())
            return day.Count() > month.Count() ? TimeForm::DayFirst : TimeForm::MonthFirst;
        if (day == month) return TimeForm::DayFirst;
        if (day.Ascends() != month.Ascends())
            return day.Ascends() ? TimeForm::DayFirst : TimeForm::MonthFirst;
        if (!day.Ascends()) return TimeForm::None;
        const auto byDay = day.Irregular();
        const auto byMonth = month.Irregular();
        // Gaps in the data are irregular in both readings.
        if (2 * byDay < byMonth) return TimeForm::DayFirst;
        if (2 * byMonth < byDay) return TimeForm::MonthFirst;
        return TimeForm::None;
    }
};

// Looks at all rows until one of them settles it.
TimeForm DecideByAllRows(const Layout& layout, std::string_view text, int field) {
    constexpr std::size_t kMostRows = 20000000;
    DayOrder order;
    Records records(text, layout.delimiter, layout.dataBegin, layout.dataLine);
    Record record;
    std::size_t rows = 0;
    while (rows++ < kMostRows && records.Next(record, [&](int index, std::string_view cell) {
        if (index == field && !cell.empty()) order.Add(cell);
    }))
        if (order.day.Count() != order.month.Count()) break;
    return order.Decision();
}

ReadNote OrderNote(const Column& column, TimeForm taken, const std::string& cell) {
    const bool dayFirst = taken == TimeForm::DayFirst;
    return {ReadNote::Doubt,
            "\"" + cell + "\" in column \"" + column.name + "\" is read with the " +
                (dayFirst ? "day" : "month") + " first: so the times ascend in regular steps",
            std::string("--time-format ") + (dayFirst ? "mdy" : "dmy")};
}

void FindForm(Layout& layout, Column& column, std::string_view text, const std::vector<std::string>& cells) {
    TimeForm best = TimeForm::Iso;
    std::ptrdiff_t most = -1;
    DayOrder order;
    for (const TimeForm form : {TimeForm::Iso, TimeForm::DayFirst, TimeForm::MonthFirst, TimeForm::Compact}) {
        ReadTime time;
        const auto count = std::count_if(cells.begin(), cells.end(),
                                         [&](const auto& cell) { return ReadTimeOf(form, cell, time); });
        if (count <= most) continue;
        best = form;
        most = count;
    }
    column.timeForm = best;
    for (const auto& cell : cells) order.Add(cell);
    if (best != TimeForm::DayFirst && best != TimeForm::MonthFirst) return;
    if (order.day.Count() != order.month.Count() || order.day == order.month) return;
    TimeForm decided = order.Decision();
    if (decided == TimeForm::None) decided = DecideByAllRows(layout, text, column.field);
    column.timeForm = decided == TimeForm::None ? TimeForm::DayFirst : decided;
    column.dayOrderOpen = decided == TimeForm::None;
    if (!column.dayOrderOpen) layout.notes.push_back(OrderNote(column, decided, cells.front()));
}

bool HasName(const Column& column) { return column.name != std::to_string(column.field + 1); }

// A cell as messages quote it.
std::string OneLine(std::string cell) {
    constexpr std::size_t kMost = 40;
    if (cell.size() > kMost) cell = cell.substr(0, kMost) + "...";
    std::replace_if(
        cell.begin(), cell.end(), [](unsigned char c) { return c < ' '; }, ' ');
    return cell;
}

void FindKind(Layout& layout, Column& column, std::string_view text, const Trial& trial,
              const std::string& asked) {
    const Tally& tally = trial.tallies[static_cast<std::size_t>(column.field)];
    const auto cells = CellsOf(trial, column.field);
    for (std::size_t r = trial.data; r < trial.sample.size() && column.exampleLine == 0; ++r) {
        const auto cell = trial.Cell(r, static_cast<std::size_t>(column.field));
        if (cell.empty()) continue;
        column.example = OneLine(std::string(cell));
        column.exampleLine = trial.sample[r].record.line;
    }
    column.kind = tally.Values() + tally.texts == 0                      ? ColumnKind::Empty
                  : !tally.HasValues()                                   ? ColumnKind::Text
                  : tally.times >= std::max(tally.numbers, tally.clocks) ? ColumnKind::Time
                  : tally.clocks > tally.numbers                         ? ColumnKind::Text
                                                                         : ColumnKind::Number;
    if (column.kind == ColumnKind::Text && tally.clocks > tally.texts) column.role = TimeRole::Clock;
    column.mayBeTime =
        column.kind == ColumnKind::Text && 2 * tally.digits >= tally.texts && cells.front() != cells.back();
    const auto* const named = FindTimeForm(asked);
    if (column.kind == ColumnKind::Time) {
        if (asked.find('%') != std::string::npos)
            column.timeForm = TimeForm::Custom;
        else if (named && named->form != TimeForm::None && !IsEpoch(named->form))
            column.timeForm = named->form;
        else
            FindForm(layout, column, text, cells);
        return;
    }
    if (column.kind != ColumnKind::Number) return;
    // One whose thousands are apart in some cells must not have other signs in the rest.
    if (tally.grouped > 0 && tally.texts == 0) column.grouping = tally.grouping;
    if (asked == "number" || asked.find('%') != std::string::npos) return;
    const bool candidate = HasName(column) ? SoundsLikeTime(column.name) : column.field == 0;
    if (named) {
        if ((named->form == TimeForm::Compact && IsCompact(cells))) column.timeForm = TimeForm::Compact;
    } else if (candidate) {
        column.timeForm =
            IsCompact(cells) ? TimeForm::Compact : EpochForm(ExtentOf(cells, trial.decimalSign));
    }
    if (column.timeForm != TimeForm::None) column.kind = ColumnKind::Time;
}

}  // namespace

bool SoundsLikeTime(const std::string& name) {
    const std::string lower = Lower(name);
    for (const char* word : {"time", "date", "epoch", "unix", "stamp", "zeit", "datum", "fecha", "heure"})
        if (lower.find(word) != std::string::npos) return true;
    return lower == "ts" || lower == "t";
}

void FindTimes(Layout& layout, std::string_view text, const Trial& trial, const std::string& timeFormat) {
    for (auto& column : layout.columns) FindKind(layout, column, text, trial, timeFormat);
    if (timeFormat == "number" || timeFormat.find('%') != std::string::npos ||
        timeFormat.rfind("epoch", 0) == 0)
        return;
    const auto parts = FindParts(layout, trial);
    if (!parts.empty()) layout.composed = Compose(layout, parts);
}

}  // namespace app
