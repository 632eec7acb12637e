// The one rounding rule and the saturating integer helpers. No input is undefined behaviour.
#pragma once

#include <cstdint>
#include <limits>

// Truncates toward zero, saturates at the 32-bit limits; not-a-number gives 0.
constexpr std::int32_t TruncateToInt32(double value) {
    if (value >= 2147483648.0) return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483649.0) return std::numeric_limits<std::int32_t>::min();
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

// Rounds half away from zero: adds 0.5 to a positive value, subtracts 0.5 from any other, truncates,
// saturates at the 32-bit limits; not-a-number gives 0. Unlike lround, 0.49999999999999994 gives 1, because
// the sum does.
constexpr std::int32_t RoundHalfAway(double value) {
    return TruncateToInt32(value > 0 ? value + 0.5 : value - 0.5);
}

constexpr std::int32_t SaturateToInt32(std::int64_t value) {
    if (value > std::numeric_limits<std::int32_t>::max()) return std::numeric_limits<std::int32_t>::max();
    if (value < std::numeric_limits<std::int32_t>::min()) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

// a + b and a - b of stored values, saturated at the 32-bit limits.
constexpr std::int32_t AddSaturated(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        sum = a < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    return SaturateToInt32(sum);
}
constexpr std::int32_t SubtractSaturated(std::int32_t a, std::int32_t b) {
    return SaturateToInt32(std::int64_t{a} - b);
}
