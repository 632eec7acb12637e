#include "app/workbench/SeriesFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>

#include "app/table/OpenTable.h"
#include "app/workbench/SeriesKeys.h"

namespace app {

namespace {

XReading ReadingOf(const Table& table, const XAxis& axis) {
    XReading x;
    x.unitsPerReal = axis.unitsPerReal;
    x.name = table.x.name;
    x.isTime = table.HasTimes();
    if (x.isTime) {
        x.zoned = table.times.zoned;
        x.origin = axis.scale.RealTime(0);
    } else {
        x.shift = axis.scale.Real(0);
        x.unit = table.x.unit;
    }
    return x;
}

// Edits want decimals to spare; the counts of a whole range stay well inside 32 bits.
constexpr int kSpareDecimals = 4;
constexpr double kMostCounts = 2e8;

AxisScale ZoomableScale(const Values::Extent& extent, int writtenDecimals) {
    for (int decimals = writtenDecimals + kSpareDecimals;; --decimals) {
        const AxisScale scale = ScaleForRange(extent.least, extent.most, decimals, false);
        const double counts = (extent.most - extent.least) * scale.Scale();
        if (counts <= kMostCounts || scale.Decimals() > decimals) return scale;
    }
}

AxisScale ZoomableScale(const std::vector<Microseconds>& times) {
    const auto [least, most] = std::minmax_element(times.begin(), times.end());
    constexpr int kMicrosecondDecimals = 6;
    const double seconds = static_cast<double>(*most - *least) / 1e6;
    int decimals = std::min(kMicrosecondDecimals, ScaleForTimes(times).Decimals() + kSpareDecimals);
    while (seconds * std::pow(10.0, decimals) > kMostCounts) --decimals;
    return {decimals, 0, *least};
}

// The samples before which there are rows without a value.
std::vector<int> EmptyBefore(const Series& series, const XAxis& axis) {
    std::vector<int> before;
    const CPoint* const points = series.source->GetData();
    const auto count = static_cast<int>(series.source->GetCount());
    const auto add = [&](std::ptrdiff_t index) {
        if (index > 0 && index < count) before.push_back(static_cast<int>(index));
    };
    bool empty = false;
    for (std::size_t row = 0; row < series.rowPoint.size(); ++row) {
        const std::int32_t point = series.rowPoint[row];
        if (point != Series::kNoPoint) {
            if (empty && axis.sorted) add(point);
            empty = false;
            continue;
        }
        empty = true;
        // Samples were put in order: the row has its place among them.
        if (!axis.sorted)
            add(std::upper_bound(points, points + count, axis.stored[row],
                                 [](std::int32_t x, const CPoint& sample) { return x < sample.x; }) -
                points);
    }
    std::sort(before.begin(), before.end());
    before.erase(std::unique(before.begin(), before.end()), before.end());
    return before;
}

void AddSeries(SeriesFile& file, const Table& table, const XAxis& axis) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const ValueColumn& column = table.columns[i];
        SeriesWishes wishes;
        wishes.onlyShown = true;
        wishes.scale = ZoomableScale(column.values.FindExtent(), column.decimals);
        Series made = MakeSeries(table, axis, i, wishes);
        if (!made.source || made.source->empty()) continue;
        made.source->UpdateStats();
        const AxisReading y{1.0, made.scale.Real(0) - made.source->GetOffset().y / made.scale.Scale()};
        std::vector<int> emptyBefore = EmptyBefore(made, axis);
        file.series.push_back({std::move(made.source), y, column.decimals, std::move(emptyBefore)});
    }
}

void GiveKeys(SeriesFile& file) {
    std::vector<std::string> names;
    for (const FileSeries& one : file.series) names.emplace_back(one.source->GetName());
    const std::vector<std::string> keys = KeysApart(names);
    for (std::size_t i = 0; i < keys.size(); ++i)
        static_cast<KPointSource&>(*file.series[i].source).SetKey(CString(keys[i]));
}

std::string SummaryOf(const Table& table) {
    std::string text = Counted(table.rows, "row");
    if (table.skippedRows) text += ", " + Counted(table.skippedRows, "row") + " skipped";
    if (table.unreadableCells) text += ", " + Counted(table.unreadableCells, "unreadable cell");
    return text;
}

}  // namespace

Microseconds XReading::Time(double user) const {
    const double seconds = user / unitsPerReal;
    constexpr double kMost = 9e18;  // what the count of microseconds can take
    return origin + std::llround(std::clamp(seconds * 1e6, -kMost / 10, kMost / 10));
}

double XReading::UserOf(Microseconds time) const {
    return static_cast<double>(time - origin) / 1e6 * unitsPerReal;
}

Result<SeriesFile> ReadSeriesFile(const ReadOptions& options, const Advance& advance, PointOrder order) {
    auto table = OpenTable(options, advance);
    if (!table) return table.Error();
    XAxis axis =
        MakeXAxis(*table, table->HasTimes() ? ZoomableScale(table->xTimes)
                                            : ZoomableScale(table->xNumbers.FindExtent(), table->xDecimals));
    SeriesFile file;
    file.options = options;
    file.xRises = axis.sorted;
    file.order = order;
    // What counts as sorted keeps the order of the rows.
    if (order == PointOrder::OfFile) axis.sorted = true;
    file.title = std::filesystem::path(table->name).filename().string();
    file.x = ReadingOf(*table, axis);
    AddSeries(file, *table, axis);
    GiveKeys(file);
    if (file.series.empty()) return Refusal(table->name + ": no column holds a value");
    file.summary = SummaryOf(*table);
    if (!file.xRises && order == PointOrder::OfX)
        file.summary +=
            ", x not in order: samples are sorted by x (Series > File order shows them as they stand)";
    file.notes = std::move(table->notes);
    return file;
}

std::optional<Failure> AddOriginal(SeriesFile& file, SeriesFile original) {
    if (original.x.isTime != file.x.isTime)
        return Refusal(original.options.path + ": its x axis is of another kind than that of " +
                       file.options.path);
    bool any = false;
    for (FileSeries& series : file.series)
        for (std::size_t i = 0; i < original.series.size(); ++i) {
            const bool alone = file.series.size() == 1 && original.series.size() == 1;
            if (!alone && series.source->GetName() != original.series[i].source->GetName()) continue;
            series.original = static_cast<int>(i);
            any = true;
        }
    if (!any)
        return Refusal(original.options.path + ": no column has the name of one of " + file.options.path,
                       "-y names the columns to draw");
    original.x.shift += static_cast<double>(original.x.origin - file.x.origin) / kSecond;
    file.original = std::make_unique<SeriesFile>(std::move(original));
    return std::nullopt;
}

// The first eight after Masataka Okabe and Kei Ito, "Color Universal Design", 2002; yellow is left out, which
// is too pale for lines on white. Each of the others is the colour that differs most from those before it, in
// the least of its differences as people see it who lack no cone, the red or the green ones.
unsigned long SeriesColor(std::size_t i) {
    constexpr unsigned long kColors[] = {
        RGB(0, 114, 178),   RGB(213, 94, 0),  RGB(0, 158, 115),   RGB(204, 121, 167), RGB(230, 159, 0),
        RGB(86, 180, 233),  RGB(120, 80, 60), RGB(100, 100, 100), RGB(0, 0, 255),     RGB(51, 34, 170),
        RGB(102, 119, 255), RGB(51, 51, 85),  RGB(153, 187, 102), RGB(153, 51, 0),    RGB(68, 34, 119),
        RGB(0, 85, 255),    RGB(68, 51, 51),  RGB(119, 153, 255), RGB(51, 85, 187),   RGB(119, 136, 68)};
    return kColors[i % std::size(kColors)];
}

}  // namespace app
