#include "selections/Hampel.h"

#include <algorithm>
#include <cmath>

#include "selections/Counts.h"
#include "selections/RankedWindow.h"
#include "selections/Rule.h"
#include "selections/SortedWindow.h"

namespace selections {

namespace {

constexpr double kDeviationsPerMedianDistance = 1.4826;  // of the normal distribution

// The median distance of a window from its median. The `nearest` samples to the median are neighbours in
// sorted order; as the window slides they move by a few ranks, so that the search starts where it ended.
class MedianDistance {
  public:
    // Twice the distance that `nearest` samples are within, from twice the median.
    template <class Window>
    std::int64_t Of(const Window& window, long nearest, std::int64_t twiceMedian) {
        const long most = window.Size() - nearest;
        // The lowest rank at which the span is at least as far above the median as below it: the sum of its
        // ends does not fall with the rank.
        const auto isHigh = [&](long rank) {
            return window.At(rank) + window.At(rank + nearest - 1) >= twiceMedian;
        };
        rank_ = LowestRank(std::clamp(rank_, 0L, most), most, isHigh);
        std::int64_t distance = std::numeric_limits<std::int64_t>::max();
        if (rank_ <= most) distance = 2 * window.At(rank_ + nearest - 1) - twiceMedian;
        if (rank_ > 0) distance = std::min(distance, twiceMedian - 2 * window.At(rank_ - 1));
        return distance;
    }

  private:
    // The lowest rank up to `most` for which isHigh holds, most + 1 for none; gallops from `start`.
    template <class IsHigh>
    static long LowestRank(long start, long most, IsHigh isHigh) {
        long low = start;   // everything below is not high
        long high = start;  // high, or most + 1
        if (isHigh(start)) {
            for (long step = 1; low > 0; step *= 2) {
                low = std::max(0L, high - step);
                if (!isHigh(low)) break;
                high = low;
            }
            if (high == 0) return 0;
        } else {
            for (long step = 1; high <= most; step *= 2) {
                low = high;
                high = std::min(most + 1, low + step);
                if (high > most || isHigh(high)) break;
            }
        }
        while (high - low > 1) {
            const long middle = low + (high - low) / 2;
            (isHigh(middle) ? high : low) = middle;
        }
        return high;
    }

    long rank_ = 0;
};

class HampelTest {
  public:
    explicit HampelTest(double limit) : limit_(limit) {}

    template <class Window>
    bool IsOutlier(const Window& window, std::int32_t sample) {
        const long size = window.Size();
        const bool odd = size % 2 != 0;
        const std::int64_t twiceMedian = window.At((size - 1) / 2) + window.At(size / 2);
        const std::int64_t distance = std::abs(2 * std::int64_t{sample} - twiceMedian);
        if (distance == 0) return false;
        std::int64_t fourDeviations = distance_.Of(window, size / 2 + (odd ? 1 : 0), twiceMedian);
        fourDeviations += odd ? fourDeviations : distance_.Of(window, size / 2 + 1, twiceMedian);
        if (fourDeviations == 0) return double(distance) > 2 * limit_;
        return IsMore(2 * double(distance), limit_ * kDeviationsPerMedianDistance * double(fourDeviations));
    }

  private:
    double limit_;
    MedianDistance distance_;
};

// Tests samples `begin` to `end` (exclusive) with windows that see what lies around them.
template <class Window>
void TestRun(std::span<const std::int32_t> samples, long begin, long end, long half, double limit,
             unsigned char* outliers) {
    const auto n = static_cast<long>(samples.size());
    const long first = std::max(0L, begin - half);
    const long last = std::min(n, end + half);
    Window window(samples.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first)),
                  static_cast<std::size_t>(2 * half + 1));
    HampelTest test(limit);
    for (long i = first; i < std::min(n, begin + half); ++i) window.Add(i - first);
    for (long i = begin; i < end; ++i) {
        const bool comes = i + half < n;
        const bool goes = i > begin && i - half > 0;
        if (comes && goes)
            window.Replace(i - half - 1 - first, i + half - first);
        else if (comes)
            window.Add(i + half - first);
        else if (goes)
            window.Remove(i - half - 1 - first);
        outliers[i] = test.IsOutlier(window, samples[static_cast<std::size_t>(i)]);
    }
}

}  // namespace

void HampelOutliers(const std::vector<std::int32_t>& samples, std::int64_t half, double limit,
                    std::vector<unsigned char>& outliers, std::int64_t widestSorted) {
    const auto n = static_cast<long>(samples.size());
    const long fitting = std::clamp<long>(half, 0, n);
    outliers.assign(samples.size(), 0);
    if (fitting <= widestSorted) return TestRun<SortedWindow>(samples, 0, n, fitting, limit, outliers.data());
    // Blocks of a few windows are sorted at a time.
    const long run = std::max(6 * fitting, 1L << 12);
    for (long begin = 0; begin < n; begin += run)
        TestRun<RankedWindow>(samples, begin, std::min(n, begin + run), fitting, limit, outliers.data());
}

void FindHampel(const Question& question, PlaceSet& found) {
    const ValidPoints& valid = question.valid;
    std::vector<std::int32_t> samples(static_cast<std::size_t>(valid.Count()));
    for (long k = 0; k < valid.Count(); ++k) samples[static_cast<std::size_t>(k)] = valid.Y(k);
    std::vector<unsigned char> outliers;
    const auto half = static_cast<std::int64_t>(question.arguments[0].number);
    HampelOutliers(samples, half, question.arguments[1].number, outliers);
    AddValid(valid, found, [&](long k) { return outliers[static_cast<std::size_t>(k)] != 0; });
}

}  // namespace selections
