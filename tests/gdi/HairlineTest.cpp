// Single lines against exact arithmetic, and what drawing twice leaves.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "platform/gdi/Selected.h"
#include "tests/gdi/DrawingTest.h"

namespace {

constexpr int kSide = 60;
__extension__ using Exact = __int128;

// Whether pixel p belongs to the line from a to b: it is the nearest one to the ideal line at its step, an
// exact half going on in the direction of travel, and it is not b.
bool IsOnLine(CPoint a, CPoint b, CPoint p) {
    std::int64_t dx = std::int64_t{b.x} - a.x, dy = std::int64_t{b.y} - a.y;
    std::int64_t px = std::int64_t{p.x} - a.x, py = std::int64_t{p.y} - a.y;
    if (std::llabs(dx) < std::llabs(dy)) {
        std::swap(dx, dy);
        std::swap(px, py);
    }
    if (dx < 0) dx = -dx, px = -px;
    if (dy < 0) dy = -dy, py = -py;
    if (px < 0 || px >= dx) return false;
    const Exact distance =
        2 * (Exact{py} * dx - Exact{px} * dy);  // in 1 / (2 dx) pixels beyond the ideal line
    return distance > -dx && distance <= dx;
}

TEST(Hairline, IsTheNearestPixelsHoweverFarTheEnds) {
    std::mt19937 random(3);
    for (const int reach : {kSide, 1000, 1000000, std::numeric_limits<int>::max()})
        for (int round = 0; round < 400; ++round) {
            const auto any = [&] { return std::uniform_int_distribution(-reach, reach)(random); };
            const CPoint a(any(), any());
            CPoint b(any(), any());
            if (round % 2)  // through the picture
                b = {SubtractSaturated(static_cast<LONG>(random() % kSide), a.x),
                     SubtractSaturated(kSide / 2, a.y)};
            const auto picture = NewPicture(kSide, kSide);
            CDC dc(*picture);
            dc.MoveTo(a);
            dc.LineTo(b);
            for (int y = 0; y < kSide; ++y)
                for (int x = 0; x < kSide; ++x)
                    ASSERT_EQ(dc.GetPixel(x, y) == 0, IsOnLine(a, b, {x, y}))
                        << a.x << ',' << a.y << " to " << b.x << ',' << b.y << " at " << x << ',' << y;
        }
}

// Dashes, clipping and segments: a line drawn strip by strip is the line drawn at once.
TEST(Hairline, ClippedStripsMakeTheWhole) {
    std::mt19937 random(8);
    for (int style = PS_SOLID; style <= PS_DASHDOTDOT; ++style)
        for (int round = 0; round < 60; ++round) {
            const int reach = round % 3 == 0 ? 100 : round % 3 == 1 ? 20000 : 2000000000;
            std::vector<CPoint> points;
            for (int i = 0; i < 4; ++i)
                points.emplace_back(std::uniform_int_distribution(-reach, reach)(random),
                                    std::uniform_int_distribution(-reach, reach)(random));
            if (round % 2) points[1] = {30, 20};
            CPen pen(style, 0, RGB(0, 0, 255));
            const auto draw = [&](CBitmapEx& picture, const CRect& clip) {
                CDC dc(picture);
                const Selected usePen(dc, pen);
                dc.SetBkColor(RGB(255, 255, 0));
                dc.SetROP2(R2_XORPEN);
                dc.IntersectClipRect(clip);
                dc.MoveTo(points[0]);
                for (const CPoint& p : points) dc.LineTo(p);
            };
            const auto whole = NewPicture(kSide, kSide), strips = NewPicture(kSide, kSide);
            draw(*whole, {0, 0, kSide, kSide});
            for (int x = 0; x < kSide; x += 13) draw(*strips, {x, 0, x + 13, kSide});
            EXPECT_EQ(DifferingPixels(*whole, *strips), 0) << "style " << style << ", round " << round;
        }
}

// A black dotted pen changes nothing under XOR; the band shows by its gaps.
TEST(Hairline, GapsAreDrawnInTheBackgroundColour) {
    const auto changed = [](int mode) {
        const auto picture = NewPicture(kSide, kSide);
        CDC dc(*picture);
        CPen dotted(PS_DOT, 0, RGB(0, 0, 0));
        const Selected usePen(dc, dotted);
        const SelectedRop2 useXor(dc, R2_XORPEN);
        dc.SetBkMode(mode);
        dc.MoveTo(0, 10);
        for (int x = 1; x <= kSide; ++x) dc.LineTo(x, 10);  // dashes run on over short segments
        return PixelsUnlike(*picture, kWhite);
    };
    EXPECT_EQ(changed(OPAQUE), kSide / 2);
    EXPECT_EQ(changed(TRANSPARENT), 0);
}

struct Primitive {
    const char* name;
    bool fills;
    std::function<void(CDC&)> draw;
};

TEST(RasterOperation, DrawnTwiceRestoresEveryPixel) {
    std::mt19937 random(21);
    std::vector<CPoint> star;
    for (int i = 0; i < 9; ++i)
        star.emplace_back(static_cast<LONG>(random() % 90) - 15, static_cast<LONG>(random() % 90) - 15);
    const int count = static_cast<int>(star.size());
    const Primitive primitives[] = {
        {"lines", false,
         [&](CDC& dc) {
             for (const CPoint& p : star) dc.LineTo(p);
         }},
        {"polyline", false, [&](CDC& dc) { dc.Polyline(star.data(), count); }},
        {"polygon", true, [&](CDC& dc) { dc.Polygon(star.data(), count); }},
        {"rectangle", true, [](CDC& dc) { dc.Rectangle(-5, 10, 30, 70); }},
        {"thin rectangle", false, [](CDC& dc) { dc.Rectangle(10, 10, 11, 40); }},
        {"ellipse", true, [](CDC& dc) { dc.Ellipse(10, -10, 50, 45); }},
        {"small ellipse", true, [](CDC& dc) { dc.Ellipse(10, 10, 13, 13); }},
        {"rectangles", true,
         [&](CDC& dc) {
             dc.DrawRectangles(star.data(), count, {6, 4});
         }},
    };
    for (const Primitive& primitive : primitives)
        for (const int operation : {R2_XORPEN, R2_NOT, R2_NOTXORPEN})
            for (int style = PS_SOLID; style <= PS_NULL; ++style)
                for (const int width : {0, 5}) {
                    const auto picture = NewPicture(kSide, kSide), before = NewPicture(kSide, kSide);
                    auto* pixels = static_cast<std::uint32_t*>(picture->GetBits());
                    for (int i = 0; i < kSide * kSide; ++i) pixels[i] = 0xff000000u | random();
                    before->Copy(nullptr, picture.get());
                    CDC dc(*picture);
                    CPen pen(style, width, RGB(200, 100, 7));
                    CBrush brush(RGB(9, 80, 160));
                    const Selected usePen(dc, pen);
                    const Selected useBrush(dc, brush);
                    dc.SetROP2(operation);
                    dc.MoveTo(0, 0);
                    primitive.draw(dc);
                    if (style != PS_NULL || primitive.fills) {
                        EXPECT_GT(DifferingPixels(*picture, *before), 0)
                            << primitive.name << ", style " << style;
                    }
                    dc.MoveTo(0, 0);
                    primitive.draw(dc);
                    EXPECT_EQ(DifferingPixels(*picture, *before), 0)
                        << primitive.name << ", operation " << operation << ", style " << style << ", width "
                        << width;
                }
}

}  // namespace
