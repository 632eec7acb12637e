// Vectors of points, for sources that scan long arrays of them.
#pragma once

#include <cstdint>
#include <cstring>

#include "platform/gdi/StatusFilter.h"

#define TAVIN_INLINE inline __attribute__((always_inline))

namespace vectors {

// Four points, x and y in turn. Minimum and maximum over such vectors give those of x and of y in one go.
typedef std::int32_t Points __attribute__((vector_size(32)));
typedef std::int64_t Lanes __attribute__((vector_size(32)));
typedef std::int16_t Words __attribute__((vector_size(8)));
constexpr std::size_t kAtOnce = 4;

TAVIN_INLINE void Broadcast(Points& to, std::int32_t x, std::int32_t y) {
    to = Points{x, y, x, y, x, y, x, y};
}

// Replaces the points that the filter does not take by the neutral one; `status` is that of the first.
TAVIN_INLINE void Mask(Points& points, const Points& neutral, const std::uint16_t* status,
                       const StatusFilter& which) {
    Words words;
    std::memcpy(&words, status, sizeof words);
    const auto m = static_cast<std::int16_t>(which.mask), v = static_cast<std::int16_t>(which.value);
    const Words taken = (words & Words{m, m, m, m}) == Words{v, v, v, v};
    const Points lanes = (Points) __builtin_convertvector(taken, Lanes);
    points = (points & lanes) | (neutral & ~lanes);
}

TAVIN_INLINE bool Any(const Lanes& lanes) { return (lanes[0] | lanes[1] | lanes[2] | lanes[3]) != 0; }

}  // namespace vectors
