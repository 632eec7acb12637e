// Gives every point of a run a new y by a rule on its stored x and y, rounded as RoundHalfAway does. A rule
// is a function object (x, y) that replaces y; it is written once and takes doubles as well as vectors of
// them, so that every lane computes exactly what the single point does.
#pragma once

#ifdef __x86_64__
#include <immintrin.h>
#endif

#include "platform/core/Cpu.h"
#include "platform/core/Geometry.h"

#define TAVIN_INLINE __attribute__((always_inline))

template <class Rule>
TAVIN_INLINE inline void ApplyRuleToEach(CPoint* points, long n, Rule rule) {
    for (long i = 0; i < n; ++i) {
        double value = points[i].y;
        rule(double(points[i].x), value);
        points[i].y = RoundHalfAway(value);
    }
}

#ifdef __x86_64__
// Four points at a time. Adding half with the value's own sign is RoundHalfAway's sum: the two differ only at
// 0, where both truncate to 0.
template <class Rule>
__attribute__((target("avx2"))) void ApplyRuleToFours(CPoint* points, long n, Rule rule) {
    const __m256i xFirst = _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7);
    const __m256d sign = _mm256_set1_pd(-0.0);
    const __m256d half = _mm256_set1_pd(0.5);
    const __m256d low = _mm256_set1_pd(-2147483648.0);
    const __m256d high = _mm256_set1_pd(2147483647.0);
    long i = 0;
    for (; i + 4 <= n; i += 4) {
        auto* const four = reinterpret_cast<__m256i*>(points + i);
        const __m256i stored = _mm256_loadu_si256(four);
        const __m256i sorted = _mm256_permutevar8x32_epi32(stored, xFirst);
        const __m256d x = _mm256_cvtepi32_pd(_mm256_castsi256_si128(sorted));
        __m256d value = _mm256_cvtepi32_pd(_mm256_extracti128_si256(sorted, 1));
        rule(x, value);
        const __m256d sum = value + _mm256_or_pd(_mm256_and_pd(value, sign), half);
        const __m256d number = _mm256_and_pd(sum, _mm256_cmp_pd(sum, sum, _CMP_ORD_Q));
        const __m128i rounded = _mm256_cvttpd_epi32(_mm256_max_pd(_mm256_min_pd(number, high), low));
        const __m256i newY = _mm256_slli_epi64(_mm256_cvtepi32_epi64(rounded), 32);
        _mm256_storeu_si256(four, _mm256_blend_epi32(stored, newY, 0xAA));
    }
    ApplyRuleToEach(points + i, n - i, rule);
}
#endif

template <class Rule>
void ApplyRule(CPoint* points, long n, const Rule& rule) {
#ifdef __x86_64__
    if (n >= 4 && HasAvx2()) return ApplyRuleToFours(points, n, rule);
#endif
    ApplyRuleToEach(points, n, rule);
}
