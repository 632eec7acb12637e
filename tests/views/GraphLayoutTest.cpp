#include "views/GraphLayout.h"

#include <gtest/gtest.h>

#include "platform/gdi/CDC.h"

namespace {

TEST(GraphLayout, MarginsLeaveRoomForTheYLabels) {
    const struct {
        int position;
        int left;
        int right;
    } cases[] = {{0, 8 + 45, 32}, {1, 0, 0}, {2, 32, 8 + 45}};  // trunc(1.1 * 41) = 45
    for (const auto& one : cases) {
        const PlotMargins margins = MarginsFor({41, 16}, one.position);
        EXPECT_EQ(margins.left, one.left) << one.position;
        EXPECT_EQ(margins.right, one.right) << one.position;
        EXPECT_EQ(margins.top, 32);
        EXPECT_EQ(margins.bottom, 32);
    }
    EXPECT_EQ(PlotAreaOf({10, 20, 410, 320}, MarginsFor({41, 16}, 0)), CRect(63, 52, 378, 288));
    EXPECT_EQ(PlotAreaOf({0, 0, 30, 10}, MarginsFor({41, 16}, 0)), CRect(53, 32, 54, 33));
}

TEST(GraphLayout, TheLegendKeepsAwayFromTheAxes) {
    const CPoint topRight(310, 10), bottomRight(310, 160), bottomLeft(10, 160), topLeft(10, 10);
    const struct {
        int xAxis;
        int yAxis;
        CPoint at;
    } cases[] = {{1, 0, topRight},   {2, 0, topRight},    {1, 1, topRight},
                 {2, 1, topRight},   {0, 0, bottomRight}, {0, 1, bottomRight},
                 {0, 2, bottomLeft}, {1, 2, bottomLeft},  {2, 2, topLeft}};
    for (const auto& one : cases)
        EXPECT_EQ(LegendPosition({10, 10}, {400, 200}, {100, 10}, 5, one.xAxis, one.yAxis), one.at)
            << one.xAxis << " " << one.yAxis;
}

TEST(GraphLayout, TilesFillRowsAndPages) {
    const TileGrid grid(2, 2, 1);
    EXPECT_EQ(grid.PageCount(0), 1);
    EXPECT_EQ(grid.PageCount(4), 1);
    EXPECT_EQ(grid.PageCount(5), 2);
    EXPECT_EQ(TileGrid(3, 2, 2).PageCount(25), 3);
    EXPECT_EQ(grid.TileOffset(3, {100, 50}), CPoint(100, 50));
    EXPECT_EQ(TileGrid(3, 2, 2).TileOffset(5, {100, 50}), CPoint(200, 50));
    const TileGrid stored(0, -4, 0);  // what a damaged section may say
    EXPECT_EQ(stored.SourcesPerPage(), 1);
}

TEST(GraphLayout, PixelsFollowTheContextWithoutRoundingBetween) {
    CDC dc;
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowOrg(1000, 500);
    dc.SetWindowExt(100, -50);
    dc.SetViewportOrg(60, 300);
    dc.SetViewportExt(400, 200);
    const PlotMap map(dc);
    EXPECT_EQ(map.X(1000.5), 62);
    EXPECT_EQ(map.Y(500.25), 299);
    EXPECT_EQ(map.Y(550.0), 100);
    EXPECT_EQ(map.Area(), CRect(60, 100, 460, 300));
    dc.SetWindowExt(100, 50);
    EXPECT_EQ(PlotMap(dc).Area(), CRect(60, 300, 460, 500));
}

}  // namespace
