// Conversion between logical and device coordinates.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "platform/gdi/CDC.h"
#include "platform/gdi/Mapping.h"
#include "platform/gdi/PixelAxis.h"
#include "tests/core/Limits.h"

namespace {

__extension__ using Exact = __int128;

// The rule written out in wide arithmetic: half away from zero, then saturated.
std::int32_t Expected(std::int32_t x, const AxisMapping& m) {
    Exact n = (Exact{x} - m.windowOrg) * m.viewportExt, d = m.windowExt;
    if (d < 0) n = -n, d = -d;
    const Exact rounded = n < 0 ? -((-2 * n + d) / (2 * d)) : (2 * n + d) / (2 * d);
    const Exact device = rounded + m.viewportOrg;
    return device > kMax ? kMax : device < kMin ? kMin : static_cast<std::int32_t>(device);
}

// Small, medium and huge numbers of either sign, and the limits; never 0.
std::int32_t AnyNumber(std::mt19937& random) {
    static constexpr std::int32_t kReach[] = {3, 100, 5000, 1000000, kMax};
    if (random() % 16 == 0) return random() % 2 ? kMin : kMax;
    const std::int32_t reach = kReach[random() % 5];
    const std::int32_t number = std::uniform_int_distribution(-reach, reach)(random);
    return number ? number : 1;
}

AxisMapping AnyMapping(std::mt19937& random) {
    return {AnyNumber(random), AnyNumber(random), AnyNumber(random), AnyNumber(random)};
}

TEST(Mapping, RoundsHalfAwayFromZeroAndSaturates) {
    std::mt19937 random(1);
    for (int round = 0; round < 200000; ++round) {
        const AxisMapping m = AnyMapping(random);
        const std::int32_t x = AnyNumber(random);
        ASSERT_EQ(m.ToDevice(x), Expected(x, m))
            << x << ": " << m.windowOrg << ' ' << m.windowExt << ' ' << m.viewportOrg << ' ' << m.viewportExt;
    }
}

TEST(Mapping, PixelAxisIsTheSameConversion) {
    std::mt19937 random(2);
    int known = 0;
    for (int round = 0; round < 20000; ++round) {
        AxisMapping m = AnyMapping(random);
        if (round % 2) m.viewportOrg %= 2000;
        const int low = static_cast<int>(random() % 50), high = low + static_cast<int>(random() % 31000);
        const PixelAxis axis(m, low, high);
        const auto check = [&](std::int64_t wide) {
            const std::int32_t x = SaturateToInt32(wide);
            const std::int32_t device = m.ToDevice(x);
            ASSERT_EQ(axis.Knows(x), device >= low && device <= high);
            ASSERT_EQ(axis.PixelOrOutside(x), std::clamp(device, low - 1, high + 1))
                << x << ": " << m.windowOrg << ' ' << m.windowExt << ' ' << m.viewportOrg << ' '
                << m.viewportExt;
            known += axis.Knows(x);
        };
        std::vector<CPoint> points;
        for (int i = 0; i < 10; ++i)
            points.emplace_back(AnyNumber(random), SaturateToInt32(axis.FirstKnown() + i));
        for (const CPoint& p : points) check(p.x);
        int x[10], y[10];
        const std::int32_t delta = round % 3 ? AnyNumber(random) / 2 : 0;
        axis.PixelsOrOutside<&POINT::x>(points.data(), 10, delta, x);
        axis.PixelsOrOutside<&POINT::y>(points.data(), 10, delta, y);
        for (std::size_t i = 0; i < 10; ++i) {
            ASSERT_EQ(x[i], axis.PixelOrOutside(AddSaturated(points[i].x, delta)));
            ASSERT_EQ(y[i], axis.PixelOrOutside(AddSaturated(points[i].y, delta)));
        }
        for (int i = -1; i <= 1; ++i) {
            check(axis.FirstKnown() + i);
            check(axis.LastKnown() + i);
            check(std::int64_t{m.windowOrg} + i);
        }
        for (int i = 0; i < 10 && axis.FirstKnown() <= axis.LastKnown(); ++i)
            check(std::uniform_int_distribution<std::int64_t>(axis.FirstKnown(), axis.LastKnown())(random));
        const int pixel = std::uniform_int_distribution(low, high)(random);
        const auto [first, last] = axis.LogicalOf(pixel);
        if (first > last) continue;
        for (const std::int64_t border : {first, last}) ASSERT_EQ(m.ToDevice(SaturateToInt32(border)), pixel);
        if (first > kMin) {
            ASSERT_NE(m.ToDevice(SaturateToInt32(first - 1)), pixel);
        }
        if (last < kMax) {
            ASSERT_NE(m.ToDevice(SaturateToInt32(last + 1)), pixel);
        }
    }
    EXPECT_GT(known, 100000);
}

TEST(Mapping, ModesAndFixedSizes) {
    CDC dc;
    CSize size(2540, -2540);  // an inch
    dc.HIMETRICtoLP(&size);
    EXPECT_EQ(size, CSize(96, -96));
    EXPECT_EQ(dc.SetMapMode(MM_HIMETRIC), MM_TEXT);
    CPoint p(2540, 2540);
    dc.LPtoDP(&p);
    EXPECT_EQ(p, CPoint(96, -96));
    size = CSize(32, 32);  // rounded to one whole pixel, which is 26 units
    dc.HIMETRICtoLP(&size);
    EXPECT_EQ(size, CSize(26, 26));
    EXPECT_EQ(dc.SetMapMode(99), 0);
    EXPECT_EQ(dc.GetMapMode(), MM_HIMETRIC);
    dc.SetWindowExt(5, 5);
    EXPECT_EQ(dc.GetWindowExt(), CSize(2540, 2540));

    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(100, -100);
    dc.SetViewportExt(300, 200);
    dc.SetWindowExt(0, 7);
    EXPECT_EQ(dc.GetWindowExt(), CSize(100, -100));
    p = CPoint(-7, 7);
    dc.LPtoDP(&p);
    EXPECT_EQ(p, CPoint(-21, -14));
    dc.DPtoLP(&p);
    EXPECT_EQ(p, CPoint(-7, 7));
    size = CSize(10, 10);
    dc.LPtoDP(&size);
    EXPECT_EQ(size, CSize(30, 20));
    dc.SetMapMode(MM_ISOTROPIC);
    EXPECT_EQ(dc.GetViewportExt(), CSize(200, 200));
}

}  // namespace
