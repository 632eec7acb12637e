// Scans long arrays of points for runs inside one interval of x, with the extremes of y, as fast as the
// memory delivers them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/core/Geometry.h"
#include "platform/gdi/StatusFilter.h"

struct RunScan {
    std::size_t next;        // the first point not looked at
    std::int32_t low, high;  // least and greatest y of the points that the filter takes
};

// Starting with scan (next inside the array, low and high already holding at least one y), goes on over whole
// blocks of points as long as every point that the filter takes has left <= x <= right. Stops in front of the
// first block that has another point, or that the array does not fill.
void ScanBlocksInside(const CPoint* points, std::size_t count, const StatusFilter& which, std::int32_t left,
                      std::int32_t right, RunScan& scan);

// The least and greatest coordinates of some points; of none, minima above maxima.
struct PointExtremes {
    std::int32_t minX, maxX, minY, maxY;
};

constexpr std::size_t kPointBlock = 64;

// The extremes of `blocks` consecutive blocks of kPointBlock points each, of the points that the filter
// takes.
void ScanBlocks(const CPoint* points, std::size_t blocks, const StatusFilter& which, PointExtremes* extremes);
