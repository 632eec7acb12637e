#include <random>

#include "editing/CSampleInfoSet.h"
#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/Selected.h"
#include "tests/editing/EditingFixture.h"

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

// One logical unit for each pixel at 96 pixels per inch: 1 mm is 3.78 pixels.
class DrawData : public EditingTest {
  protected:
    DrawData() : bitmap(4, 32, 0) {
        bitmap.ReSize(nullptr, 100, 60);
        dc.SelectObject(&bitmap);
        data.SelectPointSource(&series);
    }
    std::vector<COLORREF> Pixels() {
        const auto* bits = static_cast<const COLORREF*>(bitmap.GetBits());
        return {bits, bits + bitmap.GetWidth() * bitmap.GetHeight()};
    }
    struct Pixel {
        int x, y;
        COLORREF color;
    };
    void ExpectPixels(std::initializer_list<Pixel> pixels) {
        for (const auto& [x, y, color] : pixels) EXPECT_EQ(dc.GetPixel(x, y), color) << x << ", " << y;
    }
    void Wipe() { dc.FillSolidRect({0, 0, 100, 60}, kWhite); }

    FullSource series{{{10, 20}, {30, 20}, {50, 40}, {70, 20}, {90, 20}}};
    CBitmapEx bitmap;
    CDC dc;
    CXYEditData data;
};

TEST_F(DrawData, DotsShowWhatIsEditedAndHideWhatIsDeleted) {
    series.GetStatus()[1] = PS_EDITED | PS_MOVED;
    series.GetStatus()[2] = PS_DELETED | PS_EDITED;
    data.DrawDots(&dc, kBlue, 0, kRed);
    // (11, 20): a single pixel.
    ExpectPixels({{10, 20, kBlue}, {11, 20, kWhite}, {30, 20, kRed}, {50, 40, kWhite}});

    // 0.32 mm are 1.2 pixels: half extents of 1, squares from -1 up to +1.
    data.DrawDots(&dc, kBlue, 1, kRed);
    ExpectPixels({{9, 19, kBlue}, {11, 20, kWhite}, {29, 19, kRed}});
    Wipe();
    series.hasStatus = false;
    data.DrawDots(&dc, kBlue, 0, kRed);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(dc.GetPixel(series[i].x, series[i].y), kBlue) << i;
}

TEST_F(DrawData, ThePlainDataSetDrawsEveryPointAsACircle) {
    CXYData plain;
    plain.SelectPointSource(&series);
    series.GetStatus()[2] = PS_DELETED;
    plain.DrawDots(&dc, kBlue, 9, kRed);  // 1.6 mm are 6 pixels
    // (45, 35): outside the circle.
    ExpectPixels({{50, 40, kBlue}, {50, 35, kBlue}, {45, 35, kWhite}});
    Wipe();
    plain.DrawLine(&dc, kBlue, PS_SOLID, CRect());
    ExpectPixels({{20, 20, kBlue}, {40, 30, kBlue}});
}

TEST_F(DrawData, TheLineIsTheWalkFromPointToPoint) {
    std::mt19937 random(3);
    std::vector<CPoint> noise;
    for (int i = 0; i < 20000; ++i) noise.emplace_back(i / 200, static_cast<int>(random() % 60));
    FullSource many(noise);
    for (int i = 0; i < 20000; ++i)
        if (random() % 3 == 0) many.GetStatus()[i] = PS_DELETED;
    data.SelectPointSource(&many);
    for (const int style : {PS_SOLID, PS_DASH, PS_DOT}) {
        Wipe();
        data.DrawLine(&dc, kBlue, style, CRect());
        const auto drawn = Pixels();
        Wipe();
        CPen pen(style, 0, kBlue);
        const Selected usePen(dc, pen);
        bool first = true;
        for (int i = 0; i < 20000; ++i) {
            if (many.GetStatus()[i] & PS_DELETED) continue;
            if (first) dc.MoveTo(noise[static_cast<std::size_t>(i)]);
            dc.LineTo(noise[static_cast<std::size_t>(i)]);
            first = false;
        }
        EXPECT_EQ(Pixels(), drawn) << style;
    }
    for (int i = 0; i < 20000; ++i) many.GetStatus()[i] = PS_DELETED;
    const auto before = Pixels();
    data.DrawLine(&dc, kRed, PS_SOLID, CRect());
    EXPECT_EQ(Pixels(), before) << "no point is left";
}

TEST_F(DrawData, TheDrawOffsetMovesThePictureOnly) {
    for (const int style : {PS_SOLID, PS_DASH}) {
        Wipe();
        data.SetDrawOffset({3, 9});
        data.DrawLine(&dc, kBlue, style, CRect());
        const auto moved = Pixels();
        data.SetDrawOffset({});
        Wipe();
        FullSource shifted({{13, 29}, {33, 29}, {53, 49}, {73, 29}, {93, 29}});
        data.SelectPointSource(&shifted);
        data.DrawLine(&dc, kBlue, style, CRect());
        EXPECT_EQ(Pixels(), moved) << style;
        data.SelectPointSource(&series);
    }
    EXPECT_EQ(series.GetData()[0], CPoint(10, 20));
    EXPECT_EQ(dc.GetWindowOrg(), CPoint());
}

TEST_F(DrawData, TheSelectionIsACross) {
    data.DrawSelection(&dc, kRed, 2);
    EXPECT_EQ(dc.GetPixel(50, 40), kWhite) << "no current point";
    data.SelectPoint(2);
    data.DrawSelection(&dc, kRed, 2);  // 2 mm are 8 pixels: arms of 4 to each side
    ExpectPixels({{50, 40, kRed}, {47, 43, kRed}, {53, 43, kRed}, {54, 40, kWhite}});
}

TEST_F(DrawData, TheRubberBandJoinsTheNeighboursThatAreThere) {
    data.SelectPoint(1);
    series.GetStatus()[0] = series.GetStatus()[2] = PS_DELETED;
    const SelectedStock noFill(dc, NULL_BRUSH);
    CPen pen(PS_SOLID, 0, kRed);
    const Selected usePen(dc, pen);
    const SelectedRop2 inXor(dc, R2_XORPEN);
    const auto before = Pixels();
    CPoint place(30, 50);
    data.DrawRubberBand(&dc, place);
    EXPECT_NE(dc.GetPixel(30, 35), kWhite) << "from the point itself, for there is none before it";
    EXPECT_NE(dc.GetPixel(50, 35), kWhite) << "to (70, 20), past the deleted one";
    EXPECT_NE(dc.GetPixel(26, 50), kWhite) << "a circle of 1 mm around the place";
    data.DrawRubberBand(&dc, place);
    EXPECT_EQ(Pixels(), before);
}

TEST_F(DrawData, SpikesAreCircledAndTheBandShowsInXor) {
    series.GetStatus()[2] = PS_SPIKE;
    series.GetStatus()[3] = PS_SPIKE | PS_DELETED;
    data.DrawSpikeMarkings(&dc);
    // (50, 35): 1.2 mm are 5 pixels.
    ExpectPixels({{50, 35, kBlack}, {70, 15, kWhite}});

    Wipe();
    const auto before = Pixels();
    data.SpikeDetectMedianFilter(2.0, 5.0, false);
    data.DrawSpikeWindow(&dc);
    EXPECT_EQ(Pixels(), before) << "no band was asked for";
    data.SpikeDetectMedianFilter(2.0, 5.0, true);
    data.DrawSpikeWindow(&dc);
    EXPECT_NE(dc.GetPixel(20, 20), kWhite) << "between median - 5 and median + 5";
    EXPECT_EQ(dc.GetPixel(20, 28), kWhite);
    FullSource other(AtTens({0, 0}));
    const auto shown = Pixels();
    data.SelectPointSource(&other);
    data.DrawSpikeWindow(&dc);
    EXPECT_EQ(Pixels(), shown) << "not the series of the band";
    data.SelectPointSource(&series);
    data.DrawSpikeWindow(&dc);
    EXPECT_EQ(Pixels(), before);
    data.RemoveSpikeMarkings();
    data.DrawSpikeWindow(&dc);
    EXPECT_EQ(Pixels(), before);
}

TEST_F(DrawData, TheBandFollowsTheDrawPoints) {
    // Drawn 30 higher than stored, one point deleted: the band lies around y = 40 in the picture.
    FullSource lifted({{0, 10}, {20, 10}, {40, 10}, {60, 10}, {80, 10}, {99, 10}});
    for (long i = 0; i < 6; ++i) lifted.drawPoints.push_back(lifted.GetData()[i] + CPoint(0, 30));
    lifted.GetStatus()[2] = PS_DELETED;
    data.SelectPointSource(&lifted);
    const long tested[] = {0, 1, 2, 3, 4};
    for (int round = 0; round < 2; ++round) {
        Wipe();
        data.SetSelected(tested, 5);
        if (round == 0)
            data.SpikeDetectAll(10.0, 4.0, true);
        else
            data.SpikeDetectSelected(10.0, 4.0, true, true);
        data.DrawSpikeWindow(&dc);
        EXPECT_NE(dc.GetPixel(30, 40), kWhite) << round;
        ExpectPixels({{30, 10, kWhite}, {30, 50, kWhite}});
    }
}

TEST_F(DrawData, ASampleIsOneLineForEachRun) {
    const long listed[] = {0, 1, 3, 4};
    data.SetSelected(listed, 4);
    CSampleInfoSet sample;
    sample.SetDataSet(&data);
    sample.GetSampleInsideRegion();
    sample.TranslateSample({0, 10});
    CPen pen(PS_SOLID, 0, kRed);
    const Selected usePen(dc, pen);
    EXPECT_EQ(sample.DrawSample(&dc), 1);
    ExpectPixels({{20, 30, kRed}, {80, 30, kRed}, {50, 30, kWhite}});
}

// Many points to a column of pixels, in runs of all lengths.
TEST_F(DrawData, ASimplifiedSampleCoversTheSamePixelsWhereverItIsDragged) {
    std::mt19937 random(3);
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(10000, -6000);
    dc.SetViewportExt(100, 60);
    dc.SetViewportOrg(0, 60);
    for (int round = 0; round < 60; ++round) {
        std::vector<CPoint> points;
        for (int x = 0; x < 10000; x += 1 + static_cast<int>(random() % 40))
            points.emplace_back(x, static_cast<int>(random() % 6000));
        FullSource dense(points);
        data.SelectPointSource(&dense);
        // Gaps here and there: every run reaches over several columns.
        std::vector<long> listed;
        for (long i = 0; i < dense.GetCount(); ++i)
            if (round == 0 || i % 700 > 20) listed.push_back(i);
        data.SetSelected(listed.data(), static_cast<int>(listed.size()));
        CSampleInfoSet whole;
        whole.SetDataSet(&data);
        whole.GetSampleInsideRegion();
        CSampleInfoSet simplified(whole);
        simplified.Simplify(dc);
        ASSERT_LE(simplified.GetPointCount(), 4 * 103);
        for (const int dy : {0, 37, -1234}) {
            std::vector<COLORREF> drawn[2];
            for (CSampleInfoSet* sample : {&whole, &simplified}) {
                Wipe();
                dc.FillSolidRect({0, 6000, 10000, 0}, kWhite);
                sample->TranslateSample({0, dy});
                sample->DrawSample(&dc);
                drawn[sample == &simplified] = Pixels();
            }
            ASSERT_EQ(drawn[0], drawn[1]) << "round " << round << " by " << dy;
        }
    }
    // Runs within a column: one stroke from the lowest to the highest point, none for a single one.
    FullSource narrow({{0, 0}, {1, 100}, {2, 50}, {3, 900}, {4, 700}, {5, 0}, {6, 3000}});
    data.SelectPointSource(&narrow);
    const long apart[] = {0, 1, 3, 4, 6};
    data.SetSelected(apart, 5);
    CSampleInfoSet sample;
    sample.SetDataSet(&data);
    sample.GetSampleInsideRegion();
    sample.Simplify(dc);
    ASSERT_EQ(sample.GetPointCount(), 2);
    EXPECT_EQ(sample.GetPoints()[0].y, 0);
    EXPECT_EQ(sample.GetPoints()[1].y, 900);
}

}  // namespace
