#include "platform/gdi/PixelAxis.h"

#include <algorithm>
#include <limits>

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
    : m_low(low), m_high(high), m_rising((mapping.viewportExt < 0) == (mapping.windowExt < 0)) {
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
    m_turn = m_rising ? std::int64_t{mapping.windowOrg} : std::int64_t{mapping.windowOrg} + 1;
    m_reference = static_cast<double>(first);
    m_slope = static_cast<double>(v) / static_cast<double>(w);
    m_offset = pixel + (numerator + 0.5) * step;
    m_offsetBehind = pixel + (numerator - 0.5) * step;
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
