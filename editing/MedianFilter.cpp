#include "editing/MedianFilter.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "editing/WindowMedians.h"

namespace {

// How many of the samples are at or below `bound`.
int CountUpTo(const int* samples, int n, int bound) {
    int count = 0;
    for (int i = 0; i < n; ++i) count += samples[i] <= bound;
    return count;
}

// The least sample greater than `bound`, of which there is one at least.
int NextAbove(const int* samples, int n, int bound) {
    int next = std::numeric_limits<int>::max();
    for (int i = 0; i < n; ++i) next = samples[i] > bound ? std::min(next, samples[i]) : next;
    return next;
}

// The rank-th smallest sample, 1 <= rank <= n, by halving the range of values: at most 32 passes.
int Smallest(const int* samples, int n, int rank) {
    const auto [least, greatest] = std::minmax_element(samples, samples + n);
    std::int64_t low = *least;
    std::int64_t high = *greatest;
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        if (CountUpTo(samples, n, static_cast<int>(middle)) >= rank) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return static_cast<int>(low);
}

// 0 <= half < n.
int ClippedMedian(const int* samples, int n, int half, int i) {
    const int first = i > half ? i - half : 0;
    const int last = n - 1 - i > half ? i + half : n - 1;
    return WindowMedian(samples + first, last - first + 1);
}

// 0 <= half < n.
void FillMedians(const int* samples, int* medians, int n, int half) {
    if (half <= 1) {  // of a window of three samples at most, the median is the first
        for (int i = 0; i < n; ++i) medians[i] = samples[std::max(0, i - half)];
        return;
    }
    if (SmallWindowMedians(samples, medians, n, half)) {
        for (int i = 0; i < half; ++i) {
            medians[i] = ClippedMedian(samples, n, half, i);
            medians[n - 1 - i] = ClippedMedian(samples, n, half, n - 1 - i);
        }
        return;
    }
    if (LargeWindowMedians(samples, medians, n, half)) return;
    for (int i = 0; i < n; ++i) medians[i] = ClippedMedian(samples, n, half, i);
}

}  // namespace

int WindowMedian(const int* samples, int n) {
    if (!samples || n <= 0) return 0;
    if (n <= 3) return samples[0];  // every sample has n / 2 = 1 (or 0) on either side
    const int rank = n / 2;
    const int low = Smallest(samples, n, rank);
    // The rank-th largest is the (n - rank + 1)-th smallest, at most two places up.
    int high = low;
    while (CountUpTo(samples, n, high) < n - rank + 1) high = NextAbove(samples, n, high);
    return *std::find_if(samples, samples + n, [=](int y) { return low <= y && y <= high; });
}

void MedianFilterSpikeTest(const int* samples, unsigned char* flags, int* medians, int n, int half,
                           int distance) {
    if (!samples || !flags || !medians || n <= 0) return;
    FillMedians(samples, medians, n, std::clamp(half, 0, n - 1));
    if (distance < 0) {  // every sample is above median + distance or below median - distance
        std::fill_n(flags, n, static_cast<unsigned char>(1));
        return;
    }
    for (int i = 0; i < n; ++i) {
        const auto above = static_cast<std::uint32_t>(std::max(samples[i], medians[i]));
        const auto below = static_cast<std::uint32_t>(std::min(samples[i], medians[i]));
        flags[i] = above - below > static_cast<std::uint32_t>(distance);
    }
}
