// Medians of eight neighbouring windows at once, one per vector lane: lane k of the j-th vector holds sample
// j of window k, so an unaligned load of eight samples fills a vector. The three middle values come from a
// selection network: among Half + 3 of the 2 * Half + 1 samples neither the least nor the greatest can be in
// the middle; both go, the next sample comes in, until three are left.
#include "editing/WindowMedians.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <array>
#include <utility>

#define TAVIN_AVX2 __attribute__((target("avx2")))
#define TAVIN_AVX2_INLINE __attribute__((target("avx2"), always_inline)) inline

namespace {

constexpr int kLanes = 8;
constexpr int kSmallestHalf = 2;
using Lanes = __m256i;

TAVIN_AVX2_INLINE Lanes Load(const int* from) {
    return _mm256_loadu_si256(reinterpret_cast<const Lanes*>(from));
}

TAVIN_AVX2_INLINE void Exchange(Lanes& lower, Lanes& upper) {
    const Lanes least = _mm256_min_epi32(lower, upper);
    upper = _mm256_max_epi32(lower, upper);
    lower = least;
}

// Brings the least of the Count values to the front and the greatest to the back.
template <int Count>
TAVIN_AVX2_INLINE void MoveExtremesOut(Lanes* values) {
#pragma GCC unroll 64
    for (int i = 0; i < Count / 2; ++i) Exchange(values[i], values[Count - 1 - i]);
#pragma GCC unroll 64
    for (int i = 1; i < (Count + 1) / 2; ++i) Exchange(values[0], values[i]);
#pragma GCC unroll 64
    for (int i = Count / 2; i < Count - 1; ++i) Exchange(values[i], values[Count - 1]);
}

// Leaves the three middle values in values[1] ... values[3]; the last Count - 5 samples have yet to come in.
template <int Count>
TAVIN_AVX2_INLINE void Narrow(Lanes* values, const int* windowEnd) {
    MoveExtremesOut<Count>(values);
    if constexpr (Count > 5) {
        values[0] = Load(windowEnd - (Count - 5));
        Narrow<Count - 1>(values, windowEnd);
    }
}

template <int Half>
TAVIN_AVX2_INLINE Lanes EightMedians(const int* window) {
    constexpr int size = 2 * Half + 1;
    Lanes values[Half + 3];
#pragma GCC unroll 64
    for (int i = 0; i < Half + 3; ++i) values[i] = Load(window + i);
    Narrow<Half + 3>(values, window + size);
    const Lanes low = _mm256_min_epi32(_mm256_min_epi32(values[1], values[2]), values[3]);
    const Lanes high = _mm256_max_epi32(_mm256_max_epi32(values[1], values[2]), values[3]);
    // From the last sample to the first, so that the earliest one in the range stays.
    Lanes median = low;
#pragma GCC unroll 64
    for (int i = size - 1; i >= 0; --i) {
        const Lanes sample = Load(window + i);
        const Lanes outside =
            _mm256_or_si256(_mm256_cmpgt_epi32(low, sample), _mm256_cmpgt_epi32(sample, high));
        median = _mm256_blendv_epi8(sample, median, outside);
    }
    return median;
}

// The medians of `windows` windows, the first of which starts at `samples`; windows >= kLanes. The last eight
// may overlap those before.
template <int Half>
TAVIN_AVX2 void FillFullWindows(const int* samples, int* medians, int windows) {
    for (int i = 0; i < windows - kLanes; i += kLanes) {
        _mm256_storeu_si256(reinterpret_cast<Lanes*>(medians + i), EightMedians<Half>(samples + i));
    }
    const int last = windows - kLanes;
    _mm256_storeu_si256(reinterpret_cast<Lanes*>(medians + last), EightMedians<Half>(samples + last));
}

using Fill = void (*)(const int*, int*, int);

template <int... Offset>
constexpr std::array<Fill, sizeof...(Offset)> FillsFor(std::integer_sequence<int, Offset...>) {
    return {FillFullWindows<kSmallestHalf + Offset>...};
}

constexpr auto kFills = FillsFor(std::make_integer_sequence<int, kLargestSmallHalf - kSmallestHalf + 1>());

}  // namespace

bool SmallWindowMedians(const int* samples, int* medians, int n, int half) {
    if (half < kSmallestHalf || half > kLargestSmallHalf || n - 2 * half < kLanes) return false;
    if (!__builtin_cpu_supports("avx2")) return false;
    kFills[static_cast<std::size_t>(half - kSmallestHalf)](samples, medians + half, n - 2 * half);
    return true;
}

#else

bool SmallWindowMedians(const int*, int*, int, int) { return false; }

#endif
