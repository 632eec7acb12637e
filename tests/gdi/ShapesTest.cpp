// Shapes, clouds of dots, pictures and the context's state.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/gdi/Selected.h"
#include "tests/core/TestFolder.h"
#include "tests/gdi/DrawingTest.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kPaper = RGB(255, 255, 255);

// A row of letters per row of pixels: r, b, '.' for red, blue and paper, '?' for anything else.
std::string Sketch(CDC& dc, int width, int height) {
    std::string sketch;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const COLORREF color = dc.GetPixel(x, y);
            sketch += color == kRed ? 'r' : color == kBlue ? 'b' : color == kPaper ? '.' : '?';
        }
        sketch += '\n';
    }
    return sketch;
}

struct Sketched {
    const char* name;
    int penStyle;
    int penWidth;
    void (*draw)(CDC&);
    const char* expected;
};

const Sketched kSketched[] = {
    {"rectangle, corners swapped", PS_SOLID, 0, [](CDC& dc) { dc.Rectangle(5, 4, 1, 1); },
     "......\n.rrrr.\n.rbbr.\n.rrrr.\n......\n"},
    {"rectangle without pen", PS_NULL, 0, [](CDC& dc) { dc.Rectangle(1, 1, 5, 4); },
     "......\n.bbb..\n.bbb..\n......\n......\n"},
    {"one pixel", PS_SOLID, 0, [](CDC& dc) { dc.Rectangle(1, 1, 2, 2); },
     "......\n.r....\n......\n......\n......\n"},
    {"one column", PS_SOLID, 0, [](CDC& dc) { dc.Rectangle(1, 1, 2, 4); },
     "......\n.r....\n.r....\n.r....\n......\n"},
    {"nothing", PS_SOLID, 0, [](CDC& dc) { dc.Rectangle(1, 1, 1, 4); },
     "......\n......\n......\n......\n......\n"},
    {"ellipse", PS_SOLID, 0, [](CDC& dc) { dc.Ellipse(0, 0, 5, 5); },
     ".rrr..\nrbbbr.\nrbbbr.\nrbbbr.\n.rrr..\n"},
    {"ellipse of four", PS_SOLID, 0, [](CDC& dc) { dc.Ellipse(1, 0, 5, 4); },
     "..rr..\n.rbbr.\n.rbbr.\n..rr..\n......\n"},
    {"huge ellipse seen from inside", PS_SOLID, 0,
     [](CDC& dc) { dc.Ellipse(-2000000000, -2000000000, 2000000000, 2000000000); },
     "bbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\n"},
    {"huge rectangle", PS_SOLID, 0, [](CDC& dc) { dc.Rectangle(3, INT32_MIN, INT32_MAX, INT32_MAX); },
     "...rbb\n...rbb\n...rbb\n...rbb\n...rbb\n"},
    {"wide line", PS_SOLID, 3,
     [](CDC& dc) {
         dc.MoveTo(-5, 2);
         dc.LineTo(20, 2);
     },
     "......\nrrrrrr\nrrrrrr\nrrrrrr\n......\n"},
    {"line", PS_SOLID, 0,
     [](CDC& dc) {
         dc.MoveTo(0, 1);
         dc.LineTo(4, 1);
     },
     "......\nrrrr..\n......\n......\n......\n"},
};

TEST(Shapes, ArePixelForPixelWhatTheRulesSay) {
    for (const Sketched& one : kSketched) {
        const auto picture = NewPicture(6, 5);
        CDC dc(*picture);
        CPen pen(one.penStyle, one.penWidth, kRed);
        CBrush brush(kBlue);
        const Selected usePen(dc, pen);
        const Selected useBrush(dc, brush);
        one.draw(dc);
        EXPECT_EQ(Sketch(dc, 6, 5), one.expected) << one.name;
    }
}

// Even-odd by shooting a ray from the pixel centre; pixels on or next to an edge are left out of the
// comparison.
TEST(Shapes, PolygonFillsWhatTheRayRuleCallsInside) {
    std::mt19937 random(4);
    constexpr int kSide = 50;
    for (const int reach : {60, 3000, 1000000000}) {
        std::vector<CPoint> star;
        for (int i = 0; i < 11; ++i)
            star.emplace_back(std::uniform_int_distribution(-reach, reach)(random),
                              std::uniform_int_distribution(-reach, reach)(random));
        const auto picture = NewPicture(kSide, kSide);
        CDC dc(*picture);
        CBrush brush(kBlue);
        const SelectedStock noPen(dc, NULL_PEN);
        const Selected useBrush(dc, brush);
        dc.Polygon(star.data(), static_cast<int>(star.size()));
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                bool inside = false, near = false;
                for (std::size_t i = 0; i < star.size(); ++i) {
                    const CPoint a = star[i], b = star[(i + 1) % star.size()];
                    if ((a.y > y) == (b.y > y)) continue;
                    const long double at = a.x + (static_cast<long double>(y) - a.y) *
                                                     (static_cast<long double>(b.x) - a.x) /
                                                     (static_cast<long double>(b.y) - a.y);
                    near |= at > x - 0.001L && at < x + 0.001L;
                    inside ^= at > x;
                }
                if (!near) {
                    ASSERT_EQ(dc.GetPixel(x, y) == kBlue, inside) << reach << ": " << x << ',' << y;
                }
            }
    }
}

CRect Round(CPoint p, CSize half) {
    return {SubtractSaturated(p.x, half.cx), SubtractSaturated(p.y, half.cy), AddSaturated(p.x, half.cx),
            AddSaturated(p.y, half.cy)};
}

// In bulk and one by one, with points in, at and outside every border, more of them than are worth counting.
TEST(Dots, BulkIsTheSamePictureAsOneByOne) {
    constexpr int kCount = 25000, kSide = 150;
    std::mt19937 random(6);
    std::vector<CPoint> points{{INT32_MIN, INT32_MAX}, {INT32_MAX, INT32_MIN}, {0, INT32_MIN}};
    std::vector<unsigned short> status;
    for (int i = 3; i < kCount; ++i)
        points.emplace_back(std::uniform_int_distribution(-60000, 60000)(random),
                            std::uniform_int_distribution(-60000, 60000)(random));
    for (int i = 0; i < kCount; ++i) status.push_back(static_cast<unsigned short>(random() % 16 | 0x8000));
    constexpr MappedView kViews[] = {{"mirrored", {0, 0}, {1000, -1000}, {75, 75}, {2, 2}},
                                     {"halves", {0, 0}, {-777, 900}, {70, 80}, {1, 1}},
                                     {"uneven", {0, 0}, {301, 70}, {0, 0}, {2, 9}}};
    CPen red(PS_SOLID, 0, kRed), none(PS_NULL, 0, 0);
    CBrush redBrush(kRed), blueBrush(kBlue);
    struct Tool {
        CPen& pen;
        CBrush& brush;
        int operation;
    };
    const Tool tools[] = {{red, redBrush, R2_COPYPEN},
                          {none, redBrush, R2_COPYPEN},
                          {red, blueBrush, R2_COPYPEN},
                          {red, redBrush, R2_XORPEN}};
    for (const MappedView& view : kViews)
        for (const Tool& tool : tools)
            for (const CSize half : {CSize(0, 0), CSize(400, 450), CSize(1700, 3300), CSize(INT32_MAX, 30)}) {
                const CSize ellipse(half.cx / 2, half.cy / 2 + 600);
                const StatusFilter which{status.data(), 0x8003, 0x8002};
                const auto bulk = NewPicture(kSide, kSide), single = NewPicture(kSide, kSide);
                for (CBitmapEx* picture : {bulk.get(), single.get()}) {
                    CDC dc(*picture);
                    UseView(dc, view);
                    const Selected usePen(dc, tool.pen);
                    const Selected useBrush(dc, tool.brush);
                    const SelectedRop2 useOperation(dc, tool.operation);
                    if (picture == bulk.get()) {
                        dc.DrawRectangles(points.data(), kCount, half, which);
                        dc.DrawEllipses(points.data(), kCount, ellipse, which);
                        dc.DrawPixels(points.data(), kCount, kBlue, which);
                        continue;
                    }
                    ForEachTaken(points.data(), kCount, which,
                                 [&](CPoint p) { dc.Rectangle(Round(p, half)); });
                    ForEachTaken(points.data(), kCount, which,
                                 [&](CPoint p) { dc.Ellipse(Round(p, ellipse)); });
                    ForEachTaken(points.data(), kCount, which,
                                 [&](CPoint p) { dc.SetPixelV(p.x, p.y, kBlue); });
                }
                EXPECT_EQ(DifferingPixels(*bulk, *single), 0)
                    << view.name << ", half " << half.cx << ", operation " << tool.operation;
                EXPECT_GT(PixelsUnlike(*bulk, kWhite), 0);
            }
}

// Wider than the fast conversion is exact.
TEST(Dots, WidePicturesTakeTheLongWay) {
    const auto bulk = NewPicture(40000, 4), single = NewPicture(40000, 4);
    CBrush brush(kRed);
    std::vector<CPoint> points;
    for (int i = 0; i < 30000; ++i) points.emplace_back(i * 7 % 41000, i % 6);
    const int count = static_cast<int>(points.size());
    for (CBitmapEx* picture : {bulk.get(), single.get()}) {
        CDC dc(*picture);
        const Selected useBrush(dc, brush);
        const SelectedStock noPen(dc, NULL_PEN);
        if (picture == bulk.get()) {
            dc.DrawRectangles(points.data(), count, {2, 1});
            dc.DrawPixels(points.data(), count, kBlue);
            dc.SelectStockObject(BLACK_PEN);
            dc.Polyline(points.data(), count);
            continue;
        }
        for (const CPoint& p : points) dc.Rectangle(Round(p, {2, 1}));
        for (const CPoint& p : points) dc.SetPixelV(p.x, p.y, kBlue);
        dc.SelectStockObject(BLACK_PEN);
        dc.MoveTo(points[0]);
        for (const CPoint& p : points) dc.LineTo(p);
    }
    EXPECT_EQ(DifferingPixels(*bulk, *single), 0);
    EXPECT_GT(PixelsUnlike(*bulk, kWhite), 40000);
}

TEST(Context, SelectsAndRestores) {
    const auto picture = NewPicture(10, 10);
    CDC dc(*picture);
    CPen pen(PS_SOLID, 0, kRed), other(PS_DASH, 0, kBlue);
    CGdiObject* const black = dc.SelectStockObject(NULL_PEN);
    ASSERT_NE(black, nullptr);
    dc.SelectObject(&pen);
    const int saved = dc.SaveDC();
    dc.SaveDC();
    dc.SetROP2(R2_XORPEN);
    dc.SetWindowOrg(5, 5);
    dc.IntersectClipRect({5, 5, 6, 6});
    EXPECT_EQ(dc.SelectObject(&other), &pen);
    EXPECT_EQ(dc.SetROP2(12345), 0);
    EXPECT_TRUE(dc.RestoreDC(saved));
    EXPECT_FALSE(dc.RestoreDC(-1));
    EXPECT_EQ(dc.GetROP2(), R2_COPYPEN);
    EXPECT_EQ(dc.GetWindowOrg(), CPoint(0, 0));
    EXPECT_EQ(dc.SelectObject(black), &pen);
    EXPECT_EQ(dc.SelectStockObject(12345), nullptr);
    dc.Rectangle(0, 0, 9, 9);
    EXPECT_EQ(dc.GetPixel(0, 0), RGB(0, 0, 0));
    EXPECT_EQ(dc.GetPixel(10, 0), CLR_INVALID);

    // The pen's handle goes before the line is drawn: the context has what it needs.
    dc.SelectObject(&pen);
    EXPECT_TRUE(pen.DeleteObject());
    dc.MoveTo(0, 0);
    dc.LineTo(5, 0);
    EXPECT_EQ(dc.GetPixel(3, 0), kRed);
}

TEST(Picture, ChangesSizeUnderItsContextAndSavesItself) {
    CBitmapEx picture(0, 16, 256), copy(4, 8, 16);
    CDC dc;
    EXPECT_EQ(dc.SelectObject(&picture), nullptr);
    dc.Rectangle(0, 0, 5, 5);  // nowhere to draw
    EXPECT_EQ(picture.GetBits(), nullptr);
    EXPECT_FALSE(picture.SaveAsPng("empty.png"));
    EXPECT_TRUE(picture.ReSize(&dc, 10, 20));
    EXPECT_FALSE(picture.ReSize(&dc, 10, 20));
    EXPECT_FALSE(picture.ReSize(&dc, 0, 20));
    EXPECT_FALSE(picture.ReSize(&dc, INT32_MAX, INT32_MAX));
    EXPECT_EQ(picture.GetWidth(), 10);
    dc.FillSolidRect({0, 0, 10, 20}, kBlue);
    EXPECT_TRUE(copy.Copy(&dc, &picture));
    EXPECT_EQ(PixelsUnlike(copy, 0xff0000ff), 0);
    EXPECT_EQ(copy.GetHeight(), 20);

    const TestFolder folder;
    EXPECT_TRUE(picture.SaveAsPng(folder.Path("picture.png").c_str()));
    const std::string png = folder.Read("picture.png");
    ASSERT_GT(png.size(), 24u);
    EXPECT_EQ(png.substr(1, 3), "PNG");
    EXPECT_EQ(png[19], 10);  // width
    EXPECT_EQ(png[23], 20);  // height
}

}  // namespace
