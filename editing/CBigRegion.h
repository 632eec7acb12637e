// A polygon with 64-bit vertices and the points inside it by the crossing-number rule.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/core/Geometry.h"

class CBigRegion {
  public:
    CBigRegion() = default;
    CBigRegion(const CPoint* vertices, int count) { SetPoints(vertices, count); }

    void SetPoints(const CPoint* vertices, int count);
    int GetSize() const { return static_cast<int>(xs_.size()); }
    std::int64_t X(int i) const { return xs_[static_cast<std::size_t>(i)]; }
    std::int64_t Y(int i) const { return ys_[static_cast<std::size_t>(i)]; }
    bool PtInRegion(POINT point) const;
    // inside[i] becomes 1 for every one of the n points that lies in the region, else 0; the same answers as
    // PtInRegion, for many points at once.
    void PtsInRegion(const CPoint* points, long n, unsigned char* inside) const;

  private:
    std::vector<std::int64_t> xs_;
    std::vector<std::int64_t> ys_;
};
