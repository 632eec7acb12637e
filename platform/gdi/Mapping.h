// Where a logical coordinate lies on the device: device = round((logical - window origin) * viewport extent /
// window extent) + viewport origin, half away from zero, each axis by itself. All products fit 64 bits;
// results saturate at the 32-bit limits. On each axis the conversion never turns back: a larger logical
// coordinate is not on the other side of a smaller one.
#pragma once

#include "platform/core/Geometry.h"
#include "platform/gdi/GdiTypes.h"

// number * numerator / denominator, half away from zero. The product must fit 63 bits, the denominator must
// not be 0.
constexpr std::int64_t MulDivHalfAway(std::int64_t number, std::int64_t numerator, std::int64_t denominator) {
    const std::int64_t product = number * numerator;
    const std::int64_t quotient = product / denominator;
    const std::int64_t remainder = product % denominator;
    const std::int64_t distance = remainder < 0 ? -remainder : remainder;
    const std::int64_t size = denominator < 0 ? -denominator : denominator;
    if (distance < size - distance) return quotient;
    return (product < 0) != (denominator < 0) ? quotient - 1 : quotient + 1;
}

struct AxisMapping {
    std::int32_t windowOrg = 0;
    std::int32_t windowExt = 1;  // never 0, like viewportExt
    std::int32_t viewportOrg = 0;
    std::int32_t viewportExt = 1;

    constexpr std::int32_t ToDevice(std::int32_t logical) const {
        const std::int64_t distance = std::int64_t{logical} - windowOrg;
        return SaturateToInt32(MulDivHalfAway(distance, viewportExt, windowExt) + viewportOrg);
    }
    constexpr std::int32_t ToLogical(std::int32_t device) const {
        const std::int64_t distance = std::int64_t{device} - viewportOrg;
        return SaturateToInt32(MulDivHalfAway(distance, windowExt, viewportExt) + windowOrg);
    }
    // Lengths convert with the absolute extents.
    std::int32_t LengthToDevice(std::int32_t length) const;
    std::int32_t LengthToLogical(std::int32_t length) const;
};

struct Mapping {
    int mode = MM_TEXT;
    AxisMapping x;
    AxisMapping y;

    CPoint ToDevice(CPoint p) const { return {x.ToDevice(p.x), y.ToDevice(p.y)}; }
    CPoint ToLogical(CPoint p) const { return {x.ToLogical(p.x), y.ToLogical(p.y)}; }

    // False for an unknown mode. The isotropic and anisotropic modes take over the extents in force.
    bool SetMode(int newMode, int dotsPerInch);
    // Do nothing unless the mode lets extents be set and neither is 0.
    void SetWindowExt(CSize ext);
    void SetViewportExt(CSize ext);

  private:
    bool TakesExtents(CSize ext) const;
    void MakeIsotropic();
};
