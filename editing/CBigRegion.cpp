#include "editing/CBigRegion.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "editing/RegionGrid.h"

namespace {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

RegionEdge EdgeBetween(std::int64_t x0, std::int64_t y0, std::int64_t x1, std::int64_t y1) {
    return y0 <= y1 ? RegionEdge{x0, y0, x1, y1} : RegionEdge{x1, y1, x0, y0};
}

// Pays for its own set-up from about this many tests of a point against an edge on.
constexpr long kWorthAGrid = 20000;

std::vector<RegionEdge> EdgesOf(const CBigRegion& region) {
    std::vector<RegionEdge> edges;
    edges.reserve(static_cast<std::size_t>(region.GetSize()));
    for (int i = 0, before = region.GetSize() - 1; i < region.GetSize(); before = i++)
        edges.push_back(EdgeBetween(region.X(before), region.Y(before), region.X(i), region.Y(i)));
    return edges;
}

RegionEdge BoxOf(const std::vector<RegionEdge>& edges) {
    RegionEdge box = edges.front();
    for (const RegionEdge& e : edges) {
        box.lowX = std::min({box.lowX, e.lowX, e.highX});
        box.highX = std::max({box.highX, e.lowX, e.highX});
        box.lowY = std::min(box.lowY, e.lowY);
        box.highY = std::max(box.highY, e.highY);
    }
    return box;
}

// The grid reckons in differences; vertices farther out than this are left to the test edge by edge.
constexpr std::int64_t kGridReach = std::int64_t{1} << 40;

// |a - b|, which 64 bits hold.
std::uint64_t Distance(std::int64_t a, std::int64_t b) {
    return a > b ? static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b)
                 : static_cast<std::uint64_t>(b) - static_cast<std::uint64_t>(a);
}

// Crosses() for vertices anywhere.
bool CrossesFar(const RegionEdge& e, std::int64_t x, std::int64_t y) {
    if (y < e.lowY || y >= e.highY) return false;
    if (y == e.lowY) return x <= e.lowX;
    const auto [left, right] = std::minmax(e.lowX, e.highX);
    if (x < left || x > right) return x < left;
    // x - lowX and highX - lowX have one sign, the others are positive.
    const UInt128 ofRise = static_cast<UInt128>(Distance(e.highX, e.lowX)) * Distance(y, e.lowY);
    const UInt128 ofRun = static_cast<UInt128>(Distance(x, e.lowX)) * Distance(e.highY, e.lowY);
    return e.highX > e.lowX ? ofRise > ofRun : ofRise < ofRun;
}

// May run out of memory.
void ContainByGrid(const CBigRegion& region, const CPoint* points, long n, unsigned char* inside) {
    const std::vector<RegionEdge> edges = EdgesOf(region);
    const RegionEdge box = BoxOf(edges);
    constexpr std::int64_t kNarrow = std::int64_t{1} << 31;
    if (box.highX - box.lowX < kNarrow && box.highY - box.lowY < kNarrow)
        RegionGrid<std::int64_t>(edges, box, n).Contain(points, n, inside);
    else
        RegionGrid<Int128>(edges, box, n).Contain(points, n, inside);
}

}  // namespace

void CBigRegion::SetPoints(const CPoint* vertices, int count) {
    xs_.clear();
    ys_.clear();
    if (!vertices || count < 1) return;
    try {
        xs_.reserve(static_cast<std::size_t>(count));
        ys_.reserve(static_cast<std::size_t>(count));
    } catch (const std::bad_alloc&) {
        return;
    }
    for (int i = 0; i < count; ++i) {
        xs_.push_back(vertices[i].x);
        ys_.push_back(vertices[i].y);
    }
}

bool CBigRegion::SetSize(int count) {
    const std::size_t n = static_cast<std::size_t>(std::max(count, 0));
    try {
        xs_.assign(n, 0);
        ys_.assign(n, 0);
    } catch (const std::bad_alloc&) {
        xs_.clear();
        ys_.clear();
    }
    return xs_.size() == n;
}

void CBigRegion::SetVertex(int i, std::int64_t x, std::int64_t y) {
    if (i < 0 || i >= GetSize()) return;
    xs_[static_cast<std::size_t>(i)] = x;
    ys_[static_cast<std::size_t>(i)] = y;
}

bool CBigRegion::PtInRegion(POINT point) const {
    if (xs_.size() < 2) return false;
    bool odd = false;
    for (std::size_t i = 0, before = xs_.size() - 1; i < xs_.size(); before = i++) {
        if ((ys_[i] > point.y) == (ys_[before] > point.y)) continue;
        odd ^= CrossesFar(EdgeBetween(xs_[before], ys_[before], xs_[i], ys_[i]), point.x, point.y);
    }
    return odd;
}

void CBigRegion::PtsInRegion(const CPoint* points, long n, unsigned char* inside) const {
    if (xs_.size() < 2) {
        std::fill_n(inside, std::max(n, 0L), static_cast<unsigned char>(0));
        return;
    }
    const auto isNear = [](std::int64_t place) { return place > -kGridReach && place < kGridReach; };
    if (n > 8 && n > kWorthAGrid / GetSize() && std::all_of(xs_.begin(), xs_.end(), isNear) &&
        std::all_of(ys_.begin(), ys_.end(), isNear)) {
        try {
            return ContainByGrid(*this, points, n, inside);
        } catch (const std::bad_alloc&) {
        }
    }
    for (long i = 0; i < n; ++i) inside[i] = PtInRegion(points[i]);
}

bool SelectInRegion(const CBigRegion& region, const CPoint* points, long count, bool inside,
                    std::vector<long>& indices) {
    indices.clear();
    if (!points || count < 1) return true;
    const auto n = static_cast<std::size_t>(count);
    const std::unique_ptr<unsigned char[]> chosen(new (std::nothrow) unsigned char[n]);
    if (!chosen) return false;
    region.PtsInRegion(points, count, chosen.get());

    std::size_t found = 0;
    for (std::size_t i = 0; i < n; ++i) {
        chosen[i] = chosen[i] == static_cast<unsigned char>(inside);
        found += chosen[i];
    }
    try {
        indices.resize(found);
    } catch (const std::bad_alloc&) {
        return false;
    }
    std::size_t next = 0;
    for (std::size_t i = 0; next < found; ++i) {
        indices[next] = static_cast<long>(i);
        next += chosen[i];
    }
    return true;
}
