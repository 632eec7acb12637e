#include "views/AxisTicks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(AxisTicks, StartIsARoundNumberNearTheRange) {
    const struct {
        double range;
        double start;
    } cases[] = {{37, 50}, {1, 1},     {1.4, 1},   {1.5, 10},  {5, 5},       {7.4, 5},       {7.6, 10},
                 {9, 10},  {100, 100}, {0.5, 0.5}, {0.1, 0.1}, {0.03, 0.05}, {20000, 100000}};
    for (const auto& one : cases)
        EXPECT_NEAR(StartSpacing(one.range), one.start, one.start * 1e-12) << one.range;
    for (const double none : {0.0, -3.0, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(StartSpacing(none), 0.0);
}

TEST(AxisTicks, TheFinerOfTwoRefinementsThatLeavesRoomForLabels) {
    const auto perSecond = [](double seconds) { return std::abs(seconds) * 1000.0; };
    // 50 -> 25 -> 5 (2.5 s would be 2500 of 3700), and 50 -> 10 (5 s would be 5000, then 1 s too short) -> 5.
    EXPECT_DOUBLE_EQ(TickSpacing(37.0, 3700.0, perSecond), 5.0);
    EXPECT_DOUBLE_EQ(TickSpacing(37.0, 60000.0, perSecond), 50.0);
    EXPECT_EQ(TickSpacing(0.0, 100.0, perSecond), 0.0);
    // No room asked for: ends at 0 instead of running for ever.
    EXPECT_EQ(TickSpacing(37.0, 0.0, perSecond), 0.0);
}

TEST(AxisTicks, RunFromEndToEndWithAnExactZero) {
    using testing::ElementsAre;
    EXPECT_THAT(TickValues(-10.0, 10.0, 5.0, FirstTick::Truncated), ElementsAre(-10, -5, 0, 5, 10));
    EXPECT_THAT(TickValues(-7.0, 7.0, 5.0, FirstTick::Truncated), ElementsAre(-5, 0, 5));
    EXPECT_THAT(TickValues(2.4, 11.0, 5.0, FirstTick::Rounded), ElementsAre(5, 10));
    EXPECT_THAT(TickValues(2.6, 11.0, 5.0, FirstTick::Truncated), ElementsAre(5, 10));
    // A hundredth of the spacing outside still counts.
    EXPECT_THAT(TickValues(0.04, 9.96, 5.0, FirstTick::Rounded), ElementsAre(0, 5, 10));
    for (const double value : TickValues(-0.3, 0.3, 0.1, FirstTick::Rounded))
        EXPECT_TRUE(value == 0.0 || std::abs(value) > 0.05) << value;
    // Spacings below the precision of the values end.
    EXPECT_LE(TickValues(1e17, 1e17 + 64, 1e-3, FirstTick::Rounded).size(),
              static_cast<std::size_t>(kMostTicks) + 1);
    EXPECT_TRUE(TickValues(0.0, 1.0, 0.0, FirstTick::Rounded).empty());
}

}  // namespace
