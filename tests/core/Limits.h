// The values at which arithmetic goes wrong.
#pragma once

#include <cstdint>
#include <limits>

inline constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
