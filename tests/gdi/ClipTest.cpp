// Clip regions, hatches, and copying between pictures.
#include <gtest/gtest.h>

#include "platform/gdi/Selected.h"
#include "tests/gdi/DrawingTest.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr CRect kWhole(0, 0, 100, 80);

std::uint32_t At(CBitmapEx& picture, int x, int y) { return Pixels(picture)[y * picture.GetWidth() + x]; }

}  // namespace

TEST(Clip, ARegionIsInDeviceUnitsAndReplacesTheOneBefore) {
    const auto picture = NewPicture(100, 80);
    CDC dc(*picture);
    dc.SetMapMode(MM_TWIPS);  // pixels are 15 units long, upwards
    CRgn first, second;
    first.CreateRectRgn(10, 10, 20, 20);
    second.CreateRectRgn(40, 30, 30, 10);  // sides in any order
    EXPECT_EQ(dc.SelectClipRgn(&first), SIMPLEREGION);
    EXPECT_EQ(dc.SelectClipRgn(&second), SIMPLEREGION);
    dc.FillSolidRect({-10000, 10000, 10000, -10000}, kRed);
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 10 * 20);
    EXPECT_EQ(At(*picture, 30, 10), 0xffff0000u);
    CRect box;
    EXPECT_EQ(dc.GetClipBox(&box), SIMPLEREGION);
    EXPECT_EQ(box, CRect(450, -150, 600, -450));
    // The region is copied: it may go, and null lifts it.
    second.DeleteObject();
    dc.SelectClipRgn(nullptr);
    dc.FillSolidRect({-10000, 10000, 10000, -10000}, kRed);
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 100 * 80);
}

TEST(Clip, AnEmptyRegionHidesEverythingAndIsRestoredWithTheContext) {
    const auto picture = NewPicture(100, 80);
    CDC dc(*picture);
    CRgn empty;
    empty.CreateRectRgn(5, 5, 5, 50);
    dc.SaveDC();
    EXPECT_EQ(dc.SelectClipRgn(&empty), NULLREGION);
    dc.FillSolidRect(kWhole, kRed);
    dc.TextOut(0, 0, "hidden");
    CRect box;
    EXPECT_EQ(dc.GetClipBox(&box), NULLREGION);
    EXPECT_EQ(PixelsUnlike(*picture, kWhite), 0);
    dc.RestoreDC(-1);
    EXPECT_EQ(dc.GetClipBox(&box), SIMPLEREGION);
    EXPECT_EQ(box, kWhole);
    EXPECT_EQ(dc.SelectClipRgn(&static_cast<const CRgn&>(CRgn())), 0);
}

TEST(Hatch, FitsFromShapeToShapeAndShowsItsGapsOnlyWhenOpaque) {
    const auto whole = NewPicture(100, 80), parts = NewPicture(100, 80);
    for (int style = HS_HORIZONTAL; style <= HS_DIAGCROSS; ++style) {
        CBrush brush;
        brush.CreateHatchBrush(style, kRed);
        for (CBitmapEx* picture : {whole.get(), parts.get()}) {
            CDC dc(*picture);
            const Selected useBrush(dc, brush);
            const SelectedStock noPen(dc, NULL_PEN);
            dc.FillSolidRect(kWhole, RGB(255, 255, 255));
            dc.SetBkMode(TRANSPARENT);
            const int width = picture == whole.get() ? 80 : 37;
            for (int left = 0; left < 80; left += width)
                dc.Rectangle(left, 0, std::min(left + width, 80) + 1, 41);
        }
        EXPECT_EQ(DifferingPixels(*whole, *parts), 0) << "style " << style;
        // A line every eighth pixel; two families meet in one pixel of 64, diagonals in two.
        const int lines[] = {8, 8, 8, 8, 15, 16};
        EXPECT_NEAR(PixelsUnlike(*whole, kWhite), 80 * 40 * lines[style] / 64, 80) << "style " << style;
    }
    CDC dc(*whole);
    CBrush brush;
    brush.CreateHatchBrush(HS_CROSS, kRed);
    const Selected useBrush(dc, brush);
    dc.SetBkColor(RGB(0, 0, 255));
    dc.Rectangle(0, 0, 80, 40);
    EXPECT_EQ(At(*whole, 1, 1), 0xff0000ffu);
    // Many small hatched boxes are hatched too.
    const CPoint dots[] = {{20, 60}, {50, 60}};
    dc.DrawRectangles(dots, 2, {9, 9});
    EXPECT_EQ(At(*whole, 17, 57), 0xff0000ffu);
}

TEST(BitBlt, CopiesWhatBothPicturesHave) {
    struct Case {
        int x, y, width, height, sourceX, sourceY;
        int copied;
    };
    const Case cases[] = {
        {0, 0, 100, 80, 0, 0, 40 * 30},       // all of the smaller source
        {90, 70, 40, 30, 0, 0, 10 * 10},      // over the target's edge
        {10, 10, 20, 20, 30, 25, 10 * 5},     // over the source's edge
        {10, 10, 20, 20, -5, -15, 15 * 5},    // before the source's edge
        {INT32_MAX, 0, 40, 30, 0, 0, 0},      // far away
        {0, 0, INT32_MAX, 30, 0, 0, 40 * 30}  // far too wide
    };
    const auto source = NewPicture(40, 30), target = NewPicture(100, 80);
    CDC from, to(*target);
    EXPECT_FALSE(to.BitBlt(0, 0, 10, 10, &from, 0, 0, SRCCOPY));
    EXPECT_TRUE(from.CreateCompatibleDC(&to));
    EXPECT_EQ(from.SelectObject(source.get()), nullptr);
    from.FillSolidRect({0, 0, 40, 30}, kRed);
    for (const Case& c : cases) {
        to.FillSolidRect(kWhole, RGB(255, 255, 255));
        EXPECT_TRUE(to.BitBlt(c.x, c.y, c.width, c.height, &from, c.sourceX, c.sourceY, SRCCOPY));
        EXPECT_EQ(PixelsUnlike(*target, kWhite), c.copied) << c.x << ' ' << c.y << ' ' << c.sourceX;
    }
    EXPECT_FALSE(to.BitBlt(0, 0, 10, 10, &from, 0, 0, 0x00660046));
    EXPECT_FALSE(to.BitBlt(0, 0, 10, 10, nullptr, 0, 0, SRCCOPY));
}

TEST(BitBlt, MovesPixelsWithinOnePicture) {
    for (const auto& [dx, dy] : {std::pair{3, 2}, {3, -2}, {-3, 2}, {-3, -2}, {3, 0}, {-3, 0}}) {
        const auto picture = NewPicture(20, 16);
        CDC dc(*picture);
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 20; ++x) dc.SetPixelV(x, y, RGB(x, y, 0));
        dc.BitBlt(5 + dx, 5 + dy, 8, 6, &dc, 5, 5, SRCCOPY);
        for (int y = 5; y < 11; ++y)
            for (int x = 5; x < 13; ++x)
                ASSERT_EQ(dc.GetPixel(x + dx, y + dy), RGB(x, y, 0)) << dx << ' ' << dy;
    }
}
