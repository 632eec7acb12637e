// The fast and exact way from logical coordinates to the pixels of a picture on one axis, for many points.
// Where AxisMapping divides, this multiplies: the quotient lies at least 0.5 / (2 * 2^31) from any whole
// number once half a step is added to its numerator, and for pictures up to kLargestPicture pixels the
// doubles' errors sum up to a quarter of that at most, so that the whole part is always the right one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/gdi/Mapping.h"

class PixelAxis {
  public:
    static constexpr int kLargestPicture = 32000;

    // Knows the pixels low to high, both included; -kLargestPicture..kLargestPicture at most.
    PixelAxis(const AxisMapping& mapping, int low, int high);

    // The logical coordinates whose pixels are known, both included; none when FirstKnown() > LastKnown().
    std::int64_t FirstKnown() const { return first_; }
    std::int64_t LastKnown() const { return last_; }
    bool Knows(std::int32_t logical) const { return logical >= first_ && logical <= last_; }

    // The pixel of a known logical coordinate.
    int Pixel(std::int32_t logical) const {
        const double distance = double(logical) - reference_;
        const double offset = logical < origin_ ? offsetBefore_ : offset_;
        return static_cast<int>(distance * slope_ + offset) - kLift;
    }
    // The same, with coordinates outside counted to the pixel just outside low..high.
    int PixelOrOutside(std::int32_t logical) const {
        if (logical < first_) return rising_ ? low_ - 1 : high_ + 1;
        if (logical > last_) return rising_ ? high_ + 1 : low_ - 1;
        return Pixel(logical);
    }

    // The same for many points at once: pixels[i] is that of points[i].x + delta (or y), the sum saturated.
    // `kCoordinate` is &POINT::x or &POINT::y.
    template <LONG POINT::*kCoordinate>
    void PixelsOrOutside(const CPoint* points, std::size_t count, std::int32_t delta, int* pixels) const;

    // The logical coordinates of one pixel, both included; none when first > last.
    struct Interval {
        std::int64_t first;
        std::int64_t last;
    };
    Interval LogicalOf(int pixel) const;

  private:
    template <LONG POINT::*kCoordinate>
    static void Convert(const PixelAxis& axis, const CPoint* points, std::size_t count, std::int32_t delta,
                        int* pixels);
    template <LONG POINT::*kCoordinate>
    static void ConvertAvx2(const PixelAxis& axis, const CPoint* points, std::size_t count,
                            std::int32_t delta, int* pixels);

    static constexpr int kLift = 65536;  // makes what is truncated positive, so that truncation is the floor

    // The smallest known coordinate whose pixel is at least (falling axis: at most) the given one; last_ + 1
    // when there is none.
    std::int64_t Border(int pixel) const;
    bool Reaches(std::int64_t logical, int pixel) const;

    int low_, high_;
    bool rising_;  // larger logical coordinates lie on larger pixels
    std::int64_t first_, last_;
    // Where rounding turns round: halves go away from the pixel of the window's origin. At the origin itself
    // either offset gives the same pixel.
    std::int32_t origin_;
    double reference_ = 0.0;
    double slope_ = 0.0;                        // pixels per logical unit
    double offset_ = 0.0, offsetBefore_ = 0.0;  // of coordinates from the origin on, and before it
};
