#include "editing/Interpolate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "sources/PointStatus.h"
#include "tests/core/Limits.h"

namespace {

using Points = std::vector<CPoint>;
using Words = std::vector<unsigned short>;

int Interpolate(Points& points, Words& status, const std::vector<long>& indices, double scale = 1.0) {
    return InterpolatePoints(points.data(), static_cast<long>(points.size()), indices.data(),
                             static_cast<long>(indices.size()), scale,
                             status.empty() ? nullptr : status.data());
}

TEST(Interpolate, ExtremesEqualPositionsAndForeignIndicesGiveFiniteValues) {
    Words none;
    Points wide = {{kMin, kMin}, {0, 5}, {kMax, kMax}};
    EXPECT_EQ(Interpolate(wide, none, {1}), 1);
    EXPECT_EQ(wide[1].y, 0);  // the two shares are equal and opposite
    Points equal = {{4, 10}, {4, 11}, {4, 12}};
    EXPECT_EQ(Interpolate(equal, none, {1}), 1);
    EXPECT_EQ(equal[1].y, 0);
    Points foreign = {{0, 0}, {1, 9}, {2, 4}, {3, 9}};
    EXPECT_EQ(Interpolate(foreign, none, {-3, 1, 77}), 1);
    EXPECT_EQ(foreign, (Points{{0, 0}, {1, 2}, {2, 4}, {3, 9}}));
    for (const double scale : {0.0, kNaN}) {
        Points points = {{0, 3}, {1, 9}, {2, 4}};
        EXPECT_EQ(Interpolate(points, none, {1}, scale), 1);
        EXPECT_EQ(points[1].y, 0);
    }
    for (const auto& indices : {std::vector<long>{3, 1, 2}, std::vector<long>{1, 1, 0}}) {
        Points points = {{0, 3}, {1, 9}, {2, 4}, {3, 8}};
        EXPECT_EQ(Interpolate(points, none, indices), 1);
    }
}

// The rule as it reads: each listed point between its neighbours in the list of all supports.
int Plainly(Points& points, Words& status, const std::vector<long>& indices, double scale) {
    std::vector<std::size_t> supports;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (!(status[i] & PS_DELETED) && !std::count(indices.begin(), indices.end(), static_cast<long>(i)))
            supports.push_back(i);
    if (supports.empty() || indices.empty() || indices.size() == points.size()) return 0;
    for (const long listed : indices) {
        const auto k = static_cast<std::size_t>(listed);
        const auto above =
            std::find_if(supports.begin(), supports.end(), [&](std::size_t s) { return s > k; });
        if (above == supports.begin()) {
            points[k].y = points[*above].y;
        } else if (above == supports.end()) {
            points[k].y = points[supports.back()].y;
        } else {
            const CPoint p = points[*(above - 1)];
            const CPoint n = points[*above];
            const double span = double{1} * n.x - p.x;
            const double real = span == 0 ? 0
                                          : p.y / scale * (double{1} * n.x - points[k].x) / span +
                                                n.y / scale * (double{1} * points[k].x - p.x) / span;
            points[k].y = RoundHalfAway(scale * real);
        }
        status[k] |= PS_INTERPOLATED | PS_EDITED;
    }
    return 1;
}

TEST(Interpolate, RandomSeriesFollowThePlainRule) {
    std::mt19937 random(3);
    for (int round = 0; round < 500; ++round) {
        const unsigned n = 1 + random() % 50;
        const unsigned density = 1 + random() % 4;
        Points points;
        Words status;
        std::vector<long> indices;
        for (unsigned i = 0; i < n; ++i) {
            points.emplace_back(static_cast<LONG>(random() % 30), static_cast<LONG>(random()));
            status.push_back(random() % 3 == 0 ? PS_DELETED : 0);
            if (random() % 5 < density) indices.push_back(static_cast<long>(i));
        }
        Points expected = points;
        Words expectedStatus = status;
        const double scale = round % 2 ? 1.0 : 0.37;
        const int changed = Plainly(expected, expectedStatus, indices, scale);
        EXPECT_EQ(Interpolate(points, status, indices, scale), changed) << "round " << round;
        EXPECT_EQ(points, expected) << "round " << round;
        EXPECT_EQ(status, expectedStatus) << "round " << round;
    }
}

}  // namespace
