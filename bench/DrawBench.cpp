// Drawing long series on a picture of 1200 by 800 pixels: polylines and clouds of dots, conversion included.
// Every workload is first drawn with fewer points and held against the same points drawn one by one.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/Selected.h"

namespace {

constexpr int kWidth = 1200, kHeight = 800;
constexpr int kSpan = 1000000000;  // of x, stored units
constexpr int kPeak = 20000;       // of y
constexpr unsigned short kDeleted = 1;

enum Kind { kNoise, kSine, kSteep, kLoop, kJitter };
enum Filter { kAll, kSomeDeleted };

struct Series {
    std::vector<CPoint> points;
    std::vector<unsigned short> status;  // one in ten deleted
};

const Series& MakeSeries(Kind kind, int count) {
    static std::map<std::pair<Kind, int>, Series> made;
    Series& series = made[{kind, count}];
    if (!series.points.empty()) return series;
    std::mt19937 random(5);
    for (int i = 0; i < count; ++i) {
        auto x = static_cast<LONG>(double(kSpan) * i / count);
        const auto any = static_cast<int>(random() >> 1);
        const auto sine = static_cast<int>(kPeak * 0.75 * std::sin(i * 40.0 / count)) + any % 500;
        int y = kind == kNoise ? any % (2 * kPeak) - kPeak : sine;
        if (kind == kSteep) y = (i % 40 < 20 ? 1 : -1) * kPeak * 9 / 10;
        if (kind == kLoop) {
            x = static_cast<LONG>(kSpan * (0.5 + 0.45 * std::sin(i * 60.0 / count)));
            y = static_cast<int>(kPeak * 0.8 * std::sin(i * 61.0 / count - 0.5)) + any % 200;
        }
        if (kind == kJitter) x = std::max(0, x + any % 2000001 - 1000000);
        series.points.emplace_back(x, y);
        series.status.push_back(random() % 10 == 0 ? kDeleted : 0);
    }
    return series;
}

// Shows one part in `zoom` of x, from the middle, and all of y.
void UseView(CDC& dc, int zoom) {
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowOrg(zoom == 1 ? 0 : kSpan / 2, 0);
    dc.SetWindowExt(kSpan / zoom, -2 * kPeak);
    dc.SetViewportOrg(0, kHeight / 2);
    dc.SetViewportExt(kWidth, kHeight);
}

StatusFilter Undeleted(const Series& series, Filter filter) {
    return {filter == kAll ? nullptr : series.status.data(), kDeleted, 0};
}

template <class Bulk, class Single>
bool SamePicture(int zoom, const Series& series, const StatusFilter& which, Bulk&& bulk, Single&& single) {
    CBitmapEx expected(4, 16, 256), drawn(4, 16, 256);
    for (CBitmapEx* picture : {&expected, &drawn}) {
        picture->ReSize(nullptr, kWidth, kHeight);
        CDC dc(*picture);
        UseView(dc, zoom);
        if (picture == &drawn) {
            bulk(dc, series);
            continue;
        }
        bool first = true;
        for (std::size_t i = 0; i < series.points.size(); ++i)
            if (which.Takes(i)) single(dc, series.points[i], std::exchange(first, false));
    }
    return std::memcmp(expected.GetBits(), drawn.GetBits(), std::size_t{4} * kWidth * kHeight) == 0;
}

template <class Bulk>
void Time(benchmark::State& state, int zoom, const Series& series, Bulk&& bulk) {
    CBitmapEx picture(4, 16, 256);
    picture.ReSize(nullptr, kWidth, kHeight);
    CDC dc(picture);
    UseView(dc, zoom);
    for (auto _ : state) {
        bulk(dc, series);
        benchmark::DoNotOptimize(picture.GetBits());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(series.points.size()));
}

void DrawPolyline(benchmark::State& state, Kind kind, Filter filter, int zoom) {
    const auto bulk = [=](CDC& dc, const Series& series) {
        dc.Polyline(series.points.data(), static_cast<int>(series.points.size()), Undeleted(series, filter));
    };
    const auto single = [](CDC& dc, CPoint p, bool first) {
        if (first) dc.MoveTo(p);
        dc.LineTo(p);
    };
    const Series& small = MakeSeries(kind, 200000);
    if (!SamePicture(zoom, small, Undeleted(small, filter), bulk, single))
        return state.SkipWithError("the reduced polyline differs from its segments");
    Time(state, zoom, MakeSeries(kind, 10000000), bulk);
}

enum Course { kPan, kRedraw, kLeap };

// Smooth lines through ten million points: panned, drawn again after a change of the points, and without
// anything known about them.
void DrawSmoothLine(benchmark::State& state, Kind kind, Course course, int zoom) {
    const auto keep = [](const Series& series) {
        return std::make_unique<KeptLine>(
            KeptLine{PointPyramid(series.points.data(), series.points.size(), {}), 0, {}});
    };
    const auto draw = [](CDC& dc, const Series& series, KeptLine* kept) {
        dc.SmoothPolyline(series.points.data(), static_cast<int>(series.points.size()), {}, {}, kept);
    };
    const Series& small = MakeSeries(kind, 200000);
    const auto keptSmall = keep(small);
    CBitmapEx pictures[2]{{4, 16, 256}, {4, 16, 256}};
    for (CBitmapEx& picture : pictures) {
        picture.ReSize(nullptr, kWidth, kHeight);
        CDC dc(picture);
        UseView(dc, zoom);
        draw(dc, small, &picture == pictures ? nullptr : keptSmall.get());
    }
    if (std::memcmp(pictures[0].GetBits(), pictures[1].GetBits(), std::size_t{4} * kWidth * kHeight) != 0)
        return state.SkipWithError("what is kept changes the picture");

    const Series& series = MakeSeries(kind, 10000000);
    auto kept = keep(series);
    CDC dc(pictures[0]);
    UseView(dc, zoom);
    const CPoint origin = dc.GetWindowOrg();
    int step = 0;
    for (auto _ : state) {
        if (course == kRedraw) kept = keep(series);
        dc.SetWindowOrg(origin.x + ++step % 10 * (kSpan / zoom / 100), origin.y);
        draw(dc, series, course == kLeap ? nullptr : kept.get());
        benchmark::ClobberMemory();
    }
}

void DrawSinglePixels(benchmark::State& state, Kind kind, Filter filter) {
    const auto bulk = [=](CDC& dc, const Series& series) {
        dc.DrawPixels(series.points.data(), static_cast<int>(series.points.size()), RGB(0, 0, 255),
                      Undeleted(series, filter));
    };
    const auto single = [](CDC& dc, CPoint p, bool) { dc.SetPixelV(p.x, p.y, RGB(0, 0, 255)); };
    const Series& small = MakeSeries(kind, 100000);
    if (!SamePicture(1, small, Undeleted(small, filter), bulk, single))
        return state.SkipWithError("the cloud differs from its pixels");
    Time(state, 1, MakeSeries(kind, 1000000), bulk);
}

// Squares or circles about `pixels` wide; a stored unit of y is a fiftieth of a pixel.
void DrawShapes(benchmark::State& state, bool circles, int pixels, Filter filter) {
    const CSize half(kSpan / kWidth * pixels / 2, 2 * kPeak / kHeight * pixels / 2);
    CPen pen(PS_SOLID, 0, RGB(0, 0, 255));
    CBrush brush(RGB(0, 0, 255));
    const auto bulk = [&](CDC& dc, const Series& series) {
        const Selected usePen(dc, pen);
        const Selected useBrush(dc, brush);
        const int count = static_cast<int>(series.points.size());
        if (circles)
            dc.DrawEllipses(series.points.data(), count, half, Undeleted(series, filter));
        else
            dc.DrawRectangles(series.points.data(), count, half, Undeleted(series, filter));
    };
    const auto single = [&](CDC& dc, CPoint p, bool) {
        const Selected usePen(dc, pen);
        const Selected useBrush(dc, brush);
        const CRect box(p.x - half.cx, p.y - half.cy, p.x + half.cx, p.y + half.cy);
        circles ? dc.Ellipse(box) : dc.Rectangle(box);
    };
    const Series& small = MakeSeries(kNoise, 40000);
    if (!SamePicture(1, small, Undeleted(small, filter), bulk, single))
        return state.SkipWithError("the cloud differs from its dots");
    Time(state, 1, MakeSeries(kNoise, 1000000), bulk);
}

BENCHMARK_CAPTURE(DrawPolyline, noise, kNoise, kAll, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, noise_filtered, kNoise, kSomeDeleted, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, noise_zoomed_100, kNoise, kAll, 100)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, sine, kSine, kAll, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, sine_filtered, kSine, kSomeDeleted, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, sine_zoomed_100, kSine, kAll, 100)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, sine_zoomed_100_filtered, kSine, kSomeDeleted, 100)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, loop, kLoop, kAll, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawPolyline, jitter, kJitter, kAll, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, pan_noise, kNoise, kPan, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, pan_sine, kSine, kPan, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, pan_steep, kSteep, kPan, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, pan_sine_zoomed_100, kSine, kPan, 100)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, redraw_noise, kNoise, kRedraw, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, redraw_sine, kSine, kRedraw, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, redraw_steep, kSteep, kRedraw, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, unsorted_loop, kLoop, kLeap, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSmoothLine, unsorted_jitter, kJitter, kLeap, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSinglePixels, noise, kNoise, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSinglePixels, noise_filtered, kNoise, kSomeDeleted)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawSinglePixels, sine, kSine, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, squares_3_pixels, false, 3, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, squares_7_pixels, false, 7, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, squares_11_pixels, false, 11, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, squares_11_pixels_filtered, false, 11, kSomeDeleted)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, circles_3_pixels, true, 3, kAll)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawShapes, circles_7_pixels, true, 7, kAll)->Unit(benchmark::kMillisecond);

}  // namespace
