// The extremes of blocks of points, of groups of blocks, and so on: what a polyline of unchanged points needs
// to be reduced again in another mapping without looking at every point. A quarter of a byte per point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/gdi/LineRuns.h"
#include "platform/gdi/PointRuns.h"

class PointPyramid {
  public:
    // Of the points that the filter takes. Knows the arrays by their addresses and is no longer true once
    // they change.
    PointPyramid(const CPoint* points, std::size_t count, const StatusFilter& which);

    bool Describes(const CPoint* points, std::size_t count, const StatusFilter& which) const;
    // Whether a sample of the points and their status words is what it was. Finds series that were filled
    // anew, rotated or rewritten over some stretch, not every single point; the arrays must be those
    // described.
    bool Resembles() const;

    // Goes on from scan.next, which begins a block, over whole blocks before `end` as long as their points
    // lie within left <= x <= right.
    void SkipInside(std::size_t end, std::int32_t left, std::int32_t right, RunScan& scan) const;

    // Whether x turns back somewhere between blocks of the points taken.
    enum class Order { None, Rising, Falling };
    Order XOrder() const { return m_order; }
    // The points outside which none that is taken lies within left <= x <= right, a block more or less. Only
    // while x keeps an order.
    struct Stretch {
        std::size_t begin, end;
    };
    Stretch Within(std::int64_t left, std::int64_t right) const;

    static bool BeginsBlock(std::size_t i) { return i % kPointBlock == 0; }
    // The first point behind the block that point i lies in.
    static std::size_t BlockEnd(std::size_t i) { return (i / kPointBlock + 1) * kPointBlock; }

  private:
    static constexpr std::size_t kGroup = 16;

    // How many blocks from `block` on, all of them before `stop`, lie inside together; 0 when not even one
    // does.
    std::size_t Inside(std::size_t block, std::size_t stop, std::int32_t left, std::int32_t right,
                       RunScan& scan) const;

    std::uint64_t Sample() const;
    Order FindOrder() const;
    template <class Behind>
    std::size_t FirstBlock(Behind&& behind) const;

    const CPoint* m_points;
    std::size_t m_count;
    StatusFilter m_which;
    std::uint64_t m_sample;
    std::vector<std::vector<PointExtremes>> m_levels;  // of blocks, of groups of kGroup blocks, and so on
    Order m_order;
};

// What is kept of one series.
struct KeptLine {
    PointPyramid pyramid;
    std::uint64_t changes;
    KeptRuns runs;
};

// What is kept of the series in a picture. Each series has a count that moves when its points or status words
// do; arrays that moved, grew or were filled anew without that are noticed, single points are not.
class PointPyramids {
  public:
    // The pyramid of these points of a series, built unless it is kept. Null where it would not pay or memory
    // is short. `series` is an identity only.
    KeptLine* Of(const void* series, std::uint64_t changes, const CPoint* points, std::size_t count,
                 const StatusFilter& which);
    void Clear() { m_kept.clear(); }

  private:
    std::map<const void*, KeptLine> m_kept;
};
