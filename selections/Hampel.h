// The Hampel filter: a value is an outlier where it lies farther from the median of its window than a
// multiple of the window's scaled median absolute deviation. (F. R. Hampel, The Influence Curve and Its Role
// in Robust Estimation, 1974; L. Davies and U. Gather, The Identification of Multiple Outliers, 1993.)
#pragma once

#include <cstdint>
#include <vector>

namespace selections {

// The widest half window that is kept as a sorted array; wider ones are kept as ranks.
constexpr std::int64_t kWidestSortedHalf = 2000;

// outliers[i] becomes 1 where |samples[i] - m| > limit * s, else 0: m is the median of samples[i - half] ...
// samples[i + half], clipped at both ends, s is 1.4826 times the median of their distances from m, or one
// count where that is 0. With an even number of samples a median is the mean of the middle two. Throws
// std::bad_alloc.
void HampelOutliers(const std::vector<std::int32_t>& samples, std::int64_t half, double limit,
                    std::vector<unsigned char>& outliers, std::int64_t widestSorted = kWidestSortedHalf);

}  // namespace selections
