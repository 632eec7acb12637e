#include "views/CCarthesian.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(Carthesian, ConvertsBothWaysAndFlips) {
    // 10 ... 20 s on 1000 ... 6000, and an axis that grows downwards.
    CCarthesian system(1000, 500, 5000, -2000, CPointEx(10.0, -1.0), CSizeEx(10.0, 4.0));
    CPointEx point(12.0, 1.0);
    EXPECT_EQ(&system.WorldToDevice(point), &point);
    EXPECT_DOUBLE_EQ(point.x, 2000.0);
    EXPECT_DOUBLE_EQ(point.y, -500.0);
    system.DeviceToWorld(point);
    EXPECT_DOUBLE_EQ(point.x, 12.0);
    EXPECT_DOUBLE_EQ(point.y, 1.0);
    EXPECT_DOUBLE_EQ(system.DeviceToWorldX(system.WorldToDeviceX(17.25)), 17.25);
    EXPECT_DOUBLE_EQ(system.DeviceToWorldY(system.WorldToDeviceY(-3.5)), -3.5);
}

TEST(Carthesian, DegenerateExtentsAreRefusedWhole) {
    CCarthesian system(0, 0, 0, 5, CPointEx(), CSizeEx(1.0, 1.0));
    EXPECT_DOUBLE_EQ(system.WorldToDeviceX(1.0), 1000.0);
    EXPECT_DOUBLE_EQ(system.WorldToDeviceY(1.0), 1000.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const CSizeEx& refused :
         {CSizeEx(1e-301, 1.0), CSizeEx(1.0, 2e300), CSizeEx(0.0, 1.0), CSizeEx(nan, 1.0)})
        EXPECT_FALSE(system.SetWorldExt(refused)) << refused.cx << " " << refused.cy;
    EXPECT_TRUE(system.SetWorldExt(CSizeEx(-2.0, 4.0)));
    EXPECT_DOUBLE_EQ(system.WorldToDeviceX(1.0), -500.0);
    EXPECT_TRUE(system.Reset());
    EXPECT_DOUBLE_EQ(system.WorldToDeviceX(1.0), 1000.0);
}

}  // namespace
