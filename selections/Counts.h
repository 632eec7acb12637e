// Limits in real units as whole numbers of stored counts. Products such as 0.29 * 100 come out a little below
// or above the whole number that is meant: what is whole but for rounding counts as whole.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace selections {

constexpr double kRoundingError = 8 * std::numeric_limits<double>::epsilon();

inline std::int64_t WholeCounts(double counts, double rounded) {
    constexpr double kMost = 4e18;
    const double whole = std::nearbyint(counts);
    const double chosen = std::fabs(counts - whole) <= kRoundingError * std::fabs(counts) ? whole : rounded;
    return static_cast<std::int64_t>(std::clamp(chosen, -kMost, kMost));
}
// The most counts that are not above `real`.
inline std::int64_t CountsWithin(double real, double scale) {
    return WholeCounts(real * scale, std::floor(real * scale));
}
// The fewest counts that are not below `real`.
inline std::int64_t CountsReaching(double real, double scale) {
    return WholeCounts(real * scale, std::ceil(real * scale));
}

// value > limit, for results of a few roundings each: what is equal but for them is not more.
inline bool IsMore(double value, double limit) { return value > limit * (1 + kRoundingError); }

}  // namespace selections
