#include "editing/Interpolate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include "sources/PointStatus.h"

namespace {

using Points = std::vector<CPoint>;
using Words = std::vector<unsigned short>;

int Interpolate(Points& points, Words& status, const std::vector<long>& indices, double scale = 1.0) {
    return InterpolatePoints(points.data(), static_cast<long>(points.size()), indices.data(),
                             static_cast<long>(indices.size()), scale,
                             status.empty() ? nullptr : status.data());
}

std::vector<LONG> Ys(const Points& points) {
    std::vector<LONG> ys;
    for (const CPoint& point : points) ys.push_back(point.y);
    return ys;
}

TEST(Interpolate, TakesTheLineBetweenSupportsAndTheNearestOneBeyondThem) {
    const struct {
        std::vector<long> indices;
        Words status;
        std::vector<LONG> expected;
    } cases[] = {{{1}, {}, {0, 50, 100, 7}},
                 {{0}, {}, {500, 500, 100, 7}},
                 {{2, 3}, {}, {0, 500, 500, 500}},
                 {{0, 1}, {0, 0, PS_DELETED, 0}, {7, 7, 100, 7}},
                 {{1, 2}, {0, 0, PS_DELETED, 0}, {0, 2, 5, 7}}};
    for (const auto& one : cases) {
        Points points = {{0, 0}, {10, 500}, {20, 100}, {30, 7}};
        Words status = one.status;
        EXPECT_EQ(Interpolate(points, status, one.indices), 1);
        EXPECT_EQ(Ys(points), one.expected);
        for (std::size_t i = 0; i < status.size(); ++i) {
            const bool listed = std::count(one.indices.begin(), one.indices.end(), static_cast<long>(i)) > 0;
            EXPECT_EQ(status[i], one.status[i] | (listed ? PS_INTERPOLATED | PS_EDITED : 0));
        }
    }
}

TEST(Interpolate, RefusesAFullListAndChangesNothingWithoutSupports) {
    Points points = {{0, 1}, {1, 2}, {2, 3}};
    Words status = {0, 0, PS_DELETED};
    const Points before = points;
    EXPECT_EQ(Interpolate(points, status, {0, 1, 2}), 0);
    EXPECT_EQ(Interpolate(points, status, {}), 0);
    EXPECT_EQ(Interpolate(points, status, {0, 1}), 0);
    EXPECT_EQ(points, before);
    EXPECT_EQ(status, (Words{0, 0, PS_DELETED}));
}

TEST(Interpolate, ExtremesEqualPositionsAndForeignIndicesGiveFiniteValues) {
    constexpr LONG kMax = std::numeric_limits<LONG>::max();
    constexpr LONG kMin = std::numeric_limits<LONG>::min();
    Words none;
    Points wide = {{kMin, kMin}, {0, 5}, {kMax, kMax}};
    EXPECT_EQ(Interpolate(wide, none, {1}), 1);
    EXPECT_EQ(wide[1].y, 0);  // the two shares are equal and opposite
    Points equal = {{4, 10}, {4, 11}, {4, 12}};
    EXPECT_EQ(Interpolate(equal, none, {1}), 1);
    EXPECT_EQ(equal[1].y, 0);
    Points foreign = {{0, 0}, {1, 9}, {2, 4}, {3, 9}};
    EXPECT_EQ(Interpolate(foreign, none, {-3, 1, 77}), 1);
    EXPECT_EQ(Ys(foreign), (std::vector<LONG>{0, 2, 4, 9}));
    for (const double scale : {0.0, std::numeric_limits<double>::quiet_NaN()}) {
        Points points = {{0, 3}, {1, 9}, {2, 4}};
        EXPECT_EQ(Interpolate(points, none, {1}, scale), 1);
        EXPECT_EQ(points[1].y, 0);
    }
    for (const auto& indices : {std::vector<long>{3, 1, 2}, std::vector<long>{1, 1, 0}}) {
        Points points = {{0, 3}, {1, 9}, {2, 4}, {3, 8}};
        EXPECT_EQ(Interpolate(points, none, indices), 1);
    }
}

// The rule as it reads: a list of all supports from which those behind us are taken away.
void Plainly(Points& points, Words& status, const std::vector<long>& indices, double scale) {
    std::vector<std::size_t> supports;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (!(status[i] & PS_DELETED) && !std::count(indices.begin(), indices.end(), static_cast<long>(i)))
            supports.push_back(i);
    for (const long listed : indices) {
        const auto k = static_cast<std::size_t>(listed);
        const auto above =
            std::find_if(supports.begin(), supports.end(), [&](std::size_t s) { return s > k; });
        if (supports.empty()) continue;
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
        if (!indices.empty() && indices.size() < n) Plainly(expected, expectedStatus, indices, scale);
        Interpolate(points, status, indices, scale);
        EXPECT_EQ(points, expected) << "round " << round;
        EXPECT_EQ(status, expectedStatus) << "round " << round;
    }
}

}  // namespace
