// Polylines: what is drawn after the reduction is what every segment drawn by itself leaves, pixel for pixel.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/Selected.h"
#include "tests/core/Limits.h"
#include "tests/gdi/DrawingTest.h"

namespace {

constexpr unsigned short kDeleted = 1;

struct Shape {
    const char* name;
    std::function<CPoint(int i, int count, std::mt19937& random)> at;
};

int Any(std::mt19937& random, int low, int high) { return std::uniform_int_distribution(low, high)(random); }

const Shape kShapes[] = {
    {"noise", [](int i, int, std::mt19937& r) { return CPoint(i * 100, Any(r, 0, 1000000)); }},
    {"descending noise",
     [](int i, int n, std::mt19937& r) { return CPoint((n - i) * 100, Any(r, 0, 1000000)); }},
    {"constant", [](int i, int, std::mt19937&) { return CPoint(i * 100, 500000); }},
    {"one point", [](int, int, std::mt19937&) { return CPoint(300000, 500000); }},
    {"one column", [](int, int, std::mt19937& r) { return CPoint(300000, Any(r, 300000, 400000)); }},
    {"walk",
     [y = 500000](int i, int, std::mt19937& r) mutable { return CPoint(i * 100, y += Any(r, -900, 900)); }},
    {"steps", [](int i, int, std::mt19937&) { return CPoint(i * 100, i / 1000 % 2 * 900000); }},
    {"zigzag near one border",
     [](int i, int, std::mt19937& r) { return CPoint(300000 + Any(r, 0, 900), i * 100); }},
    {"anywhere",
     [](int, int, std::mt19937& r) { return CPoint(Any(r, -200000, 1200000), Any(r, -200000, 1200000)); }},
    {"extremes",
     [](int i, int, std::mt19937& r) {
         if (i % 500 == 0) return CPoint(kMin, kMax);
         if (i % 500 == 1) return CPoint(kMax, kMin);
         return CPoint(Any(r, kMin, kMax) / (i % 7 ? 4000 : 1), Any(r, kMin, kMax));
     }},
};

constexpr MappedView kViews[] = {
    {"whole", {0, 0}, {1000000, 1000000}, {10, 290}, {280, -280}},
    {"mirrored", {0, 0}, {1000000, 1000000}, {290, 10}, {-280, 280}},
    {"negative window", {1000000, 1000000}, {-1000000, -1000000}, {0, 0}, {300, 300}},
    {"halves", {0, 0}, {2000, 2000}, {0, 0}, {1, 1}},
    {"part", {290000, 450000}, {40000, 60000}, {0, 0}, {300, 300}},
    {"turning inside", {300000, 500000}, {3000, -3000}, {150, 150}, {7, 7}},
    {"deep", {299990, 499990}, {100, 7}, {0, 0}, {3000, 300}},
    {"deepest", {300000, 500000}, {1, -1}, {150, 150}, {kMax, kMax}},
    {"all 32 bits", {kMin, kMin}, {kMax, kMax}, {0, 0}, {150, 150}},
    {"far away", {kMax, kMax}, {1, 1}, {0, 0}, {1, 1}},
};

std::vector<CPoint> Points(const Shape& shape, int count) {
    std::mt19937 random(7);
    const auto at = shape.at;
    std::vector<CPoint> points;
    for (int i = 0; i < count; ++i) points.push_back(at(i, count, random));
    return points;
}

std::vector<unsigned short> Status(int pattern, int count) {
    std::mt19937 random(11);
    std::vector<unsigned short> status(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const bool deleted = pattern <= 0   ? false
                             : pattern == 1 ? Any(random, 0, 9) == 0
                             : pattern == 2 ? i / 300 % 2 == 0
                                            : i > 30;
        status[static_cast<std::size_t>(i)] = static_cast<unsigned short>((deleted ? kDeleted : 0) | 0x8040);
    }
    return status;
}

// Draws into a fresh picture of 300 by 300 pixels.
std::unique_ptr<CBitmapEx> Drawn(const MappedView& view, const std::function<void(CDC&)>& draw) {
    auto picture = NewPicture(300, 300);
    CDC dc(*picture);
    UseView(dc, view);
    CPen pen(PS_SOLID, 0, RGB(255, 0, 0));
    const Selected usePen(dc, pen);
    draw(dc);
    return picture;
}

// Without a filter (pattern -1) and with one; without a pyramid and with one of the same or of all points.
TEST(Polyline, ReducedAndFilteredIsThePictureOfEverySegment) {
    constexpr int kCount = 10001;
    for (const Shape& shape : kShapes)
        for (int pattern = -1; pattern < 4; ++pattern) {
            const auto points = Points(shape, kCount);
            const auto status = Status(pattern, kCount);
            std::vector<CPoint> left;
            for (std::size_t i = 0; i < points.size(); ++i)
                if (!(status[i] & kDeleted)) left.push_back(points[i]);
            const StatusFilter which =
                pattern < 0 ? StatusFilter{} : StatusFilter{status.data(), kDeleted, 0};
            const PointPyramid own(points.data(), kCount, which);
            const PointPyramid others(points.data(), kCount, {});
            for (const MappedView& view : kViews) {
                const auto segments = Drawn(view, [&](CDC& dc) {
                    dc.MoveTo(left[0]);
                    for (const CPoint& p : left) dc.LineTo(p);
                });
                for (const PointPyramid* pyramid :
                     {static_cast<const PointPyramid*>(nullptr), &own, &others}) {
                    const auto filtered =
                        Drawn(view, [&](CDC& dc) { dc.Polyline(points.data(), kCount, which, pyramid); });
                    EXPECT_EQ(DifferingPixels(*filtered, *segments), 0)
                        << shape.name << ", " << view.name << ", pattern " << pattern;
                }
            }
        }
}

// The end of a line is the one pixel that is not drawn, unless the line passes there before.
TEST(Polyline, LeavesOutItsLastPixelHoweverManyPointsShareIt) {
    const MappedView pixels{"", {0, 0}, {1, 1}, {0, 0}, {1, 1}};
    std::vector<CPoint> points(5000, CPoint(10, 10));
    EXPECT_EQ(PixelsUnlike(*Drawn(pixels, [&](CDC& dc) { dc.Polyline(points.data(), 5000); }), kWhite), 0);
    points[0] = {10, 5};
    auto picture = Drawn(pixels, [&](CDC& dc) { dc.Polyline(points.data(), 5000); });
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 5);
    points[4000] = {10, 7};
    picture = Drawn(pixels, [&](CDC& dc) { dc.Polyline(points.data(), 5000); });
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 6);
}

TEST(Polyline, NothingTakenDrawsNothing) {
    const std::vector<CPoint> points = Points(kShapes[0], 6000);
    const std::vector<unsigned short> status(6000, kDeleted);
    const auto picture = Drawn(kViews[0], [&](CDC& dc) {
        EXPECT_TRUE(dc.Polyline(points.data(), 6000, {status.data(), kDeleted, 0}));
        EXPECT_FALSE(dc.Polyline(points.data(), 1));
        EXPECT_FALSE(dc.Polyline(nullptr, 5));
    });
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 0);
}

}  // namespace
