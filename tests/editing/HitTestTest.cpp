#include <climits>

#include "tests/editing/EditingFixture.h"

namespace {

// In a context of one logical unit per pixel at 96 pixels per inch: a tolerance t opens a window of t * 35 *
// 0.01 mm on the x axis, which is 1.32 pixels for each t (13 for 10), and a circle of t pixels.
class HitTest : public EditingTest {
  protected:
    long Hit(const std::vector<CPoint>& points, CPoint at, int tolerance, std::vector<int> deleted = {}) {
        FullSource series(points);
        for (const int i : deleted) series.GetStatus()[i] = PS_DELETED;
        data.SelectPointSource(&series);
        place = at;
        const long index = data.HitTest(&dc, place, tolerance);
        data.SelectPointSource(nullptr);
        return index;
    }

    CDC dc;
    CXYEditData data;
    CPoint place;
};

TEST_F(HitTest, FindsTheNearestWithinTheTolerance) {
    const auto row = AtTens({0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Hit(row, {31, 2}, 10), 3);
    EXPECT_EQ(place, CPoint(30, 0)) << "the place becomes the point's";
    EXPECT_EQ(Hit(row, {36, 2}, 10), 4);
    EXPECT_EQ(Hit(row, {30, 11}, 10), -1);
    EXPECT_EQ(place, CPoint(30, 11)) << "a miss keeps the place";
    EXPECT_EQ(Hit(row, {30, 10}, 10), 3) << "the tolerance itself is near enough";
    EXPECT_EQ(Hit(row, {-9, 0}, 10), 0);
    EXPECT_EQ(Hit(row, {79, 0}, 10), 7);
    EXPECT_EQ(Hit(row, {81, 0}, 10), -1);
}

TEST_F(HitTest, AToleranceOfZeroNeedsTheVeryPixel) {
    const auto row = AtTens({5, 5, 5});
    EXPECT_EQ(Hit(row, {10, 5}, 0), 1);
    EXPECT_EQ(Hit(row, {10, 6}, 0), -1);
    EXPECT_EQ(Hit(row, {11, 5}, 0), -1);
    EXPECT_EQ(Hit(row, {10, 5}, -1), -1);
}

TEST_F(HitTest, TiesGoToTheOneFoundFirstScanningDownThenUp) {
    EXPECT_EQ(Hit(AtTens({0, 0, 0, 0, 0}), {25, 0}, 10), 2) << "the lower of two";
    const std::vector<CPoint> pile{{0, 0}, {10, 4}, {10, -4}, {10, 4}, {20, 0}};
    EXPECT_EQ(Hit(pile, {10, 0}, 10), 2) << "the middle, where the search ends";
    EXPECT_EQ(Hit(pile, {10, 0}, 10, {2}), 1) << "then down before up";
    EXPECT_EQ(Hit(pile, {10, 0}, 10, {1, 2}), 3);
}

TEST_F(HitTest, DeletedPointsAreSkippedAndDoNotEndTheScan) {
    const std::vector<CPoint> close{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}};
    EXPECT_EQ(Hit(close, {3, 0}, 10, {1, 2, 3, 4}), 5);
    EXPECT_EQ(Hit(close, {3, 0}, 10, {1, 2, 3, 4, 5}), 0);
    EXPECT_EQ(Hit(close, {3, 0}, 10, {0, 1, 2, 3, 4, 5}), -1);
}

TEST_F(HitTest, ShortSeriesAndTheLimits) {
    EXPECT_EQ(Hit({}, {0, 0}, 10), -1);
    EXPECT_EQ(Hit({{7, 7}}, {7, 7}, 10), 0);
    const std::vector<CPoint> apart{{0, 0}, {1000, 0}};
    EXPECT_EQ(Hit(apart, {1, 0}, 10), 0);
    EXPECT_EQ(Hit(apart, {999, 0}, 10), 1);
    EXPECT_EQ(Hit(apart, {500, 0}, 10), -1);
    const std::vector<CPoint> ends{{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}};
    EXPECT_EQ(Hit(ends, {INT_MAX, INT_MAX}, 10), 1);
    EXPECT_EQ(Hit(ends, {INT_MIN, INT_MAX}, INT_MAX), -1);
    EXPECT_EQ(data.HitTest(nullptr, place, 10), -1);
}

TEST_F(HitTest, DistancesCountOnTheDevice) {
    // Ten pixels for a unit of x, a tenth for a unit of y.
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(10, 1000);
    dc.SetViewportExt(100, 100);
    const std::vector<CPoint> points{{0, 0}, {1, 60}, {2, 0}};
    EXPECT_EQ(Hit(points, {1, 0}, 10), 1) << "six pixels away, the others ten";
    EXPECT_EQ(Hit(points, {1, 0}, 5), -1);
}

}  // namespace
