// The extremes of blocks of points, of groups of blocks, and so on: what a polyline of unchanged points needs
// to be reduced again in another mapping without looking at every point. A quarter of a byte per point.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/gdi/PointRuns.h"

class PointPyramid {
  public:
    // Of the points that the filter takes. Knows the arrays by their addresses and is no longer true once
    // they change.
    PointPyramid(const CPoint* points, std::size_t count, const StatusFilter& which);

    bool Describes(const CPoint* points, std::size_t count, const StatusFilter& which) const;
    const CPoint* Points() const { return m_points; }

    // Goes on from scan.next, which begins a block, over whole blocks before `end` as long as their points
    // lie within left <= x <= right.
    void SkipInside(std::size_t end, std::int32_t left, std::int32_t right, RunScan& scan) const;

    static bool BeginsBlock(std::size_t i) { return i % kPointBlock == 0; }
    // The first point behind the block that point i lies in.
    static std::size_t BlockEnd(std::size_t i) { return (i / kPointBlock + 1) * kPointBlock; }

  private:
    static constexpr std::size_t kGroup = 16;

    // How many blocks from `block` on, all of them before `stop`, lie inside together; 0 when not even one
    // does.
    std::size_t Inside(std::size_t block, std::size_t stop, std::int32_t left, std::int32_t right,
                       RunScan& scan) const;

    const CPoint* m_points;
    std::size_t m_count;
    StatusFilter m_which;
    std::vector<std::vector<PointExtremes>> m_levels;  // of blocks, of groups of kGroup blocks, and so on
};

// The pyramids of the series in a picture. Whoever keeps one clears it whenever points or status words may
// have changed.
class PointPyramids {
  public:
    // The pyramid of these points, built unless it is kept. Null where it would not pay or memory is short.
    const PointPyramid* Of(const CPoint* points, std::size_t count, const StatusFilter& which);
    void Clear() { m_kept.clear(); }

  private:
    std::vector<std::unique_ptr<PointPyramid>> m_kept;
};
