// A polygon with 64-bit vertices and the points inside it by the crossing-number rule: a ray from the point
// toward +x crosses an odd number of edges. A point at the lower end of an edge counts as left of it, any
// other point on an edge as right of it; an edge's upper end does not belong to it, and horizontal edges are
// never crossed. All answers are exact for any coordinates. Fewer than 2 vertices contain nothing.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/core/Geometry.h"

class CBigRegion {
  public:
    CBigRegion() = default;
    CBigRegion(const CPoint* vertices, int count) { SetPoints(vertices, count); }

    // Without vertices or with a count below 1 the region becomes empty, also when there is no memory.
    void SetPoints(const CPoint* vertices, int count);
    // Makes `count` vertices at (0, 0) for SetVertex; false, and the region empty, without memory.
    bool SetSize(int count);
    void SetVertex(int i, std::int64_t x, std::int64_t y);
    int GetSize() const { return static_cast<int>(xs_.size()); }
    std::int64_t X(int i) const { return xs_[static_cast<std::size_t>(i)]; }
    std::int64_t Y(int i) const { return ys_[static_cast<std::size_t>(i)]; }
    bool PtInRegion(POINT point) const;
    // inside[i] becomes 1 for every one of the n points that lies in the region, else 0; the same answers as
    // PtInRegion, in a time that hardly depends on the number of vertices. Work memory grows with points and
    // vertices and is freed again; where there is none, the answers only take longer.
    void PtsInRegion(const CPoint* points, long n, unsigned char* inside) const;

  private:
    std::vector<std::int64_t> xs_;
    std::vector<std::int64_t> ys_;
};

// Fills `indices` with the ascending indices of the points whose containment in the region equals `inside`.
// False, with an empty list, without memory for it.
bool SelectInRegion(const CBigRegion& region, const CPoint* points, long count, bool inside,
                    std::vector<long>& indices);
