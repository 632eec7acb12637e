#include <algorithm>
#include <cstdint>
#include <new>

#include "editing/SlidingMedian.h"
#include "editing/WindowMedians.h"

namespace {

// Medians are found for this many samples at a time, or for twice the window's length if that is more: enough
// to make little of the sorting of the samples on either side, few enough to stay in the caches.
constexpr std::int64_t kSmallestBlock = 1024;

}  // namespace

bool LargeWindowMedians(const int* samples, int* medians, int n, int half) noexcept try {
    const std::int64_t count = n;
    const std::int64_t block = std::max<std::int64_t>(kSmallestBlock, std::int64_t{4} * half);
    SlidingMedian window(static_cast<std::uint32_t>(std::min(count, block + std::int64_t{2} * half)));
    for (std::int64_t from = 0; from < count; from += block) {
        const std::int64_t to = std::min(count, from + block);
        const std::int64_t origin = std::max<std::int64_t>(0, from - half);
        window.Load(samples + origin, static_cast<std::uint32_t>(std::min(count, to + half) - origin));
        for (std::int64_t i = from; i < to; ++i) {
            while (origin + window.End() < std::min(count, i + half + 1)) window.Add();
            while (origin + window.Begin() < i - half) window.Drop();
            medians[i] = window.Median();
        }
    }
    return true;
} catch (const std::bad_alloc&) {
    return false;
}
