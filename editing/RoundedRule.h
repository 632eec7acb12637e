// Gives every point of a run a new y by a rule on its stored x and y, rounded as RoundHalfAway does, in loops
// that the compiler vectorises.
#pragma once

#include <cmath>
#include <limits>

#include "platform/core/Cpu.h"
#include "platform/core/Geometry.h"

// A rule is a function object (double x, double y) -> double whose operator is inlined into every loop.
#define TAVIN_INLINE __attribute__((always_inline))

// RoundHalfAway without branches. Adding half with the value's own sign is the same rule: the two differ only
// at 0, where both truncate to 0.
TAVIN_INLINE inline std::int32_t RoundWithoutBranches(double value) {
    constexpr double kLow = std::numeric_limits<std::int32_t>::min();
    constexpr double kHigh = std::numeric_limits<std::int32_t>::max();
    double sum = value + std::copysign(0.5, value);
    sum = sum == sum ? sum : 0.0;
    sum = sum < kHigh ? sum : kHigh;
    sum = sum > kLow ? sum : kLow;
    return static_cast<std::int32_t>(sum);
}

template <class Rule>
TAVIN_INLINE inline void ApplyRuleLoop(CPoint* points, long n, Rule rule) {
    for (long i = 0; i < n; ++i) {
        const LONG x = points[i].x;
        const LONG y = points[i].y;
        points[i] = CPoint(x, RoundWithoutBranches(rule(static_cast<double>(x), static_cast<double>(y))));
    }
}

template <class Rule>
__attribute__((target("avx2"))) void ApplyRuleAvx2(CPoint* points, long n, Rule rule) {
    ApplyRuleLoop(points, n, rule);
}

template <class Rule>
void ApplyRule(CPoint* points, long n, Rule rule) {
    constexpr long kWorthACall = 8;
    if (n >= kWorthACall && HasAvx2())
        ApplyRuleAvx2(points, n, rule);
    else
        ApplyRuleLoop(points, n, rule);
}
