#include "editing/CBigRegion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/core/Limits.h"

namespace {

__extension__ typedef __int128 Wide;

using Points = std::vector<CPoint>;

struct FarVertex {
    std::int64_t x;
    std::int64_t y;
};

// The rule for one edge, case by case.
template <class Vertex>
bool CrossesPlainly(Vertex a, Vertex b, CPoint p) {
    if (a.y == b.y) return false;
    const Vertex low = a.y < b.y ? a : b;
    const Vertex high = a.y < b.y ? b : a;
    if (p.y == low.y) return p.x <= low.x;
    if (p.y == high.y || p.y < low.y || p.y > high.y) return false;
    if (p.x < low.x && p.x < high.x) return true;
    if (p.x > low.x && p.x > high.x) return false;
    return (Wide{high.x} - low.x) * (Wide{p.y} - low.y) > (Wide{p.x} - low.x) * (Wide{high.y} - low.y);
}

template <class Vertices>
bool InsidePlainly(const Vertices& polygon, CPoint p) {
    if (polygon.size() < 2) return false;
    bool odd = CrossesPlainly(polygon.back(), polygon.front(), p);
    for (std::size_t i = 1; i < polygon.size(); ++i) odd ^= CrossesPlainly(polygon[i - 1], polygon[i], p);
    return odd;
}

// Both operations against the plain rule; the many points are repeated until a grid pays.
void ExpectSameAnswers(const Points& polygon, Points points, const std::string& name) {
    const CBigRegion region(polygon.data(), static_cast<int>(polygon.size()));
    const std::size_t distinct = points.size();
    const std::size_t enough = 25000 / std::max<std::size_t>(polygon.size(), 1);
    while (points.size() < enough) points.push_back(points[points.size() - distinct]);
    std::vector<unsigned char> inside(points.size() + 1, 9);
    region.PtsInRegion(points.data(), static_cast<long>(points.size()), inside.data());
    EXPECT_EQ(inside.back(), 9);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool expected = InsidePlainly(polygon, points[i]);
        if (i < distinct) {
            ASSERT_EQ(region.PtInRegion(points[i]), expected)
                << name << " " << points[i].x << "," << points[i].y;
        }
        ASSERT_EQ(inside[i], expected) << name << " " << points[i].x << "," << points[i].y;
    }
}

// Points in the box of the polygon and around it, all its vertices and their neighbours.
Points ProbesOf(const Points& polygon, LONG low, LONG high, std::mt19937& random, int n) {
    std::uniform_int_distribution<LONG> any(low, high);
    Points probes;
    for (int i = 0; i < n; ++i) probes.emplace_back(any(random), any(random));
    for (const CPoint& vertex : polygon)
        for (LONG dx = -1; dx <= 1; ++dx)
            for (LONG dy = -1; dy <= 1; ++dy) probes.push_back(vertex + CPoint(dx, dy));
    return probes;
}

TEST(CBigRegion, SelfIntersectingPolygonsOfAnySizeFollowTheRule) {
    std::mt19937 random(11);
    const LONG extents[] = {3, 8, 40, 300, 70000, 1000000000, kMax};
    for (int round = 0; round < 400; ++round) {
        const LONG extent = extents[static_cast<std::size_t>(round) % std::size(extents)];
        const LONG low = extent == kMax ? kMin : -extent / 2;
        const LONG high = extent == kMax ? kMax : extent / 2;
        std::uniform_int_distribution<LONG> any(low, high);
        Points polygon;
        for (unsigned n = random() % 30; n > 0; --n) {
            polygon.emplace_back(any(random), any(random));
            if (random() % 4 == 0) polygon.push_back(polygon.back());
            if (random() % 4 == 0) polygon.emplace_back(any(random), polygon.back().y);
            if (random() % 4 == 0) polygon.emplace_back(polygon.back().x, any(random));
        }
        ExpectSameAnswers(polygon, ProbesOf(polygon, low, high, random, 800),
                          "round " + std::to_string(round));
    }
}

TEST(CBigRegion, OutlinesWithManyVerticesFollowTheRule) {
    std::mt19937 random(12);
    for (const int vertices : {100, 1000}) {
        for (const double noise : {0.0, 0.02, 0.5}) {
            Points outline;
            std::uniform_real_distribution<double> shrink(1.0 - noise, 1.0);
            for (int i = 0; i < vertices; ++i) {
                const double angle = 6.283185307179586 * i / vertices;
                const double radius = 1e6 * (noise > 0 ? shrink(random) : 1.0);
                outline.emplace_back(RoundHalfAway(radius * std::cos(angle)),
                                     RoundHalfAway(radius * std::sin(angle)));
            }
            ExpectSameAnswers(outline, ProbesOf(outline, -1100000, 1100000, random, 3000),
                              std::to_string(vertices) + " vertices, noise " + std::to_string(noise));
        }
    }
}

// Every integer point around small polygons: borders, corners and cells of one unit.
TEST(CBigRegion, EveryPointAroundSmallPolygonsFollowsTheRule) {
    const Points polygons[] = {
        {},
        {{0, 0}},
        {{-3, -3}, {4, 5}},
        {{2, 2}, {2, 2}, {2, 2}},
        {{0, 0}, {5, 0}, {3, 0}},
        {{0, 0}, {6, 0}, {6, 6}, {0, 6}},
        {{0, 0}, {6, 6}, {6, 0}, {0, 6}},
        {{0, 0}, {3, 6}, {6, 0}, {3, 2}},
        {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {2, 4}, {4, 4}, {4, 2}, {2, 2}}};
    for (std::size_t k = 0; k < std::size(polygons); ++k) {
        Points points;
        for (LONG x = -10; x <= 10; ++x)
            for (LONG y = -10; y <= 10; ++y) points.emplace_back(x, y);
        for (int copies = 0; copies < 4; ++copies)
            points.insert(points.end(), points.begin(), points.begin() + 441);
        ExpectSameAnswers(polygons[k], points, "polygon " + std::to_string(k));
    }
}

TEST(CBigRegion, VerticesOf64BitsFollowTheRule) {
    std::mt19937_64 random(13);
    for (int round = 0; round < 60; ++round) {
        const int reach = 33 + round % 30;  // the plain rule multiplies up to here
        std::vector<FarVertex> polygon(3 + random() % 9);
        CBigRegion region;
        ASSERT_TRUE(region.SetSize(static_cast<int>(polygon.size())));
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const auto any = [&] { return static_cast<std::int64_t>(random()) >> (63 - reach); };
            polygon[i] = {any(), i % 3 == 1 ? polygon[i - 1].y : any()};
            region.SetVertex(static_cast<int>(i), polygon[i].x, polygon[i].y);
        }
        Points points;
        for (int i = 0; i < 9000; ++i)
            points.emplace_back(static_cast<LONG>(random()), static_cast<LONG>(random()));
        std::vector<unsigned char> inside(points.size());
        region.PtsInRegion(points.data(), static_cast<long>(points.size()), inside.data());
        for (std::size_t i = 0; i < points.size(); ++i)
            ASSERT_EQ(inside[i], InsidePlainly(polygon, points[i])) << round << " " << i;
    }
    // The half plane above the diagonal, its vertices at the ends of the range.
    constexpr std::int64_t kLow = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kHigh = std::numeric_limits<std::int64_t>::max();
    CBigRegion above;
    ASSERT_TRUE(above.SetSize(3));
    above.SetVertex(0, kLow, kLow);
    above.SetVertex(1, kHigh, kHigh);
    above.SetVertex(2, kLow, kHigh);
    for (const LONG v : {kMin + 1, -7, 0, 7, kMax - 1}) {
        EXPECT_TRUE(above.PtInRegion({v - 1, v})) << v;
        EXPECT_FALSE(above.PtInRegion({v, v})) << v;
        EXPECT_FALSE(above.PtInRegion({v + 1, v})) << v;
    }
}

TEST(CBigRegion, TheFullRangeIsExactOnItsDiagonal) {
    const Points halfPlane = {{kMin, kMin}, {kMax, kMax}, {kMin, kMax}};
    Points diagonal;
    for (LONG v = -2000; v < 2000; ++v)
        for (const LONG off : {-1, 0, 1}) diagonal.emplace_back(v * 1000001 + off, v * 1000001);
    ExpectSameAnswers(halfPlane, diagonal, "diagonal");
}

}  // namespace
