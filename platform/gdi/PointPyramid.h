// The extremes of blocks of points, of groups of blocks, and so on: what a polyline of unchanged points needs
// to be reduced again in another mapping without looking at every point. A quarter of a byte per point.
#pragma once

#include <algorithm>
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

    // Goes on from scan.next, which begins a block, over whole blocks before `end` as long as
    // inside(least x, greatest x) holds for their points.
    template <class Inside>
    void SkipWhile(Inside&& inside, std::size_t end, RunScan& scan) const;

    // Whether x turns back somewhere between blocks of the points taken.
    enum class Order { None, Rising, Falling };
    Order XOrder() const { return order_; }
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
    template <class Inside>
    std::size_t CountInside(Inside& inside, std::size_t block, std::size_t stop, RunScan& scan) const;

    std::uint64_t Sample() const;
    Order FindOrder() const;
    template <class Behind>
    std::size_t FirstBlock(Behind&& behind) const;

    const CPoint* points_;
    std::size_t count_;
    StatusFilter which_;
    std::uint64_t sample_;
    std::vector<std::vector<PointExtremes>> levels_;  // of blocks, of groups of kGroup blocks, and so on
    Order order_;
};

template <class Inside>
void PointPyramid::SkipWhile(Inside&& inside, std::size_t end, RunScan& scan) const {
    const std::size_t stop = std::min(end, count_) / kPointBlock;
    std::size_t block = scan.next / kPointBlock;
    while (block < stop) {
        const std::size_t skipped = CountInside(inside, block, stop, scan);
        if (skipped == 0) break;
        block += skipped;
    }
    scan.next = std::max(scan.next, block * kPointBlock);
}

template <class Inside>
std::size_t PointPyramid::CountInside(Inside& inside, std::size_t block, std::size_t stop,
                                      RunScan& scan) const {
    std::size_t count = 0;
    PointExtremes extremes{};
    // From fine to coarse: the coarsest group that begins here and lies inside.
    std::size_t size = 1;
    for (const std::vector<PointExtremes>& level : levels_) {
        if (block % size != 0 || block + size > stop) break;
        const PointExtremes& group = level[block / size];
        // A group none of whose points is taken lies anywhere.
        if (group.minX <= group.maxX && !inside(group.minX, group.maxX)) break;
        extremes = group;
        count = size;
        size *= kGroup;
    }
    if (count != 0) {
        scan.low = std::min(scan.low, extremes.minY);
        scan.high = std::max(scan.high, extremes.maxY);
    }
    return count;
}

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
    void Clear() { kept_.clear(); }

  private:
    std::map<const void*, KeptLine> kept_;
};
