#include "platform/gdi/PointPyramid.h"

#include <algorithm>
#include <new>

namespace {

// Fewer points are looked at in less time than the rest of a picture takes.
constexpr std::size_t kWorthKeeping = 65536;

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
    : m_points(points), m_count(count), m_which(which), m_levels(1) {
    m_levels[0].resize(count / kPointBlock);
    ScanBlocks(points, m_levels[0].size(), which, m_levels[0].data());
    while (m_levels.back().size() >= kGroup) {
        const std::vector<PointExtremes>& finer = m_levels.back();
        std::vector<PointExtremes> groups(finer.size() / kGroup);
        for (std::size_t i = 0; i < groups.size(); ++i)
            groups[i] = Union(finer.data() + i * kGroup, finer.data() + (i + 1) * kGroup);
        m_levels.push_back(std::move(groups));
    }
}

bool PointPyramid::Describes(const CPoint* points, std::size_t count, const StatusFilter& which) const {
    return points == m_points && count == m_count && which.status == m_which.status &&
           which.mask == m_which.mask && which.value == m_which.value;
}

void PointPyramid::SkipInside(std::size_t end, std::int32_t left, std::int32_t right, RunScan& scan) const {
    const std::size_t stop = std::min(end, m_count) / kPointBlock;
    std::size_t block = scan.next / kPointBlock;
    while (block < stop) {
        const std::size_t inside = Inside(block, stop, left, right, scan);
        if (inside == 0) break;
        block += inside;
    }
    scan.next = std::max(scan.next, block * kPointBlock);
}

std::size_t PointPyramid::Inside(std::size_t block, std::size_t stop, std::int32_t left, std::int32_t right,
                                 RunScan& scan) const {
    std::size_t inside = 0;
    PointExtremes extremes{};
    // From fine to coarse: the coarsest group that begins here and lies inside.
    std::size_t size = 1;
    for (const std::vector<PointExtremes>& level : m_levels) {
        if (block % size != 0 || block + size > stop) break;
        const PointExtremes& group = level[block / size];
        if (group.minX < left || group.maxX > right) break;
        extremes = group;
        inside = size;
        size *= kGroup;
    }
    if (inside != 0) {
        scan.low = std::min(scan.low, extremes.minY);
        scan.high = std::max(scan.high, extremes.maxY);
    }
    return inside;
}

const PointPyramid* PointPyramids::Of(const CPoint* points, std::size_t count, const StatusFilter& which) {
    if (count < kWorthKeeping) return nullptr;
    const auto kept = std::find_if(m_kept.begin(), m_kept.end(),
                                   [&](const auto& pyramid) { return pyramid->Points() == points; });
    if (kept != m_kept.end() && (*kept)->Describes(points, count, which)) return kept->get();
    if (kept != m_kept.end()) m_kept.erase(kept);
    try {
        m_kept.push_back(std::make_unique<PointPyramid>(points, count, which));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return m_kept.back().get();
}
