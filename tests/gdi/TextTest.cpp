// Text: its size under every mapping, its place, and what it leaves alone.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/gdi/Selected.h"
#include "tests/gdi/DrawingTest.h"

namespace {

// The pixels unlike white; empty when there are none.
CRect InkBox(CBitmapEx& picture) {
    CRect box(picture.GetWidth(), picture.GetHeight(), 0, 0);
    for (int y = 0; y < picture.GetHeight(); ++y)
        for (int x = 0; x < picture.GetWidth(); ++x) {
            if (Pixels(picture)[y * picture.GetWidth() + x] == kWhite) continue;
            box = CRect(std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                        std::max(box.bottom, y + 1));
        }
    return box;
}

CSize ExtentOf(CDC& dc, int height, const char* text = "Depth 12.50 m") {
    CFont font;
    font.CreateSimple(height);
    const Selected useFont(dc, font);
    return dc.GetTextExtent(text);
}

void SetPlotMapping(CDC& dc, CSize windowExt) {
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(windowExt.cx, windowExt.cy);
    dc.SetViewportExt(800, 600);
}

}  // namespace

TEST(Text, APositiveHeightIsTheCellsInEveryMapping) {
    CDC dc;
    for (const int height : {8, 16, 37, 200}) EXPECT_EQ(ExtentOf(dc, height).cy, height);
    SetPlotMapping(dc, {80000, -6000});  // 100 units per pixel across, 10 up
    EXPECT_EQ(ExtentOf(dc, 400).cy, 400);
    dc.SetMapMode(MM_TWIPS);  // 15 to a pixel
    EXPECT_EQ(ExtentOf(dc, 285).cy, 285);
    dc.SetMapMode(MM_HIMETRIC);
    EXPECT_EQ(ExtentOf(dc, 2540).cy, 2540);
}

TEST(Text, ANegativeHeightIsTheEmsSoThatTheCellIsHigher) {
    CDC dc;
    const CSize byEm = ExtentOf(dc, -100), byCell = ExtentOf(dc, 100);
    EXPECT_GT(byEm.cy, 100);
    EXPECT_GT(byEm.cx, byCell.cx);
    // The same font when asked for by its cell.
    EXPECT_NEAR(ExtentOf(dc, byEm.cy).cx, byEm.cx, byEm.cx / 100 + 1);
}

TEST(Text, WidthConvertsByTheHorizontalAxisAlone) {
    CDC dc;
    const CSize pixels = ExtentOf(dc, 40);
    SetPlotMapping(dc, {80000, 6000});
    EXPECT_EQ(ExtentOf(dc, 400), CSize(pixels.cx * 100, 400));
    SetPlotMapping(dc, {-80000, -6000});
    EXPECT_EQ(ExtentOf(dc, 400), CSize(pixels.cx * 100, 400));
}

TEST(Text, SizesStayFiniteForAnyHeight) {
    CDC dc;
    SetPlotMapping(dc, {1, 1});
    for (const int height : {INT32_MIN, INT32_MAX, 1, -1, 0}) {
        const CSize extent = ExtentOf(dc, height);
        EXPECT_GE(extent.cx, 0) << height;
        EXPECT_GE(extent.cy, 0) << height;
    }
    SetPlotMapping(dc, {INT32_MAX, INT32_MIN});
    EXPECT_GE(ExtentOf(dc, 1).cy, 0);
    EXPECT_EQ(dc.GetTextExtent("").cx, 0);
}

TEST(Text, StandsWhereTheAlignmentSays) {
    struct Case {
        UINT align;
        CRect cell;  // for a text 30 high at (150, 100), `width` wide
    };
    const auto picture = NewPicture(300, 200);
    CDC dc(*picture);
    CFont font;
    font.CreateSimple(30);
    const Selected useFont(dc, font);
    dc.SetBkColor(RGB(255, 255, 0));
    const LONG width = dc.GetTextExtent("Hxg").cx;
    const Case cases[] = {
        {TA_LEFT | TA_TOP, {150, 100, 150 + width, 130}},
        {TA_RIGHT | TA_TOP, {150 - width, 100, 150, 130}},
        {TA_CENTER | TA_TOP, {150 - width / 2, 100, 150 - width / 2 + width, 130}},
        {TA_LEFT | TA_BOTTOM, {150, 70, 150 + width, 100}},
    };
    for (const Case& c : cases) {
        dc.FillSolidRect({0, 0, 300, 200}, RGB(255, 255, 255));
        dc.SetTextAlign(c.align);
        dc.TextOut(150, 100, "Hxg");
        EXPECT_EQ(InkBox(*picture), c.cell) << "alignment " << c.align;
    }
    // Nothing of an H hangs below its base line.
    dc.FillSolidRect({0, 0, 300, 200}, RGB(255, 255, 255));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextAlign(TA_LEFT | TA_BASELINE);
    dc.TextOut(150, 100, "H");
    EXPECT_NEAR(InkBox(*picture).bottom, 100, 1);
    EXPECT_GT(InkBox(*picture).Height(), 15);
}

TEST(Text, KeepsItsPlaceUnderAMappingThatPointsUpwards) {
    const auto picture = NewPicture(200, 100);
    CDC dc(*picture);
    UseView(dc, {"", {0, 0}, {200, -100}, {0, 100}, {200, 100}});
    CFont font;
    font.CreateSimple(20);
    const Selected useFont(dc, font);
    dc.SetBkColor(RGB(0, 255, 0));
    dc.TextOut(10, 90, "up");
    const CRect box = InkBox(*picture);
    EXPECT_EQ(box.top, 10);
    EXPECT_EQ(box.bottom, 30);
    EXPECT_EQ(box.left, 10);
}

TEST(Text, DrawsNothingOutsideTheClipRegionAndEveryPixelStaysOpaque) {
    const auto picture = NewPicture(100, 40);
    CDC dc(*picture);
    CRgn region;
    region.CreateRectRgn(20, 10, 40, 20);
    dc.SelectClipRgn(&region);
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(0, 6, "MMMMMMMMMM");
    const CRect box = InkBox(*picture);
    EXPECT_FALSE(box.IsRectEmpty());
    EXPECT_GE(box.left, 20);
    EXPECT_LE(box.right, 40);
    EXPECT_GE(box.top, 10);
    EXPECT_LE(box.bottom, 20);
    for (int i = 0; i < 100 * 40; ++i) ASSERT_EQ(Pixels(*picture)[i] >> 24, 0xffu);
}

TEST(Text, IgnoresTheRasterOperationAndTakesItsColour) {
    const auto picture = NewPicture(60, 40), other = NewPicture(60, 40);
    for (CBitmapEx* target : {picture.get(), other.get()}) {
        CDC dc(*target);
        dc.SetTextColor(RGB(200, 0, 0));
        if (target == other.get()) dc.SetROP2(R2_XORPEN);
        dc.TextOut(5, 5, "Ωm²");
    }
    EXPECT_EQ(DifferingPixels(*picture, *other), 0);
    const std::uint32_t* const end = Pixels(*picture) + 60 * 40;
    EXPECT_NE(std::find(Pixels(*picture), end, 0xffc80000u), end) << "no pixel is fully inked";
}

TEST(Text, IsDrawnFarOutsideWithoutHarm) {
    const auto picture = NewPicture(60, 40);
    CDC dc(*picture);
    for (const int place : {INT32_MIN, INT32_MAX})
        for (const UINT align : {TA_LEFT, TA_RIGHT, TA_CENTER, TA_BOTTOM, TA_BASELINE}) {
            dc.SetTextAlign(align);
            EXPECT_TRUE(dc.TextOut(place, place, "far away"));
        }
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 0);
}
