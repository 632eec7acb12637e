// Where samples of a live series fall on the columns of a plot: a whole number of columns for a whole number
// of stored counts, and the plot begins at a whole column. So the picture of what stands moves by whole
// columns when time goes on, and every sample keeps the column that it has.
#pragma once

#include <cmath>
#include <cstdint>

#include "app/workbench/PlotRange.h"
#include "tavin/tavin.h"

namespace app {

struct LiveColumns {
    int left = 0;            // of the plot, in pixels
    int width = 1;           // of the plot
    int counts = 1;          // that it shows
    std::int64_t first = 0;  // the column at its left, counted from the stored 0

    // A plot that shows `from` to `to`, in stored counts, at its left end to the nearest column.
    static LiveColumns Of(const CRect& plot, double from, double to) {
        LiveColumns columns;
        columns.left = plot.left;
        columns.width = std::max(1, static_cast<int>(plot.Width()));
        columns.counts = std::max(1, RoundHalfAway(to - from));
        columns.first = std::llround(from * columns.width / columns.counts);
        return columns;
    }
    // The same plot with `stored` in its last column but `margin`.
    LiveColumns EndingAt(std::int32_t stored, int margin) const {
        LiveColumns columns = *this;
        const std::int64_t last = static_cast<std::int64_t>(std::ceil(double(stored) * width / counts));
        columns.first = last - (width - 1 - margin);
        return columns;
    }
    // As contexts map it, for samples right of their window's origin.
    std::int64_t Column(std::int32_t stored) const {
        return static_cast<std::int64_t>(std::floor(double(stored) * width / counts + 0.5)) - first + left;
    }
    double Stored(std::int64_t column) const { return double(column - left + first) * counts / width; }
    // What the plot shows. A hair less, so that values between two columns fall on the same one wherever the
    // plot begins.
    Range Shown(double countsPerUnit, double shift) const {
        constexpr double kHair = 0.001;
        const double from = (double(first) - kHair) * counts / width / countsPerUnit + shift;
        return {from, from + counts / countsPerUnit};
    }
    // Maps x of a context whose samples all lie at or behind `oldest`; y stays as it is.
    void MapX(CDC& dc, std::int32_t oldest) const {
        const auto whole = static_cast<std::int64_t>(std::floor(double(oldest) / counts)) - 1;
        dc.SetWindowOrg(SaturateToInt32(whole * counts), dc.GetWindowOrg().y);
        dc.SetWindowExt(counts, dc.GetWindowExt().cy);
        dc.SetViewportOrg(SaturateToInt32(left - (first - whole * width)), dc.GetViewportOrg().y);
        dc.SetViewportExt(width, dc.GetViewportExt().cy);
    }
    bool operator==(const LiveColumns&) const = default;
};

}  // namespace app
