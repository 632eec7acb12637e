// Smooth lines: against a slow drawing that asks 64 samples of each pixel whether they lie on any stroke, and
// all the quick ways against each other, pixel for pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/Selected.h"
#include "platform/gdi/SmoothStrokes.h"
#include "tests/core/Limits.h"
#include "tests/gdi/DrawingTest.h"

namespace {

constexpr int kWidth = 120, kHeight = 80;
constexpr unsigned short kDeleted = 1;

int Any(std::mt19937& random, int low, int high) { return std::uniform_int_distribution(low, high)(random); }

// Points in 0..10000 on both axes, roughly.
struct Shape {
    const char* name;
    bool ordered;
    std::function<CPoint(int i, int count, std::mt19937& random)> at;
};
int Sine(int i, int n) { return static_cast<int>(5000 + 4000 * std::sin(i * 20.0 / n)); }
const Shape kShapes[] = {
    {"noise", true, [](int i, int n, std::mt19937& r) { return CPoint(i * 10000LL / n, Any(r, 0, 10000)); }},
    {"sine", true,
     [](int i, int n, std::mt19937& r) { return CPoint(i * 10000LL / n, Sine(i, n) + Any(r, 0, 300)); }},
    {"constant", true, [](int i, int n, std::mt19937&) { return CPoint(i * 10000LL / n, 5003); }},
    {"steep", true,
     [](int i, int n, std::mt19937&) { return CPoint(i * 10000LL / n, i % 40 < 20 ? 700 : 9300); }},
    {"descending", true,
     [](int i, int n, std::mt19937& r) {
         return CPoint((n - i) * 10000LL / n, Sine(i, n) + Any(r, 0, 300));
     }},
    {"equal x", true, [](int, int, std::mt19937& r) { return CPoint(5000, Any(r, 2000, 8000)); }},
    {"one spot", true, [](int, int, std::mt19937&) { return CPoint(5000, 5000); }},
    {"loop", false,
     [](int i, int n, std::mt19937&) { return CPoint(Sine(3 * i, n), Sine(4 * i + n / 9, n)); }},
    {"jitter", false,
     [](int i, int n, std::mt19937& r) { return CPoint(i * 10000LL / n + Any(r, -150, 150), Sine(i, n)); }},
    {"anywhere", false,
     [](int, int, std::mt19937& r) { return CPoint(Any(r, -9000, 19000), Any(r, -9000, 19000)); }},
};

constexpr MappedView kViews[] = {
    {"whole", {0, 0}, {10000, 10000}, {5, 75}, {110, -70}},
    {"mirrored", {0, 0}, {10000, 10000}, {115, 5}, {-110, 70}},
    {"odd origin", {4321, 1234}, {7919, 7907}, {31, 63}, {111, -73}},
    {"part", {4900, 5000}, {300, 2000}, {0, 40}, {120, -60}},
};

struct Data {
    std::vector<CPoint> points;
    std::vector<unsigned short> status;
    std::vector<int> breaks;

    Data(const Shape& shape, int count, bool holes) : status(static_cast<std::size_t>(count)) {
        std::mt19937 random(7);
        const auto at = shape.at;
        for (int i = 0; i < count; ++i) points.push_back(at(i, count, random));
        if (!holes) return;
        for (auto& word : status) word = Any(random, 0, 5) == 0 ? kDeleted : 0;
        for (int i = 0; i < count; i += Any(random, 0, count / 20) + 1) breaks.push_back(i);
        if (count > 100) breaks.insert(breaks.end(), {count - 3, count - 2, count - 1});
        std::sort(breaks.begin(), breaks.end());
    }
    int Count() const { return static_cast<int>(points.size()); }
    StatusFilter Which() const { return {status.data(), kDeleted, 0}; }
    LineBreaks Breaks() const { return {breaks.data(), static_cast<int>(breaks.size())}; }
    // Pairs of neighbours on the line; a point alone is its own neighbour.
    void ForEachSegment(const std::function<void(CPoint, CPoint, bool alone)>& visit) const {
        ForEachPiece(points.size(), Breaks(), [&](std::size_t begin, std::size_t end) {
            std::vector<CPoint> piece;
            for (std::size_t i = begin; i < end; ++i)
                if (!status[i]) piece.push_back(points[i]);
            const bool alone = piece.size() == 1;
            if (alone) piece.push_back(piece[0]);
            for (std::size_t i = 1; i < piece.size(); ++i) visit(piece[i - 1], piece[i], alone);
        });
    }
};

std::unique_ptr<CBitmapEx> Drawn(const MappedView& view, int dotsPerInch,
                                 const std::function<void(CDC&)>& draw) {
    auto picture = NewPicture(kWidth, kHeight);
    picture->SetDotsPerInch(dotsPerInch);
    CDC dc(*picture);
    UseView(dc, view);
    CPen pen(PS_SOLID, 0, RGB(0, 255, 0));
    const Selected usePen(dc, pen);
    draw(dc);
    return picture;
}

std::unique_ptr<CBitmapEx> Drawn(const MappedView& view, const Data& data, int dotsPerInch = 96,
                                 KeptLine* kept = nullptr) {
    return Drawn(view, dotsPerInch, [&](CDC& dc) {
        EXPECT_TRUE(dc.SmoothPolyline(data.points.data(), data.Count(), data.Which(), data.Breaks(), kept));
    });
}

KeptLine Keep(const Data& data) {
    return {PointPyramid(data.points.data(), data.points.size(), data.Which()), 0, {}};
}

// 0 to 64.
int CoverageOf(std::uint32_t pixel) {
    return static_cast<int>(std::lround((255 - (pixel & 0xff)) * 64 / 255.0));
}

class Samples {
  public:
    explicit Samples(const MappedView& view) : m_view(view), m_inside(kWidth * kHeight * 64) {}

    void Stroke(CPoint a, CPoint b, double radius) {
        const double x0 = X(a.x), y0 = Y(a.y), dx = X(b.x) - x0, dy = Y(b.y) - y0, square = dx * dx + dy * dy;
        const auto clamp = [](double v, int most) {
            return static_cast<int>(std::clamp(v, 0.0, double(most)));
        };
        const int right = clamp(std::max(x0, x0 + dx) + radius + 1, kWidth * 8);
        for (int c = clamp(std::min(x0, x0 + dx) - radius - 1, kWidth * 8); c < right; ++c) {
            // The rows in which the stroke crosses the columns in reach.
            const auto rowAt = [&](double x) {
                return y0 + (dx != 0 ? std::clamp((x - x0) / dx, 0.0, 1.0) : 0.0) * dy;
            };
            const double y1 = dx != 0 ? rowAt(c - radius - 1) : y0,
                         y2 = dx != 0 ? rowAt(c + radius + 2) : y0 + dy;
            const int bottom = clamp(std::max(y1, y2) + radius + 2, kHeight * 8);
            for (int r = clamp(std::min(y1, y2) - radius - 2, kHeight * 8); r < bottom; ++r) {
                static const double kTurns[8] = {0, 4, 2, 6, 1, 5, 3, 7};
                const double x = c + 0.5 - x0, y = r + 0.5 + (kTurns[c % 8] - 3.5) / 8 - y0;
                const double t = square > 0 ? std::clamp((x * dx + y * dy) / square, 0.0, 1.0) : 0.0;
                if (std::hypot(x - t * dx, y - t * dy) < radius)
                    m_inside[static_cast<std::size_t>((r / 8 * kWidth + c / 8) * 64 + r % 8 * 8 + c % 8)] = 1;
            }
        }
    }
    int CoverageOf(int pixel) const {
        const auto first = m_inside.begin() + pixel * 64;
        return std::accumulate(first, first + 64, 0);
    }

  private:
    double X(int x) const {
        const double slope = 8.0 * m_view.viewportExt.cx / m_view.windowExt.cx;
        return std::nearbyint(slope * x) - std::nearbyint(slope * m_view.windowOrg.x) +
               8.0 * m_view.viewportOrg.x + 4;
    }
    double Y(int y) const {
        return 8.0 * m_view.viewportExt.cy / m_view.windowExt.cy * (y - m_view.windowOrg.y) +
               8.0 * m_view.viewportOrg.y + 4;
    }

    MappedView m_view;
    std::vector<char> m_inside;
};

// A sample that lies on an edge within the precision of 1/256 of a sub-row may fall on either side.
void ExpectLike(CBitmapEx& picture, const Samples& expected, const std::string& what) {
    int off = 0, far = 0, covered = 0;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        const int coverage = expected.CoverageOf(i);
        const int differs = std::abs(CoverageOf(Pixels(picture)[i]) - coverage);
        off += differs > 1;
        far += differs > 2;
        covered += coverage > 0;
    }
    EXPECT_EQ(far, 0) << what;
    EXPECT_LE(off, covered / 50 + 1) << what;
}

TEST(SmoothLine, CoversTheSamplesOnItsStrokes) {
    for (const Shape& shape : kShapes)
        for (const int count : {1, 2, 90, 1500})
            for (const bool holes : {false, true}) {
                const Data data(shape, count, holes);
                for (const MappedView& view : kViews)
                    for (const int dotsPerInch : {96, 120, 144, 192, 288}) {
                        if (dotsPerInch != 96 && (&view != &kViews[0] || count != 90)) continue;
                        Samples samples(view);
                        const double radius = 6.0 * dotsPerInch / 96;
                        data.ForEachSegment([&](CPoint a, CPoint b, bool alone) {
                            samples.Stroke(a, b, alone ? 2 * radius : radius);
                        });
                        const std::string what = std::string(shape.name) + ", " + view.name + ", " +
                                                 std::to_string(count) + (holes ? " with holes, " : ", ") +
                                                 std::to_string(dotsPerInch);
                        ExpectLike(*Drawn(view, data, dotsPerInch), samples, what);
                    }
            }
}

// Every segment by itself, without looking for runs.
std::unique_ptr<CBitmapEx> Unreduced(const MappedView& view, const Data& data) {
    auto picture = NewPicture(kWidth, kHeight);
    const Mapping mapping{MM_ANISOTROPIC,
                          {view.windowOrg.x, view.windowExt.cx, view.viewportOrg.x, view.viewportExt.cx},
                          {view.windowOrg.y, view.windowExt.cy, view.viewportOrg.y, view.viewportExt.cy}};
    const SubpixelColumns columns(mapping.x);
    const SubpixelRows rows(mapping.y);
    SubpixelGrid grid;
    grid.Cover({0, 0, kWidth, kHeight});
    data.ForEachSegment([&](CPoint a, CPoint b, bool alone) {
        const bool upright = columns.Column(a.x) == columns.Column(b.x);
        const LineRun runs[] = {
            {a, a, upright ? std::min(a.y, b.y) : a.y, upright ? std::max(a.y, b.y) : a.y, 0, false, alone},
            {b, b, b.y, b.y, 1, !alone, alone}};
        DrawRuns(grid, {columns, rows, RoundTip(6), RoundTip(12)}, runs, true);
    });
    grid.Blend({static_cast<std::uint32_t*>(picture->GetBits()), kWidth, {0, 0, kWidth, kHeight}},
               0xff00ff00);
    return picture;
}

const Shape kFarShapes[] = {
    {"extremes", false,
     [](int i, int, std::mt19937& r) {
         if (i % 500 == 0) return CPoint(kMin, kMax);
         if (i % 500 == 1) return CPoint(kMax, kMin);
         return CPoint(Any(r, kMin, kMax) / (i % 7 ? 400000 : 1), Any(r, kMin, kMax) / (i % 3 ? 400000 : 1));
     }},
};
constexpr MappedView kFarViews[] = {
    {"deep", {4990, 4999}, {20, -7}, {0, 0}, {3000, 300}},
    {"deepest", {5000, 5000}, {1, -1}, {60, 40}, {kMax, kMax}},
    {"all 32 bits", {kMin, kMin}, {kMax, kMax}, {0, 0}, {60, 40}},
    {"far away", {kMax, kMax}, {1, 1}, {0, 0}, {1, 1}},
    {"falling", {kMin, kMax}, {kMin, kMax}, {kMax, kMin}, {kMin, kMin}},
};

TEST(SmoothLine, ReducedIsThePictureOfEverySegment) {
    std::vector<MappedView> views(std::begin(kViews), std::end(kViews));
    views.insert(views.end(), std::begin(kFarViews), std::end(kFarViews));
    std::vector<Shape> shapes(std::begin(kShapes), std::end(kShapes));
    shapes.insert(shapes.end(), std::begin(kFarShapes), std::end(kFarShapes));
    for (const Shape& shape : shapes)
        for (const bool holes : {false, true}) {
            const Data data(shape, 20011, holes);
            KeptLine kept = Keep(data);
            EXPECT_EQ(kept.pyramid.XOrder() != PointPyramid::Order::None, shape.ordered) << shape.name;
            for (const MappedView& view : views) {
                const auto every = Unreduced(view, data);
                EXPECT_EQ(DifferingPixels(*Drawn(view, data), *every), 0) << shape.name << ", " << view.name;
                EXPECT_EQ(DifferingPixels(*Drawn(view, data, 96, &kept), *every), 0)
                    << shape.name << ", " << view.name << ", kept";
            }
        }
}

// Every picture of a walk over the data is drawn from what the one before left.
TEST(SmoothLine, KeptRunsDrawThePictureOfAllPoints) {
    std::mt19937 random(3);
    for (const Shape& shape : kShapes) {
        if (!shape.ordered) continue;
        for (const bool holes : {false, true}) {
            const Data data(shape, 20011, holes);
            KeptLine kept = Keep(data);
            MappedView view{"", {4000, 0}, {700, 10000}, {5, 75}, {110, -70}};
            for (int step = 0; step < 60; ++step) {
                view.windowOrg.x += Any(random, -step * 20, step * 20);
                view.windowOrg.y += Any(random, -300, 300);
                if (step % 20 == 19) view.windowExt.cx = Any(random, 1, 2000);
                if (step % 25 == 24) view.windowOrg.x = Any(random, -3000, 13000);
                EXPECT_EQ(DifferingPixels(*Drawn(view, data, 96, &kept), *Drawn(view, data)), 0)
                    << shape.name << ", step " << step << ", from " << view.windowOrg.x;
            }
        }
    }
}

// Clipped to either side of a place, also where that makes the grid of a strip another one, and in strips.
TEST(SmoothLine, IsThePictureOfItsParts) {
    const Data data(kShapes[9], 900, true);
    const int height = 16000;
    const auto draw = [&](const std::vector<CRect>& clips) {
        auto picture = NewPicture(300, height);
        CDC dc(*picture);
        UseView(dc, {"", {0, 0}, {10000, 10000}, {5, height - 5}, {290, 10 - height}});
        for (const CRect& clip : clips) {
            CRgn region;
            region.CreateRectRgnIndirect(&clip);
            dc.SelectClipRgn(&region);
            dc.SmoothPolyline(data.points.data(), data.Count(), data.Which(), data.Breaks());
        }
        return picture;
    };
    const auto whole = draw({{0, 0, 300, height}});
    const auto parts =
        draw({{0, 0, 101, height}, {101, 0, 107, 777}, {101, 777, 107, height}, {107, 0, 300, height}});
    EXPECT_GT(PixelsUnlike(*whole, kWhite), 10000);
    EXPECT_EQ(DifferingPixels(*whole, *parts), 0);
}

TEST(SmoothLine, MixesItsColourWithWhatIsThere) {
    const MappedView pixels{"", {0, 0}, {1, 1}, {0, 0}, {1, 1}};
    const CPoint level[] = {{-100, 40}, {300, 40}};
    const auto picture = Drawn(pixels, 96, [&](CDC& dc) {
        dc.FillSolidRect({0, 0, kWidth, kHeight}, RGB(200, 100, 0));
        CPen pen(PS_SOLID, 0, RGB(0, 255, 77));
        const Selected usePen(dc, pen);
        dc.SmoothPolyline(level, 2);
    });
    // 1.5 pixels: one row whole and a quarter of either neighbour.
    EXPECT_EQ(Pixels(*picture)[40 * kWidth + 60], 0xff00ff4du);
    for (const int y : {39, 41}) EXPECT_EQ(Pixels(*picture)[y * kWidth + 60], 0xff968b13u) << y;
    for (const int y : {38, 42}) EXPECT_EQ(Pixels(*picture)[y * kWidth + 60], 0xffc86400u) << y;
}

TEST(SmoothLine, StaysAHairlineInOtherStylesAndOperations) {
    const Data data(kShapes[1], 500, false);
    for (const bool styled : {true, false}) {
        const auto draw = [&](bool smooth) {
            return Drawn(kViews[0], 96, [&](CDC& dc) {
                CPen pen(styled ? PS_DASH : PS_SOLID, 0, RGB(255, 0, 0));
                const Selected usePen(dc, pen);
                if (!styled) dc.SetROP2(R2_XORPEN);
                smooth ? dc.SmoothPolyline(data.points.data(), data.Count())
                       : dc.Polyline(data.points.data(), data.Count());
            });
        };
        EXPECT_EQ(DifferingPixels(*draw(true), *draw(false)), 0) << styled;
        EXPECT_GT(PixelsUnlike(*draw(true), kWhite), 0) << styled;
    }
}

TEST(SmoothLine, DotsAreDiscsOfTheirDiameter) {
    const Data data(kShapes[0], 40, true);
    for (const int diameter : {0, 96, 320}) {
        Samples samples(kViews[0]);
        const double radius = std::max(6.0, diameter * 96 * 8 / 2540.0 / 2);
        for (std::size_t i = 0; i < data.points.size(); ++i)
            if (!data.status[i]) samples.Stroke(data.points[i], data.points[i], radius);
        const auto picture = Drawn(kViews[0], 96, [&](CDC& dc) {
            dc.DrawSmoothDots(data.points.data(), data.Count(), diameter, RGB(0, 255, 0), data.Which());
        });
        ExpectLike(*picture, samples, std::to_string(diameter));
    }
}

}  // namespace
