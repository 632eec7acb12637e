// Scans the points of a smooth line for runs inside one column of sub-pixels, with the extremes of y. Needs
// no borders of the column, which pay only where hundreds of points lie in it.
#pragma once

#include <algorithm>

#include "platform/gdi/PointRuns.h"
#include "platform/gdi/Subpixels.h"

// Coordinates outside lowest..highest, which lie out of sight, count as its ends.
struct ColumnWindow {
    const SubpixelColumns& columns;
    std::int32_t lowest, highest;

    double Column(std::int32_t x) const { return columns.Column(std::clamp(x, lowest, highest)); }
};

// Starting with scan (low and high already holding at least one y), goes on as long as the points before
// `end` that the filter takes lie in the column of x. Stops in front of the first that does not.
void ScanColumn(const CPoint* points, std::size_t end, const StatusFilter& which, const ColumnWindow& window,
                std::int32_t x, RunScan& scan);
