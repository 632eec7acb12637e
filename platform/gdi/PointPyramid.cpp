#include "platform/gdi/PointPyramid.h"

#include <algorithm>
#include <new>

namespace {

// Fewer points are looked at in less time than the rest of a picture takes.
constexpr std::size_t kWorthKeeping = 65536;

// Looked at in some tens of microseconds.
constexpr std::size_t kSampleSize = 4096;

PointExtremes Union(const PointExtremes* first, const PointExtremes* end) {
    PointExtremes all = *first;
    for (const PointExtremes* one = first + 1; one != end; ++one) {
        all.minX = std::min(all.minX, one->minX);
        all.maxX = std::max(all.maxX, one->maxX);
        all.minY = std::min(all.minY, one->minY);
        all.maxY = std::max(all.maxY, one->maxY);
    }
    return all;
}

}  // namespace

PointPyramid::PointPyramid(const CPoint* points, std::size_t count, const StatusFilter& which)
    : points_(points), count_(count), which_(which), sample_(Sample()), levels_(1) {
    levels_[0].resize(count / kPointBlock);
    ScanBlocks(points, levels_[0].size(), which, levels_[0].data());
    while (levels_.back().size() >= kGroup) {
        const std::vector<PointExtremes>& finer = levels_.back();
        std::vector<PointExtremes> groups(finer.size() / kGroup);
        for (std::size_t i = 0; i < groups.size(); ++i)
            groups[i] = Union(finer.data() + i * kGroup, finer.data() + (i + 1) * kGroup);
        levels_.push_back(std::move(groups));
    }
    order_ = FindOrder();
}

// Blocks without a point that is taken, and points behind the last block, which is not full, are in order
// too.
PointPyramid::Order PointPyramid::FindOrder() const {
    bool rising = true, falling = true, any = false;
    PointExtremes before{};
    const auto take = [&](const PointExtremes& block) {
        if (block.minX > block.maxX) return;
        rising &= !any || before.maxX <= block.minX;
        falling &= !any || before.minX >= block.maxX;
        before = block;
        any = true;
    };
    for (const PointExtremes& block : levels_[0]) take(block);
    for (std::size_t i = levels_[0].size() * kPointBlock; i < count_; ++i)
        if (which_.Takes(i)) take({points_[i].x, points_[i].x, points_[i].y, points_[i].y});
    if (!any || !(rising || falling)) return Order::None;
    return rising ? Order::Rising : Order::Falling;
}

// The first block that lies behind something; from there on all do, those without a point aside.
template <class Behind>
std::size_t PointPyramid::FirstBlock(Behind&& behind) const {
    const std::vector<PointExtremes>& blocks = levels_[0];
    std::size_t low = 0, high = blocks.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        std::size_t filled = middle;
        while (filled < high && blocks[filled].minX > blocks[filled].maxX) ++filled;
        if (filled == high || behind(blocks[filled]))
            high = middle;
        else
            low = filled + 1;
    }
    return low;
}

PointPyramid::Stretch PointPyramid::Within(std::int64_t left, std::int64_t right) const {
    const bool rising = order_ == Order::Rising;
    const std::size_t begin = FirstBlock(
        [&](const PointExtremes& block) { return rising ? block.maxX >= left : block.minX <= right; });
    const std::size_t end = FirstBlock(
        [&](const PointExtremes& block) { return rising ? block.minX > right : block.maxX < left; });
    const bool open = end == levels_[0].size();
    return {begin * kPointBlock, open ? count_ : end * kPointBlock};
}

// Evenly spread, the first and the last point among them. FNV-1a (Fowler, Noll, Vo) over whole values: each
// step is a bijection, so one point that differs always shows.
std::uint64_t PointPyramid::Sample() const {
    std::uint64_t hash = 0xcbf29ce484222325;
    const auto take = [&hash](std::uint64_t value) { hash = (hash ^ value) * 0x100000001b3; };
    const std::size_t step = std::max<std::size_t>(1, count_ / kSampleSize);
    const auto takePoint = [&](std::size_t i) {
        take(std::uint64_t{static_cast<std::uint32_t>(points_[i].x)} << 32 |
             static_cast<std::uint32_t>(points_[i].y));
        if (which_.status) take(which_.status[i]);
    };
    for (std::size_t i = 0; i < count_; i += step) takePoint(i);
    if (count_ > 0) takePoint(count_ - 1);
    return hash;
}

bool PointPyramid::Resembles() const { return Sample() == sample_; }

bool PointPyramid::Describes(const CPoint* points, std::size_t count, const StatusFilter& which) const {
    return points == points_ && count == count_ && which.status == which_.status &&
           which.mask == which_.mask && which.value == which_.value;
}

KeptLine* PointPyramids::Of(const void* series, std::uint64_t changes, const CPoint* points,
                            std::size_t count, const StatusFilter& which) {
    const auto kept = kept_.find(series);
    if (kept != kept_.end()) {
        const PointPyramid& pyramid = kept->second.pyramid;
        const bool same = kept->second.changes == changes && pyramid.Describes(points, count, which);
        if (same && pyramid.Resembles()) return &kept->second;
        kept_.erase(kept);
    }
    if (count < kWorthKeeping) return nullptr;
    try {
        return &kept_.emplace(series, KeptLine{PointPyramid(points, count, which), changes, {}})
                    .first->second;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
