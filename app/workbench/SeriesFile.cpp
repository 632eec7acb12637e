#include "app/workbench/SeriesFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>

#include "app/table/OpenTable.h"

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

// A graph view zooms while it shows more than 100 and less than 500,000,000 stored counts. So the scales of
// the workbench have decimals to spare, and so few that the whole range can be zoomed.
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

// One scale for the values of all columns; none when it would round more of them than scales of their own.
std::optional<AxisScale> SharedScale(const Table& table) {
    Values::Extent all;
    int decimals = 0;
    for (const auto& column : table.columns) {
        const auto extent = column.values.FindExtent();
        decimals = std::max(decimals, column.decimals);
        if (extent.count == 0) continue;
        all.least = all.count ? std::min(all.least, extent.least) : extent.least;
        all.most = all.count ? std::max(all.most, extent.most) : extent.most;
        all.count += extent.count;
    }
    const AxisScale shared = ZoomableScale(all, decimals);
    for (const auto& column : table.columns) {
        const AxisScale own = ZoomableScale(column.values.FindExtent(), column.decimals);
        if (Examine(shared, column.values).inexact > Examine(own, column.values).inexact) return {};
    }
    return shared;
}

void AddSeries(SeriesFile& file, const Table& table, const XAxis& axis) {
    const auto shared = SharedScale(table);
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        SeriesWishes wishes;
        wishes.onlyShown = true;
        wishes.scale =
            shared ? *shared : ZoomableScale(table.columns[i].values.FindExtent(), table.columns[i].decimals);
        Series made = MakeSeries(table, axis, i, wishes);
        if (!made.source || made.source->empty()) continue;
        made.source->UpdateStats();
        const AxisReading y{1.0, made.scale.Real(0) - made.source->GetOffset().y / made.scale.Scale()};
        const int group = shared ? 0 : static_cast<int>(i);
        file.series.push_back({std::move(made.source), y, table.columns[i].decimals, group});
    }
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

Result<SeriesFile> ReadSeriesFile(const ReadOptions& options, const Advance& advance) {
    auto table = OpenTable(options, advance);
    if (!table) return table.Error();
    const XAxis axis =
        MakeXAxis(*table, table->HasTimes() ? ZoomableScale(table->xTimes)
                                            : ZoomableScale(table->xNumbers.FindExtent(), table->xDecimals));
    SeriesFile file;
    file.options = options;
    file.title = std::filesystem::path(table->name).filename().string();
    file.x = ReadingOf(*table, axis);
    AddSeries(file, *table, axis);
    if (file.series.empty()) return Refusal(table->name + ": no column holds a value");
    file.summary = SummaryOf(*table);
    file.notes = std::move(table->notes);
    return file;
}

// After Masataka Okabe and Kei Ito, "Color Universal Design", 2002; yellow is left out, which is too pale for
// lines on white.
unsigned long SeriesColor(std::size_t i) {
    constexpr unsigned long kColors[] = {RGB(0, 114, 178),   RGB(213, 94, 0),   RGB(0, 158, 115),
                                         RGB(204, 121, 167), RGB(230, 159, 0),  RGB(86, 180, 233),
                                         RGB(120, 80, 60),   RGB(100, 100, 100)};
    return kColors[i % std::size(kColors)];
}

}  // namespace app
