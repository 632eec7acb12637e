#include "app/table/Series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace app {

namespace {

// The middle one of the steps between neighbouring rows, in stored counts; 0 when there are none.
double MiddleStep(const std::vector<std::int32_t>& stored) {
    constexpr std::size_t kMost = 100000;
    std::vector<std::int64_t> steps;
    for (std::size_t i = 1; i < stored.size() && i <= kMost; ++i)
        if (stored[i] != stored[i - 1]) steps.push_back(std::abs(std::int64_t{stored[i]} - stored[i - 1]));
    if (steps.empty()) return 0;
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    return static_cast<double>(*middle);
}

// The power of ten that makes the middle step at least one unit.
double UnitsPerReal(double middleStepReal) {
    double units = 1;
    while (middleStepReal > 0 && middleStepReal * units < 1 && units < 1e30) units *= 10;
    return units;
}

// The rows that have a point, in stable order of x.
std::vector<std::int32_t> RowsInOrder(const std::vector<double>& values, const XAxis& axis) {
    std::vector<std::int32_t> rows;
    rows.reserve(values.size());
    for (std::size_t r = 0; r < values.size(); ++r)
        if (HasValue(values[r])) rows.push_back(static_cast<std::int32_t>(r));
    if (!axis.sorted)
        std::stable_sort(rows.begin(), rows.end(), [&](std::int32_t a, std::int32_t b) {
            return axis.stored[static_cast<std::size_t>(a)] < axis.stored[static_cast<std::size_t>(b)];
        });
    return rows;
}

// The source's offset is 32 bits: it shares the origin of the axis where that fits.
long OffsetFor(const AxisScale& scale) {
    const std::int64_t origin = scale.Origin();
    return origin == SaturateToInt32(origin) ? static_cast<long>(origin) : 0;
}

void AddPoint(Series& series, CPoint point) {
    auto& source = *series.source;
    const long count = source.GetCount();
    if (count > 0 && source.GetData()[count - 1].x == point.x) ++series.duplicates;
    source.push_back(point);
    series.before.push_back(point.y);
}

}  // namespace

XAxis MakeXAxis(const Table& table, const std::optional<AxisScale>& scale) {
    XAxis axis;
    axis.stored.reserve(static_cast<std::size_t>(table.rows));
    if (table.HasTimes()) {
        axis.scale = scale ? *scale : ScaleForTimes(table.xTimes);
        axis.exactness = Examine(axis.scale, table.xTimes);
        for (const Microseconds time : table.xTimes) axis.stored.push_back(axis.scale.StoredTime(time));
        axis.sorted = std::is_sorted(table.xTimes.begin(), table.xTimes.end());
    } else {
        axis.scale = scale ? *scale : ScaleForValues(table.xNumbers, table.xDecimals, false);
        axis.exactness = Examine(axis.scale, table.xNumbers);
        for (const double x : table.xNumbers) axis.stored.push_back(axis.scale.Stored(x));
        axis.sorted = std::is_sorted(table.xNumbers.begin(), table.xNumbers.end());
    }
    axis.unitsPerReal = UnitsPerReal(MiddleStep(axis.stored) / axis.scale.Scale());
    return axis;
}

Series MakeSeries(const Table& table, const XAxis& axis, std::size_t index, const SeriesWishes& wishes) {
    Series series;
    const ValueColumn& column = table.columns[index];
    series.scale = wishes.scale ? *wishes.scale
                                : ScaleForValues(column.values, std::max(column.decimals, wishes.decimals),
                                                 wishes.zeroOrigin);
    series.exactness = Examine(series.scale, column.values);
    const auto rows = static_cast<std::int64_t>(column.values.size());
    if (rows >= std::numeric_limits<std::int32_t>::max()) return series;
    const auto points = static_cast<int>(rows - column.missing - column.unreadable);
    const Column& x = table.x;
    series.source = std::make_unique<KPointSource>(
        CString(column.column.name), axis.scale.Scale() / axis.unitsPerReal, series.scale.Scale(),
        CString(table.HasTimes() ? std::string("s") : x.unit), CString(column.column.unit), points, 1024);
    series.source->SetOffset(0, OffsetFor(series.scale));
    series.before.reserve(static_cast<std::size_t>(points));
    if (axis.sorted && points == rows) {
        for (std::size_t r = 0; r < column.values.size(); ++r)
            AddPoint(series, {axis.stored[r], series.scale.Stored(column.values[r])});
    } else {
        series.rowPoint.assign(column.values.size(), Series::kNoPoint);
        for (const std::int32_t row : RowsInOrder(column.values, axis)) {
            const auto r = static_cast<std::size_t>(row);
            series.rowPoint[r] = static_cast<std::int32_t>(series.before.size());
            AddPoint(series, {axis.stored[r], series.scale.Stored(column.values[r])});
        }
    }
    if (series.source->GetCount() != points) series.source.reset();
    return series;
}

}  // namespace app
