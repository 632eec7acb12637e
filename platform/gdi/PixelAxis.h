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
    std::int64_t FirstKnown() const { return m_first; }
    std::int64_t LastKnown() const { return m_last; }
    bool Knows(std::int32_t logical) const { return logical >= m_first && logical <= m_last; }

    // The pixel of a known logical coordinate.
    int Pixel(std::int32_t logical) const {
        const double distance = static_cast<double>(logical) - m_reference;
        const double offset = logical < m_origin ? m_offsetBefore : m_offset;
        return static_cast<int>(distance * m_slope + offset) - kLift;
    }
    // The same, with coordinates outside counted to the pixel just outside low..high.
    int PixelOrOutside(std::int32_t logical) const {
        if (logical < m_first) return m_rising ? m_low - 1 : m_high + 1;
        if (logical > m_last) return m_rising ? m_high + 1 : m_low - 1;
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

    // The smallest known coordinate whose pixel is at least (falling axis: at most) the given one; m_last + 1
    // when there is none.
    std::int64_t Border(int pixel) const;
    bool Reaches(std::int64_t logical, int pixel) const;

    int m_low, m_high;
    bool m_rising;  // larger logical coordinates lie on larger pixels
    std::int64_t m_first, m_last;
    // Where rounding turns round: halves go away from the pixel of the window's origin. At the origin itself
    // either offset gives the same pixel.
    std::int32_t m_origin;
    double m_reference = 0.0;
    double m_slope = 0.0;                         // pixels per logical unit
    double m_offset = 0.0, m_offsetBefore = 0.0;  // of coordinates from the origin on, and before it
};
