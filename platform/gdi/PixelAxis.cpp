#include "platform/gdi/PixelAxis.h"

#include <algorithm>
#include <limits>

#include "platform/core/Cpu.h"

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();

// The smallest 32-bit value for which `reached` holds, kHighest + 1 when there is none. Once it holds, it
// holds for every larger value.
template <class Reached>
std::int64_t Smallest(Reached&& reached) {
    std::int64_t low = kLowest, high = kHighest + 1;
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        if (reached(static_cast<std::int32_t>(middle)))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

}  // namespace

PixelAxis::PixelAxis(const AxisMapping& mapping, int low, int high)
    : m_low(low),
      m_high(high),
      m_rising((mapping.viewportExt < 0) == (mapping.windowExt < 0)),
      m_origin(mapping.windowOrg) {
    const std::int64_t first = Smallest(
        [&](std::int32_t x) { return m_rising ? mapping.ToDevice(x) >= low : mapping.ToDevice(x) <= high; });
    const std::int64_t behind = Smallest(
        [&](std::int32_t x) { return m_rising ? mapping.ToDevice(x) > high : mapping.ToDevice(x) < low; });
    m_first = first;
    m_last = behind - 1;
    if (m_first > m_last) return;

    // With a positive denominator w and numerator n = 2 v (x - origin) + w - [v (x - origin) < 0] the pixel
    // is floor(n / 2w). The remainder at the first known coordinate is kept whole, the rest is a multiple of
    // v / w.
    const std::int64_t sign = mapping.windowExt < 0 ? -1 : 1;
    const std::int64_t v = sign * mapping.viewportExt, w = sign * mapping.windowExt;
    const std::int64_t product = v * (first - mapping.windowOrg);
    std::int64_t quotient = product / w, remainder = product % w;
    if (remainder < 0) {
        remainder += w;
        --quotient;
    }
    const double pixel = static_cast<double>(quotient + mapping.viewportOrg) + kLift;
    const double step = 1.0 / (2.0 * static_cast<double>(w));
    const double numerator = 2.0 * static_cast<double>(remainder) + static_cast<double>(w);
    m_reference = static_cast<double>(first);
    m_slope = static_cast<double>(v) / static_cast<double>(w);
    m_offset = pixel + (numerator + (m_rising ? 0.5 : -0.5)) * step;
    m_offsetBefore = pixel + (numerator + (m_rising ? -0.5 : 0.5)) * step;
}

bool PixelAxis::Reaches(std::int64_t logical, int pixel) const {
    const int at = Pixel(static_cast<std::int32_t>(logical));
    return m_rising ? at >= pixel : at <= pixel;
}

std::int64_t PixelAxis::Border(int pixel) const {
    const double edge = (m_rising ? pixel : pixel + 1) + double{kLift};
    const double guess = m_reference + (edge - m_offset) / m_slope;
    const double low = static_cast<double>(m_first), high = static_cast<double>(m_last) + 1.0;
    auto border = static_cast<std::int64_t>(std::clamp(guess, low, high));
    while (border > m_first && Reaches(border - 1, pixel)) --border;
    while (border <= m_last && !Reaches(border, pixel)) ++border;
    return border;
}

PixelAxis::Interval PixelAxis::LogicalOf(int pixel) const {
    const std::int64_t first = Border(pixel);
    const std::int64_t behind = Border(m_rising ? pixel + 1 : pixel - 1);
    return {first, behind - 1};
}

// Free of branches, so that the compiler makes vector instructions of it.
template <LONG POINT::*kCoordinate>
inline __attribute__((always_inline)) void PixelAxis::Convert(const PixelAxis& axis, const CPoint* points,
                                                              std::size_t count, std::int32_t delta,
                                                              int* pixels) {
    const auto lowest = static_cast<std::int32_t>(kLowest - std::min(delta, 0));
    const auto highest = static_cast<std::int32_t>(kHighest - std::max(delta, 0));
    const auto first = static_cast<std::int32_t>(axis.m_first), last = static_cast<std::int32_t>(axis.m_last);
    const std::int32_t origin = axis.m_origin;
    const double reference = axis.m_reference, slope = axis.m_slope;
    const double before = axis.m_offsetBefore, after = axis.m_offset;
    // Coordinates outside are converted as the nearest known one and moved on from there: selecting would
    // make the compiler branch round the floating-point part.
    const int shiftBelow = axis.PixelOrOutside(std::numeric_limits<std::int32_t>::min()) - axis.Pixel(first);
    const int shiftAbove = axis.PixelOrOutside(std::numeric_limits<std::int32_t>::max()) - axis.Pixel(last);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t logical = std::clamp(points[i].*kCoordinate, lowest, highest) + delta;
        const std::int32_t known = std::clamp(logical, first, last);
        const double offset = known < origin ? before : after;
        const int pixel = static_cast<int>((static_cast<double>(known) - reference) * slope + offset) - kLift;
        pixels[i] = pixel + (logical < first) * shiftBelow + (logical > last) * shiftAbove;
    }
}

#ifdef __x86_64__
template <LONG POINT::*kCoordinate>
__attribute__((target("avx2"))) void PixelAxis::ConvertAvx2(const PixelAxis& axis, const CPoint* points,
                                                            std::size_t count, std::int32_t delta,
                                                            int* pixels) {
    Convert<kCoordinate>(axis, points, count, delta, pixels);
}
#endif

template <LONG POINT::*kCoordinate>
void PixelAxis::PixelsOrOutside(const CPoint* points, std::size_t count, std::int32_t delta,
                                int* pixels) const {
    if (m_first > m_last) {
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = PixelOrOutside(AddSaturated(points[i].*kCoordinate, delta));
        return;
    }
#ifdef __x86_64__
    if (HasAvx2()) return ConvertAvx2<kCoordinate>(*this, points, count, delta, pixels);
#endif
    Convert<kCoordinate>(*this, points, count, delta, pixels);
}

template void PixelAxis::PixelsOrOutside<&POINT::x>(const CPoint*, std::size_t, std::int32_t, int*) const;
template void PixelAxis::PixelsOrOutside<&POINT::y>(const CPoint*, std::size_t, std::int32_t, int*) const;
