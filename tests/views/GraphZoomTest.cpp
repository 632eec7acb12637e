#include "views/GraphZoom.h"

#include <gtest/gtest.h>

namespace {

const StoredRange kThousand{{0.0, 0.0}, {1000.0, 1000.0}};
const StoredRange kWide{{0.0, 0.0}, {100000.0, 100000.0}};

GraphZoom Showing(const StoredRange& range) {
    GraphZoom zoom;
    zoom.ShowAll(range);
    zoom.FitScrollSizes(range);
    zoom.KeepCurrent();
    return zoom;
}

TEST(GraphZoom, InByTheStepAboutTheCentre) {
    GraphZoom zoom = Showing(kThousand);
    EXPECT_EQ(zoom.viewExtent, CSize(1000, 1000));
    EXPECT_EQ(zoom.scrollAmount, CSize(0, 0));
    EXPECT_EQ(zoom.lineStep, CSize(50, 50));
    ASSERT_TRUE(zoom.Step(ZoomWay::In, ZoomStep::Full, zoom.ViewCentre()));
    EXPECT_EQ(zoom.Current().originX, 146);  // 500 - round(353.55)
    EXPECT_EQ(zoom.Current().originY, 146);
    zoom.FitScrollSizes(kThousand);
    EXPECT_EQ(zoom.viewExtent, CSize(707, 707));
    EXPECT_EQ(zoom.scrollAmount, CSize(293, 293));
    EXPECT_EQ(zoom.lineStep, CSize(35, 35));
    EXPECT_TRUE(zoom.Back());
    EXPECT_FALSE(zoom.Back());
    EXPECT_EQ(zoom.Current().originX, 0);
}

TEST(GraphZoom, SoftenedStepsAreAFifthAndFlagsHoldAnAxis) {
    GraphZoom zoom = Showing(kThousand);
    ASSERT_TRUE(zoom.Step(ZoomWay::In, ZoomStep::Softened, {500, 500}));
    EXPECT_NEAR(zoom.Current().zoomX, 1.0828427, 1e-6);
    EXPECT_EQ(zoom.Current().originX, 38);  // 500 - round(461.75)
    zoom = Showing(kThousand);
    ASSERT_TRUE(zoom.Step(ZoomWay::Out, ZoomStep::Softened, {500, 500}));
    EXPECT_NEAR(zoom.Current().zoomX, 0.9414214, 1e-6);
    EXPECT_EQ(zoom.Current().originX, -31);  // 500 - round(531.11)

    for (const bool onlyX : {true, false}) {
        zoom = Showing(kThousand);
        (onlyX ? zoom.onlyX : zoom.onlyY) = 1;
        ASSERT_TRUE(zoom.Step(ZoomWay::In, ZoomStep::Full, {500, 500}));
        EXPECT_EQ(zoom.Current().originX, onlyX ? 146 : 0);
        EXPECT_EQ(zoom.Current().originY, onlyX ? 0 : 146);
        EXPECT_EQ(zoom.Current().zoomY > 1.0f, !onlyX);
    }
}

TEST(GraphZoom, RefusesWhatShowsTooLittleOrTooMuch) {
    const struct {
        double extent;
        bool accepted;
    } cases[] = {{1, false}, {142, false}, {143, true}, {1000, true}};  // 142 / 1.41421 rounds to 100
    for (const auto& one : cases) {
        GraphZoom zoom = Showing({{0.0, 0.0}, {one.extent, 1e6}});
        EXPECT_EQ(zoom.Step(ZoomWay::In, ZoomStep::Full, {}), one.accepted) << one.extent;
        EXPECT_EQ(zoom.Depth(), one.accepted ? 2u : 1u);
        EXPECT_EQ(zoom.Current().zoomX, one.accepted ? zoom.zoomStep : 1.0f);
    }
    GraphZoom zoom;
    zoom.ShowAll({{0.0, 0.0}, {499999900.0, 1000.0}});
    EXPECT_EQ(zoom.Depth(), 2u);
    zoom.ShowAll({{7.0, 0.0}, {500000000.0, 1000.0}});
    EXPECT_EQ(zoom.Depth(), 2u);
    EXPECT_EQ(zoom.Current().originX, 7) << "centred all the same";
    // The extent in force is divided by the cumulative zoom: at zoom 10, 100000 / 10 / 14.1 is 707, at zoom
    // 40 it is 44.
    zoom = Showing(kWide);
    ASSERT_TRUE(zoom.About(10.0f, 10.0f, {}));
    zoom.FitScrollSizes(kWide);
    EXPECT_TRUE(zoom.Step(ZoomWay::In, ZoomStep::Full, {}));
    zoom = Showing(kWide);
    ASSERT_TRUE(zoom.About(30.0f, 30.0f, {}));
    zoom.FitScrollSizes(kWide);
    EXPECT_FALSE(zoom.Step(ZoomWay::In, ZoomStep::Full, {}));
}

TEST(GraphZoom, ARectangleBecomesTheVisibleArea) {
    GraphZoom zoom = Showing(kWide);
    ASSERT_TRUE(zoom.ShowRectangle({20000, 30000, 60000, 50000}, {200, 100}, CPoint(90000, 7)));
    EXPECT_EQ(zoom.Current().zoomX, 2.5f);
    EXPECT_EQ(zoom.Current().zoomY, 5.0f);
    EXPECT_EQ(zoom.Current().originX, 20000);
    EXPECT_EQ(zoom.Current().originY, 30000);
    EXPECT_EQ(zoom.Current().followX, 90000);
    EXPECT_EQ(zoom.Current().followY, 7);
    zoom.FitScrollSizes(kWide);
    EXPECT_EQ(zoom.viewExtent, CSize(40000, 20000));
    EXPECT_EQ(zoom.scrollAmount, CSize(60000, 80000));

    // Within the zoomed view the whole range still counts: 40000 + 60000 over 10000.
    ASSERT_TRUE(zoom.ShowRectangle({30000, 32000, 40000, 42000}, {50, 50}, {}));
    EXPECT_EQ(zoom.Current().zoomX, 10.0f);

    // A pixel wide: the zoom stays, the rectangle's centre becomes the view's.
    zoom = Showing({{0.0, 0.0}, {300000.0, 100000.0}});
    ASSERT_TRUE(zoom.ShowRectangle({99800, 30000, 100200, 50000}, {1, 100}, {}));
    EXPECT_EQ(zoom.Current().zoomX, 1.0f);
    EXPECT_EQ(zoom.Current().originX, -50000);
    EXPECT_EQ(zoom.Current().originY, 30000);

    // A click.
    zoom = Showing(kWide);
    EXPECT_FALSE(zoom.ShowRectangle({500, 500, 500, 500}, {0, 0}, {}));
    EXPECT_EQ(zoom.Depth(), 1u);
    zoom.FitScrollSizes(kWide);
    EXPECT_EQ(zoom.viewExtent, CSize(100000, 100000));
}

TEST(GraphZoom, IsoAspectShowsTheSameDistancePerPixelAroundTheSameCentre) {
    const struct {
        CSize plot;
        CSize extent;
        int originX;
        int originY;
    } cases[] = {{{400, 200}, {2000, 1000}, -500, 0}, {{200, 400}, {1000, 2000}, 0, -500}};
    for (const auto& one : cases) {
        GraphZoom zoom = Showing(kThousand);
        zoom.isoAspect = 1;
        zoom.plotSize = one.plot;
        ASSERT_TRUE(zoom.Add(CZoomInfo()));
        EXPECT_EQ(zoom.Current().originX, one.originX);
        EXPECT_EQ(zoom.Current().originY, one.originY);
        zoom.FitScrollSizes(kThousand);
        EXPECT_EQ(zoom.viewExtent, one.extent);
        zoom.onlyY = 1;
        ASSERT_TRUE(zoom.Add(CZoomInfo()));
        EXPECT_EQ(zoom.Current().zoomX, 1.0f) << "an axis zoomed alone is left alone";
    }
    GraphZoom hidden = Showing(kThousand);
    hidden.isoAspect = 1;
    hidden.plotSize = {0, 0};
    EXPECT_TRUE(hidden.Add(CZoomInfo()));
    EXPECT_EQ(hidden.Current().zoomX, 1.0f);
}

TEST(GraphZoom, ZoomedAxesScrollAlongWithNewData) {
    GraphZoom zoom;
    zoom.Current() = CZoomInfo(2.0f, 1.0f, 500, 40, 1000, 3);
    zoom.Follow({1300, 50}, {{-20.0, -7.9}, {4000.0, 100.0}});
    EXPECT_EQ(zoom.Current().originX, 800);
    EXPECT_EQ(zoom.Current().followX, 1300);
    EXPECT_EQ(zoom.Current().originY, -7);
    EXPECT_EQ(zoom.Current().followY, 3);
    zoom.AlignTo(CPoint(1400, 60));
    EXPECT_EQ(zoom.Current().followX, 1400);
    EXPECT_EQ(zoom.Current().followY, 0);
    zoom.AlignTo({});
    EXPECT_EQ(zoom.Current().followX, 0);
}

}  // namespace
