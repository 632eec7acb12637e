#include "editing/SpikeDetect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "editing/SmoothingSpline.h"
#include "sources/PointStatus.h"
#include "tests/core/Limits.h"

namespace {

constexpr unsigned short kFound = PS_SPIKE | PS_EDITED;

struct Series {
    std::vector<CPoint> points;
    std::vector<int> z;
    std::vector<unsigned short> status;
    int Count() const { return static_cast<int>(points.size()); }
};

Series RandomSeries(unsigned seed) {
    std::mt19937 random(seed);
    Series s;
    int x = 0;
    for (int i = 0; i < 80; ++i) {
        x += 1 + static_cast<int>(random() % 9);
        s.points.emplace_back(x, static_cast<int>(random() % 200) + (random() % 15 == 0 ? 500 : 0));
        s.z.push_back(3 * i + static_cast<int>(random() % 5));
        constexpr unsigned short kWords[] = {0, 0, 0, PS_SPIKE, PS_DELETED, PS_DELETED | kFound, PS_MOVED};
        s.status.push_back(kWords[random() % std::size(kWords)]);
    }
    return s;
}

struct Expected {
    bool found = false;
    std::vector<unsigned short> status;
    std::vector<CPoint> band;
};

// The rule taken literally: a copy is smoothed without the points that are not tested, and compared.
Expected DetectSlowly(const Series& s, bool useZ, const std::vector<long>* indices, int mode,
                      double waveLength, int window) {
    Expected result{false, s.status, {}};
    std::vector<unsigned short> work = s.status;
    std::vector<bool> tested(s.points.size(), indices == nullptr);
    for (std::size_t i = 0; indices != nullptr && i < work.size(); ++i) {
        const bool isListed = std::find(indices->begin(), indices->end(), i) != indices->end();
        tested[i] = isListed == (mode == 1);
        if (!tested[i]) work[i] |= PS_DELETED;
    }
    std::vector<CPoint> smooth = s.points;
    if (SmoothPoints(smooth.data(), useZ ? s.z.data() : nullptr, s.Count(), nullptr, s.Count(), waveLength, 1,
                     2, 10, work.data(), nullptr, 0) == 0) {
        return result;
    }
    std::vector<CPoint> below;
    for (std::size_t i = 0; i < work.size(); ++i) {
        const bool takesPart = (work[i] & PS_DELETED) == 0;
        const double distance = std::hypot(s.points[i].x - smooth[i].x, s.points[i].y - smooth[i].y);
        if (takesPart) result.band.emplace_back(smooth[i].x, smooth[i].y + window);
        if (takesPart) below.insert(below.begin(), CPoint(smooth[i].x, smooth[i].y - window));
        if (!takesPart && indices == nullptr) continue;
        result.status[i] &= static_cast<unsigned short>(~PS_SPIKE);
        if (!takesPart || !(distance > window)) continue;
        result.status[i] |= kFound;
        result.found = true;
    }
    result.band.insert(result.band.end(), below.begin(), below.end());
    return result;
}

TEST(SpikeDetect, FollowsTheRuleOnRandomSeries) {
    const CPoint untouched(-7, -7);
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Series s = RandomSeries(seed);
        std::vector<long> indices;
        for (long i = static_cast<long>(seed % 80); i < 80; i += 1 + static_cast<long>(seed) % 3) {
            indices.push_back(i);
        }
        const bool useZ = seed % 4 == 0;
        const std::vector<long>* listed = seed % 3 == 0 ? nullptr : &indices;
        const int mode = static_cast<int>(seed % 2);
        const int window = static_cast<int>(seed * 3 % 250);
        const Expected expected = DetectSlowly(s, useZ, listed, mode, seed % 40, window);
        std::vector<CPoint> band(160, untouched);
        int bandCount = 0;
        const std::vector<CPoint> before = s.points;
        const bool found = SpikeDetect(s.points.data(), useZ ? s.z.data() : nullptr, s.Count(),
                                       listed ? listed->data() : nullptr,
                                       listed ? static_cast<int>(listed->size()) : s.Count(), seed % 40,
                                       window, mode, 2, 10, band.data(), &bandCount, s.status.data());
        EXPECT_EQ(found, expected.found) << seed;
        EXPECT_EQ(s.status, expected.status) << seed;
        EXPECT_EQ(s.points, before) << seed;
        ASSERT_EQ(bandCount, useZ ? 0 : static_cast<int>(expected.band.size())) << seed;
        EXPECT_EQ(band[static_cast<std::size_t>(bandCount) % 160] == untouched, bandCount < 160) << seed;
        band.resize(static_cast<std::size_t>(bandCount));
        EXPECT_TRUE(useZ || band == expected.band) << seed;
    }
}

TEST(SpikeDetect, APointExactlyAWindowAwayIsNoSpike) {
    // A very long wave gives the least-squares line; that of these points is y = 2.
    const std::vector<CPoint> points = {{0, 0}, {1, 4}, {2, 4}, {3, 0}};
    std::vector<unsigned short> status(4, PS_SPIKE);
    EXPECT_FALSE(
        SpikeDetect(points.data(), nullptr, 4, nullptr, 4, 1e9, 2, 1, 1, 1, nullptr, nullptr, status.data()));
    EXPECT_EQ(status, std::vector<unsigned short>(4, 0));
    EXPECT_TRUE(
        SpikeDetect(points.data(), nullptr, 4, nullptr, 4, 1e9, 1, 1, 1, 1, nullptr, nullptr, status.data()));
    EXPECT_EQ(status, std::vector<unsigned short>(4, kFound));
}

TEST(SpikeDetect, WildIndicesAndTheLimitsOfStoredValuesStayInBounds) {
    std::vector<CPoint> points;
    for (int i = 0; i < 12; ++i) points.emplace_back(i, i % 2 ? kMax : -kMax - 1);
    std::vector<unsigned short> status(12);
    std::vector<CPoint> band(24);
    int bandCount = 0;
    const long indices[] = {11, 2, 5, 5, -3, 12, 7, 1L << 40, 0};
    EXPECT_TRUE(SpikeDetect(points.data(), nullptr, 12, indices, 9, 50, 1000, 1, 1, 1, band.data(),
                            &bandCount, status.data()));
    EXPECT_EQ(bandCount, 10);
    for (const int i : {1, 3, 4, 6, 8, 9, 10}) EXPECT_EQ(status[static_cast<std::size_t>(i)], 0) << i;
    EXPECT_FALSE(SpikeDetect(points.data(), nullptr, 12, nullptr, 12, 0, kMax, 1, 1, 1, band.data(),
                             &bandCount, status.data()));
    EXPECT_EQ(bandCount, 24);
    EXPECT_EQ(band[1].y, kMax);
}

TEST(SpikeDetect, RefusalsChangeNothing) {
    const Series s = RandomSeries(1);
    const long three[] = {1, 2, 3};
    const struct {
        const char* why;
        int count;
        const long* indices;
        int indexCount, mode;
        double waveLength, tScale;
    } cases[] = {
        {"no points", 0, nullptr, 1, 1, 9, 1},        {"no indices", 80, three, 0, 1, 9, 1},
        {"three points", 80, three, 3, 1, 9, 1},      {"unknown mode", 80, three, 3, 2, 9, 1},
        {"negative wave", 80, nullptr, 80, 1, -1, 1}, {"undefined scale", 80, nullptr, 80, 1, 9, kNaN}};
    for (const auto& one : cases) {
        Series t = s;
        int bandCount = 5;
        std::vector<CPoint> band(160);
        EXPECT_FALSE(SpikeDetect(t.points.data(), nullptr, one.count, one.indices, one.indexCount,
                                 one.waveLength, 1, one.mode, one.tScale, 1, band.data(), &bandCount,
                                 t.status.data()))
            << one.why;
        EXPECT_EQ(t.status, s.status) << one.why;
        EXPECT_EQ(bandCount, 5) << one.why;
    }
    EXPECT_FALSE(
        SpikeDetect(s.points.data(), nullptr, 80, nullptr, 80, 9, 1, 1, 1, 1, nullptr, nullptr, nullptr));
}

}  // namespace
