#include "editing/MedianFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "editing/WindowMedians.h"
#include "tests/core/Limits.h"

namespace {

using Samples = std::vector<int>;

// The first sample that at least half of the window (rounded down) does not exceed and half does not fall
// below: the first between the (n / 2)-th smallest and the (n / 2)-th largest.
int SortedMedian(const Samples& window) {
    const std::size_t n = window.size();
    if (n == 1) return window[0];
    Samples sorted = window;
    std::sort(sorted.begin(), sorted.end());
    const int low = sorted[n / 2 - 1];
    const int high = sorted[n - n / 2];
    return *std::find_if(window.begin(), window.end(), [=](int y) { return low <= y && y <= high; });
}

Samples SortedMedians(const Samples& samples, std::int64_t half) {
    const auto n = static_cast<std::int64_t>(samples.size());
    Samples medians;
    for (std::int64_t i = 0; i < n; ++i) {
        const auto first = samples.begin() + std::max<std::int64_t>(0, i - half);
        const auto last = samples.begin() + std::min(n - 1, i + half);
        medians.push_back(SortedMedian(Samples(first, last + 1)));
    }
    return medians;
}

std::vector<unsigned char> ComparedFlags(const Samples& samples, const Samples& medians,
                                         std::int64_t distance) {
    std::vector<unsigned char> flags;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::int64_t sample = samples[i];
        flags.push_back(sample > medians[i] + distance || sample < medians[i] - distance);
    }
    return flags;
}

enum Family {
    kNoise,
    kFewLevels,
    kDrift,
    kConstant,
    kAscending,
    kDescending,
    kLimits,
    kTwoRegimes,
    kFamilies
};

int SampleOf(Family family, int i, int n, std::mt19937& random) {
    switch (family) {
        case kNoise:
            return static_cast<int>(random());
        case kFewLevels:
            return static_cast<int>(random() % 4) - 2;
        case kDrift:  // slow, quantised, with a spike now and then
            return i / 7 + static_cast<int>(random() % 3) + (random() % 50 == 0 ? 1000000 : 0);
        case kConstant:
            return -7;
        case kAscending:
            return i * 1000 + kMin;
        case kDescending:
            return kMax - i / 2;
        case kLimits:
            return random() % 3 == 0 ? kMin : random() % 2 == 0 ? kMax : 0;
        default:  // far apart first, then between: the middle ranks lie apart in the whole
            return i < n / 2 ? (i % 2 == 0 ? kMin + i : kMax - i) : static_cast<int>(random() % 1000);
    }
}

Samples MakeSamples(Family family, int n, unsigned seed) {
    std::mt19937 random(seed);
    Samples samples;
    for (int i = 0; i < n; ++i) samples.push_back(SampleOf(family, i, n, random));
    return samples;
}

// What the test tells of `samples`, which must be what sorting every window tells.
void ExpectSorted(const Samples& samples, int half, int distance) {
    const Samples expected = SortedMedians(samples, std::max(0, half));
    Samples medians(samples.size(), 12345);
    std::vector<unsigned char> flags(samples.size(), 99);
    MedianFilterSpikeTest(samples.data(), flags.data(), medians.data(), static_cast<int>(samples.size()),
                          half, distance);
    EXPECT_EQ(medians, expected);
    EXPECT_EQ(flags, ComparedFlags(samples, expected, distance));
}

TEST(WindowMedian, IsTheFirstOfTheMiddleOfTheSortedWindow) {
    for (int family = 0; family < kFamilies; ++family) {
        for (unsigned n = 1; n <= 120; ++n) {
            const Samples window = MakeSamples(static_cast<Family>(family), static_cast<int>(n), n);
            EXPECT_EQ(WindowMedian(window.data(), static_cast<int>(n)), SortedMedian(window))
                << "family " << family << " length " << n;
        }
    }
    const int even[] = {4, 1, 3, 2};
    EXPECT_EQ(WindowMedian(even, 4), 3);
    EXPECT_EQ(WindowMedian(even, 2), 4);
    EXPECT_EQ(WindowMedian(even, 0), 0);
    EXPECT_EQ(WindowMedian(nullptr, 3), 0);
}

TEST(MedianFilter, EveryShortSeriesWithEveryHalf) {
    for (int family = 0; family < kFamilies; ++family) {
        for (int n = 1; n <= 40; ++n) {
            const Samples samples = MakeSamples(static_cast<Family>(family), n, static_cast<unsigned>(n));
            for (const int half :
                 {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 19, 20, 39, 40, 41, kMax, kMin}) {
                SCOPED_TRACE(testing::Message() << "family " << family << " n " << n << " half " << half);
                ExpectSorted(samples, half, n);
            }
        }
    }
}

// Series of several blocks, of lengths that leave clipped windows of odd and of even length at their ends.
TEST(MedianFilter, LongSeriesOfManySeeds) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        const auto family = static_cast<Family>(seed % kFamilies);
        const int n = 200 + static_cast<int>(random() % (seed % 10 == 0 ? 5000 : 400));
        const int half = static_cast<int>(random() % (seed % 3 == 0 ? 200 : 30));
        SCOPED_TRACE(testing::Message()
                     << "seed " << seed << " family " << family << " n " << n << " half " << half);
        ExpectSorted(MakeSamples(family, n, seed), half, static_cast<int>(random() % 1000));
        if (HasFailure()) return;
    }
}

// Where the vector instructions are, the sliding window must still be right for the windows they take over.
TEST(MedianFilter, BothWaysAreRightForSmallWindows) {
    for (int half = 2; half <= kLargestSmallHalf; ++half) {
        for (int family = 0; family < kFamilies; ++family) {
            SCOPED_TRACE(testing::Message() << "family " << family << " half " << half);
            const int n = 1500 + half;
            const Samples samples = MakeSamples(static_cast<Family>(family), n, 77);
            Samples expected = SortedMedians(samples, half);
            Samples medians(samples.size());
            ASSERT_TRUE(LargeWindowMedians(samples.data(), medians.data(), n, half));
            EXPECT_EQ(medians, expected);
            std::fill_n(expected.begin(), half, 12345);
            std::fill_n(expected.rbegin(), half, 12345);
            medians.assign(samples.size(), 12345);
            if (SmallWindowMedians(samples.data(), medians.data(), n, half)) {
                EXPECT_EQ(medians, expected);
            }
        }
    }
}

// Windows of thousands of samples, in which the middle jumps over long gaps, against single windows.
TEST(MedianFilter, LargeWindows) {
    constexpr int n = 60000;
    for (int family = 0; family < kFamilies; ++family) {
        const Samples samples = MakeSamples(static_cast<Family>(family), n, 5);
        for (const int half : {1000, 4999, 25000, n}) {
            Samples medians(samples.size());
            ASSERT_TRUE(LargeWindowMedians(samples.data(), medians.data(), n, std::min(half, n - 1)));
            for (int i = 0; i < n; i += 2011) {
                const auto first = samples.begin() + std::max(0, i - half);
                const auto last = samples.begin() + std::min(n, i + half + 1);
                EXPECT_EQ(medians[static_cast<std::size_t>(i)], SortedMedian(Samples(first, last)))
                    << "family " << family << " half " << half << " at " << i;
            }
        }
    }
}

TEST(MedianFilter, FlagsStrictlyBeyondTheDistanceAndWithoutOverflow) {
    const Samples samples = {0, 0, 0, 10, 0, 0, 0, kMax, 0, 0, 0, kMin, 0, 0, 0};
    for (const int distance : {0, 9, 10, 11, kMax - 1, kMax, -1, kMin}) {
        SCOPED_TRACE(distance);
        ExpectSorted(samples, 3, distance);
    }
    const Samples limits = {kMin, kMin, kMin, kMax, kMin, kMin, kMax, kMax, kMax, kMin, kMax, kMax};
    for (const int distance : {kMin, 0, kMax}) ExpectSorted(limits, 2, distance);
}

TEST(MedianFilter, WritesNothingWithoutSamplesOrRoom) {
    int samples[] = {1, 2, 3};
    int medians[] = {7, 7, 7};
    unsigned char flags[] = {7, 7, 7};
    MedianFilterSpikeTest(samples, flags, medians, 0, 1, 1);
    MedianFilterSpikeTest(samples, flags, medians, -3, 1, 1);
    MedianFilterSpikeTest(nullptr, flags, medians, 3, 1, 1);
    MedianFilterSpikeTest(samples, nullptr, medians, 3, 1, 1);
    MedianFilterSpikeTest(samples, flags, nullptr, 3, 1, 1);
    EXPECT_THAT(medians, testing::Each(7));
    EXPECT_THAT(flags, testing::Each(7));
}

}  // namespace
