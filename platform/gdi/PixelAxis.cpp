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
    : low_(low),
      high_(high),
      rising_((mapping.viewportExt < 0) == (mapping.windowExt < 0)),
      origin_(mapping.windowOrg) {
    const std::int64_t first = Smallest(
        [&](std::int32_t x) { return rising_ ? mapping.ToDevice(x) >= low : mapping.ToDevice(x) <= high; });
    const std::int64_t behind = Smallest(
        [&](std::int32_t x) { return rising_ ? mapping.ToDevice(x) > high : mapping.ToDevice(x) < low; });
    first_ = first;
    last_ = behind - 1;
    if (first_ > last_) return;

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
    const double pixel = double(quotient + mapping.viewportOrg) + kLift;
    const double step = 1.0 / (2.0 * double(w));
    const double numerator = 2.0 * double(remainder) + double(w);
    reference_ = double(first);
    slope_ = double(v) / double(w);
    offset_ = pixel + (numerator + (rising_ ? 0.5 : -0.5)) * step;
    offsetBefore_ = pixel + (numerator + (rising_ ? -0.5 : 0.5)) * step;
}

bool PixelAxis::Reaches(std::int64_t logical, int pixel) const {
    const int at = Pixel(static_cast<std::int32_t>(logical));
    return rising_ ? at >= pixel : at <= pixel;
}

std::int64_t PixelAxis::Border(int pixel) const {
    const double edge = (rising_ ? pixel : pixel + 1) + double(kLift);
    const double guess = reference_ + (edge - offset_) / slope_;
    const double low = double(first_), high = double(last_) + 1.0;
    auto border = static_cast<std::int64_t>(std::clamp(guess, low, high));
    while (border > first_ && Reaches(border - 1, pixel)) --border;
    while (border <= last_ && !Reaches(border, pixel)) ++border;
    return border;
}

PixelAxis::Interval PixelAxis::LogicalOf(int pixel) const {
    const std::int64_t first = Border(pixel);
    const std::int64_t behind = Border(rising_ ? pixel + 1 : pixel - 1);
    return {first, behind - 1};
}

// Free of branches, so that the compiler makes vector instructions of it.
template <LONG POINT::*kCoordinate>
inline __attribute__((always_inline)) void PixelAxis::Convert(const PixelAxis& axis, const CPoint* points,
                                                              std::size_t count, std::int32_t delta,
                                                              int* pixels) {
    const auto lowest = static_cast<std::int32_t>(kLowest - std::min(delta, 0));
    const auto highest = static_cast<std::int32_t>(kHighest - std::max(delta, 0));
    const auto first = static_cast<std::int32_t>(axis.first_), last = static_cast<std::int32_t>(axis.last_);
    const std::int32_t origin = axis.origin_;
    const double reference = axis.reference_, slope = axis.slope_;
    const double before = axis.offsetBefore_, after = axis.offset_;
    // Coordinates outside are converted as the nearest known one and moved on from there: selecting would
    // make the compiler branch round the floating-point part.
    const int shiftBelow = axis.PixelOrOutside(std::numeric_limits<std::int32_t>::min()) - axis.Pixel(first);
    const int shiftAbove = axis.PixelOrOutside(std::numeric_limits<std::int32_t>::max()) - axis.Pixel(last);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t logical = std::clamp(points[i].*kCoordinate, lowest, highest) + delta;
        const std::int32_t known = std::clamp(logical, first, last);
        const double offset = known < origin ? before : after;
        const int pixel = static_cast<int>((double(known) - reference) * slope + offset) - kLift;
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
    if (first_ > last_) {
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
