// One value column of a table as a series: the points that have a value, in the order of x, and the way back
// from a row of the table to its point.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "app/table/AxisScale.h"
#include "app/table/Table.h"
#include "tavin/tavin.h"

namespace app {

// How the x axis of a table is stored; the same for each of its series.
struct XAxis {
    AxisScale scale;
    Exactness exactness;
    std::vector<std::int32_t> stored;  // per row
    bool sorted = true;                // x never falls from one row to the next
    // Counts per unit of the series' own x scale, which is the real scale divided by this: the spline holds
    // neighbours apart by a thousandth of a unit, so that closely spaced values need a smaller unit. Wave
    // lengths are multiplied by it.
    double unitsPerReal = 1;
};
// With the scale given, else with the one that keeps x most exactly.
XAxis MakeXAxis(const Table& table, const std::optional<AxisScale>& scale = {});

struct Series {
    static constexpr std::int32_t kNoPoint = -1;

    std::unique_ptr<KPointSource> source;
    AxisScale scale;
    Exactness exactness;
    std::vector<std::int32_t> before;    // y of every point before the first edit
    std::vector<std::int32_t> rowPoint;  // per row its point or kNoPoint; empty: row and point are the same
    std::int64_t duplicates = 0;         // points at the x of the one before
    selections::PlaceSet filled;         // points that were put into empty cells; no room: none
    selections::PlaceSet judged;         // points that some step has tested, where that is kept
    bool IsFilled(long point) const { return filled.PlaceCount() > point && filled.Has(point); }
    bool IsJudged(long point) const { return judged.PlaceCount() > point && judged.Has(point); }
    // Whether the point has another value than its cell.
    bool IsEdited(long point) const {
        return source->GetData()[point].y != before[static_cast<std::size_t>(point)] || IsFilled(point);
    }
    std::int32_t PointOfRow(std::int64_t row) const {
        return rowPoint.empty() ? static_cast<std::int32_t>(row) : rowPoint[static_cast<std::size_t>(row)];
    }
};

struct SeriesWishes {
    int decimals = -1;                    // at least so many for y; -1: as in the file
    bool zeroOrigin = false;              // stored y are real y times the scale
    std::optional<AxisScale> scale = {};  // of y, instead of one made for the column
    bool onlyShown = false;               // Series::before is not wanted
    bool reasons = false;                 // the source keeps rejection codes
};

// The series of value column `index`; null source when memory or the 2^31 points of a series do not suffice.
Series MakeSeries(const Table& table, const XAxis& axis, std::size_t index, const SeriesWishes& wishes);

// Refuses a series that holds fewer decimals than its column is written with, unless the user asked for no
// more than it holds.
std::optional<Failure> CheckDecimals(const Table& table, std::size_t index, const Series& series,
                                     int askedDecimals);

}  // namespace app
