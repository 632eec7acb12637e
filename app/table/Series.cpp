#include "app/table/Series.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "app/table/CodedPointSource.h"
#include "app/table/QartodFlag.h"

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
    return double(*middle);
}

// The power of ten that makes the middle step at least one unit.
double UnitsPerReal(double middleStepReal) {
    double units = 1;
    while (middleStepReal > 0 && middleStepReal * units < 1 && units < 1e30) units *= 10;
    return units;
}

// The rows that have a point, in stable order of x.
std::vector<std::int32_t> RowsInOrder(const Values& values, const XAxis& axis) {
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

// The stored counts of the rows of a column; of a row without a value, any.
class StoredColumn {
  public:
    StoredColumn(const AxisScale& scale, const Values& values)
        : scale_(scale), values_(values), factor_(ExactFactor(scale, values)) {}
    std::int32_t operator[](std::size_t row) const {
        if (!factor_) return scale_.Stored(values_[row]);
        return static_cast<std::int32_t>(values_.Counts()[row] * *factor_ - scale_.Origin());
    }

  private:
    const AxisScale& scale_;
    const Values& values_;
    std::optional<std::int64_t> factor_;
};

// The source's offset is 32 bits: it shares the origin of the axis where that fits.
long OffsetFor(const AxisScale& scale) {
    const std::int64_t origin = scale.Origin();
    return origin == SaturateToInt32(origin) ? static_cast<long>(origin) : 0;
}

// Appends points to a series a block at a time.
class PointAppender {
  public:
    PointAppender(Series& series, bool onlyShown) : series_(series), onlyShown_(onlyShown) {}
    void Add(CPoint point) {
        series_.duplicates += any_ && point.x == lastX_;
        any_ = true;
        lastX_ = point.x;
        block_[used_++] = point;
        if (!onlyShown_) series_.before.push_back(point.y);
        ++count_;
        if (used_ == block_.size()) Flush();
    }
    void Flush() {
        if (used_ == 0) return;
        CPoint* const last = block_.data() + used_ - 1;
        series_.source->insert({}, {block_.data(), block_.data(), last}, {nullptr, block_.data(), last});
        used_ = 0;
    }

    std::int32_t Count() const { return count_; }

  private:
    Series& series_;
    bool onlyShown_;
    std::int32_t count_ = 0;
    std::array<CPoint, 4096> block_;
    std::size_t used_ = 0;
    std::int32_t lastX_ = 0;
    bool any_ = false;
};

bool AreAscending(const Values& values) {
    if (values.AreCounts()) return std::is_sorted(values.Counts().begin(), values.Counts().end());
    for (std::size_t i = 1; i < values.size(); ++i)
        if (values[i] < values[i - 1]) return false;
    return true;
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
        const StoredColumn stored(axis.scale, table.xNumbers);
        for (std::size_t r = 0; r < table.xNumbers.size(); ++r) axis.stored.push_back(stored[r]);
        axis.sorted = AreAscending(table.xNumbers);
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
    const auto make = [&]<class Source>() -> std::unique_ptr<KPointSource> {
        return std::make_unique<Source>(
            CString(column.column.name), axis.scale.Scale() / axis.unitsPerReal, series.scale.Scale(),
            CString(table.HasTimes() ? std::string("s") : x.unit), CString(column.column.unit), points, 1024);
    };
    series.source = wishes.reasons ? make.operator()<CodedPointSource>() : make.operator()<KPointSource>();
    series.source->SetOffset(0, OffsetFor(series.scale));
    if (!wishes.onlyShown) series.before.reserve(static_cast<std::size_t>(points));
    const StoredColumn stored(series.scale, column.values);
    PointAppender appender(series, wishes.onlyShown);
    if (axis.sorted && points == rows) {
        for (std::size_t r = 0; r < column.values.size(); ++r) appender.Add({axis.stored[r], stored[r]});
    } else {
        series.rowPoint.assign(column.values.size(), Series::kNoPoint);
        for (const std::int32_t row : RowsInOrder(column.values, axis)) {
            const auto r = static_cast<std::size_t>(row);
            series.rowPoint[r] = appender.Count();
            appender.Add({axis.stored[r], stored[r]});
        }
    }
    appender.Flush();
    if (series.source->GetCount() != points) {
        series.source.reset();
        return series;
    }
    unsigned short* const status = series.source->GetStatus();
    for (std::size_t r = 0; r < column.status.size(); ++r) {
        const std::int32_t point = series.PointOfRow(static_cast<std::int64_t>(r));
        if (point == Series::kNoPoint) continue;
        status[point] = static_cast<unsigned short>(column.status[r] & ~kWasJudged);
        if (!(column.status[r] & kWasJudged)) continue;
        if (series.judged.PlaceCount() == 0) series.judged = selections::PlaceSet(points);
        series.judged.Add(point);
    }
    series.source->NoteChange();
    return series;
}

std::optional<Failure> CheckDecimals(const Table& table, std::size_t index, const Series& series,
                                     int askedDecimals) {
    const ValueColumn& column = table.columns[index];
    const int held = series.scale.Decimals();
    const int most = std::max(0, held);
    if (held >= std::max(column.decimals, askedDecimals)) return std::nullopt;
    if (askedDecimals >= 0 && askedDecimals <= most) return std::nullopt;
    const auto extent = column.values.FindExtent();
    const double farthest = std::fabs(extent.least) > std::fabs(extent.most) ? extent.least : extent.most;
    std::int64_t row = 0;
    while (column.values[static_cast<std::size_t>(row)] != farthest) ++row;
    const CellPlace place = FindCell(table, row, column.column.field);
    const std::string room =
        held >= 0 ? "there is room for " + Counted(held, "decimal")
                  : "they can only be stored in steps of " + ShortNumber(1 / series.scale.Scale());
    return Refusal(
               "\"" + place.text + "\": column \"" + column.column.name + "\" has values from " +
                   ShortNumber(extent.least) + " to " + ShortNumber(extent.most) + ", for which " + room +
                   ", not for " +
                   (askedDecimals > column.decimals ? "the " + std::to_string(askedDecimals) + " asked for"
                    : column.decimals > 0 ? "the " + std::to_string(column.decimals) + " of the file"
                                          : std::string("whole numbers")),
               "--decimals " + std::to_string(most) + " edits it so all the same")
        .In(place.line)
        .About(table.name);
}

}  // namespace app
