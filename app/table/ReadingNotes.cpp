#include "app/table/ReadingNotes.h"

#include <algorithm>
#include <iterator>

#include "app/table/Records.h"
#include "app/table/Zone.h"

namespace app {

namespace {

// The first time without a zone, beside others that have one.
Failure SomeNameTheirZone(const Table& table) {
    const TimeReader reader(table.x.timeForm, table.layout.customTime, table.layout.decimalSign);
    const std::string_view text = table.bytes;
    RecordIndex::Walk walk(table.records, table.layout.begin);
    std::int64_t row = 0;
    for (Span span; walk.Next();) {
        if (walk.Role() != RecordRole::Data) continue;
        const auto record = text.substr(walk.Begin(), walk.End() - walk.Begin());
        ReadTime time;
        if (FindField(record, table.layout.delimiter, table.x.field, span) &&
            reader.Read(record.substr(span.begin, span.end - span.begin), time) && !time.hasZone)
            break;
        ++row;
    }
    const CellPlace place = FindCell(table, std::min(row, table.rows - 1), table.x.field);
    return Refusal("\"" + place.text + "\" in column \"" + table.x.name +
                       "\" names no zone, and other times in it do",
                   "leave --zone out: such times are then taken as UTC")
        .In(place.line)
        .About(table.name);
}

std::optional<Failure> ApplyZone(Table& table, const std::string& zone) {
    if (!table.HasTimes())
        return Refusal(table.name + ": column \"" + table.x.name + "\" holds no times", "leave --zone out");
    table.zone = zone;
    if (table.times.zoned && table.times.local) return SomeNameTheirZone(table);
    if (table.times.zoned || IsEpoch(table.x.timeForm)) {
        table.notes.push_back(
            {ReadNote::Reading,
             "the times name their zone themselves: " + zone + " is that of times in options", ""});
        return std::nullopt;
    }
    const auto counts = ToUtc(table.xTimes, zone);
    if (!counts) return counts.Error();
    table.times = {true, false, table.times.cut};
    std::string text = "times of " + zone + " are taken to UTC";
    if (counts->repeated)
        text += "; " + Counted(counts->repeated, "time") +
                " of an hour that the clock showed twice, in the order of the file";
    if (counts->skipped) text += "; " + Counted(counts->skipped, "time") + " that the clock skipped";
    table.notes.push_back({counts->skipped ? ReadNote::Doubt : ReadNote::Reading, text, ""});
    return std::nullopt;
}

// How the values of x follow each other from row to row.
struct Order {
    std::int64_t rises = 0;
    std::int64_t falls = 0;
    std::int64_t behind = 0;  // rows behind one of larger x
    std::int64_t hours = 0;   // falls that a clock set back by an hour may be
};

template <class X>
Order OrderOf(const X& x) {
    Order order;
    if (x.empty()) return order;
    auto most = x[0];
    for (std::size_t i = 1; i < x.size(); ++i) {
        const auto before = x[i - 1];
        const auto here = x[i];
        order.rises += here > before;
        order.falls += here < before;
        order.behind += here < most;
        order.hours += here < before && here + 3600 * kSecond >= before;
        if (here > most) most = here;
    }
    return order;
}

void NoteOrder(Table& table, const Order& order) {
    if (order.falls == 0) return;
    if (order.rises == 0) {
        table.notes.push_back({ReadNote::Reading, "the rows run backwards: the last come first", ""});
        return;
    }
    std::string text = Counted(order.behind, "row") + " of " + Grouped(table.rows) +
                       (order.behind == 1 ? " stands behind later ones and is sorted in"
                                          : " stand behind later ones and are sorted in");
    const bool clock = table.HasTimes() && order.hours > 0 && !table.times.zoned;
    if (clock) text += "; where the clock was set back, the zone tells the hours apart";
    table.notes.push_back({ReadNote::Doubt, text, clock ? "--zone NAME" : ""});
}

// Marks for no value, as instruments and archives write them.
constexpr double kMarks[] = {-9999,
                             -99999,
                             -999,
                             -99,
                             -9999.9,
                             -999.9,
                             -99.9,
                             -999.99,
                             -99.99,
                             -999.25,
                             -8888,
                             -32768,
                             -1e20,
                             -1e30,
                             9999,
                             99999,
                             999,
                             99,
                             9999.9,
                             999.9,
                             99.9,
                             999.99,
                             99.99,
                             9999.99,
                             99999.9,
                             32767,
                             1e20,
                             1e30,
                             1e35,
                             9.96921e36,
                             9.969209968386869e36};

// A mark that is the least or the largest value and lies farther from the others than they do from each
// other.
void NoteMark(Table& table, const ValueColumn& column, double mark) {
    if (std::find(std::begin(kMarks), std::end(kMarks), mark) == std::end(kMarks)) return;
    double least = 1e300;
    double most = -1e300;
    std::int64_t marks = 0;
    for (const double value : column.values) {
        if (!HasValue(value)) continue;
        if (value == mark) {
            ++marks;
            continue;
        }
        least = std::min(least, value);
        most = std::max(most, value);
    }
    if (least > most || std::min(std::abs(mark - least), std::abs(mark - most)) <= most - least) return;
    const std::string text = ShortNumber(mark);
    table.notes.push_back({ReadNote::Doubt,
                           text + " stands " + (marks == 1 ? "once" : Grouped(marks) + " times") +
                               " in column \"" + column.column.name + "\", far from its other values (" +
                               ShortNumber(least) + " to " + ShortNumber(most) +
                               "): it looks like a mark for no value",
                           "--missing " + text});
}

void NoteMarks(Table& table) {
    for (const auto& column : table.columns) {
        const auto extent = column.values.FindExtent();
        if (extent.count == 0) continue;
        NoteMark(table, column, extent.least);
        NoteMark(table, column, extent.most);
    }
}

}  // namespace

std::optional<Failure> FinishReading(Table& table, const ReadOptions& options) {
    if (!options.zone.empty())
        if (auto failure = ApplyZone(table, options.zone)) return failure;
    NoteOrder(table, table.HasTimes() ? OrderOf(table.xTimes) : OrderOf(table.xNumbers));
    NoteMarks(table);
    return std::nullopt;
}

}  // namespace app
