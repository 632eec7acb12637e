// A graph view of 1200 by 800 pixels, end to end: what a user waits for after each turn of the wheel.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include "platform/gdi/CBitmapEx.h"
#include "sources/KPointSource.h"
#include "views/CXYGraphView.h"

namespace {

constexpr CSize kArea(1200, 800);

// A sine with noise, ten stored units between samples.
std::unique_ptr<KPointSource> NoisySine(int count) {
    auto series = std::make_unique<KPointSource>("sine", 1000.0, 1000.0, "s", "m", count, 1);
    std::mt19937 random(7);
    for (int i = 0; i < count; ++i) {
        const double y = 20000.0 * std::sin(i * 20.0 / count) + static_cast<int>(random() % 500);
        series->push_back({i * 10, RoundHalfAway(y)});
    }
    return series;
}

class BenchView : public CXYGraphView {
  public:
    explicit BenchView(IPointSource* series, LineLook look = LineLook::Hairline)
        : CXYGraphView("ViewBench", true, -1, RGB(255, 255, 255), 0, series) {
        lineLook = look;
        picture_.ReSize(nullptr, kArea.cx, kArea.cy);
        OnInitialUpdate();
    }
    void Draw() {
        CDC dc(picture_);
        DrawOn(dc, kArea);
    }
    // Zooms `factor` times about the middle of the x axis.
    bool ZoomIn(float factor) {
        Zoom(factor, 1.0f, zoom.ViewCentre());
        SetScrollSizes();
        return zoom.Depth() > 1;
    }
    void PanBy(int delta) { zoom.Current().originX += delta; }
    void Toggle(float factor) {
        if (zoom.Depth() > 1) {
            zoom.Back();
            SetScrollSizes();
        } else {
            ZoomIn(factor);
        }
    }
    int VisibleWidth() const { return zoom.viewExtent.cx; }
    // Pixels of the line.
    int Drawn() {
        int drawn = 0;
        for (int y = 100; y < kArea.cy - 100; ++y)
            for (int x = 200; x < kArea.cx - 200; ++x)
                drawn +=
                    static_cast<const std::uint32_t*>(picture_.GetBits())[y * kArea.cx + x] == 0xff005b82;
        return drawn;
    }

  private:
    CBitmapEx picture_{4, 16, 256};
};

KPointSource& TenMillion() {
    static const std::unique_ptr<KPointSource> series = NoisySine(10000000);
    return *series;
}

void Prepare() {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("TAVIN_REGISTRY", (std::string("/tmp/tavin-view-bench-") + std::to_string(getpid())).c_str(), 0);
}

// A new view each time: nothing is known about the series.
void FirstPicture(benchmark::State& state, LineLook look) {
    Prepare();
    KPointSource& series = TenMillion();
    for (auto _ : state) {
        state.PauseTiming();
        BenchView view(&series, look);
        state.ResumeTiming();
        view.Draw();
        if (view.Drawn() < 1000) state.SkipWithError("no line");
    }
}

// Between the whole range and a little less of it.
void ZoomFullView(benchmark::State& state) {
    Prepare();
    BenchView view(&TenMillion());
    view.Draw();
    if (view.Drawn() < 1000) state.SkipWithError("no line");
    for (auto _ : state) {
        view.Toggle(1.05f);
        view.Draw();
    }
}

void PanFullView(benchmark::State& state, LineLook look) {
    Prepare();
    BenchView view(&TenMillion(), look);
    view.ZoomIn(1.05f);
    view.Draw();
    if (view.Drawn() < 1000) state.SkipWithError("no line");
    int step = view.VisibleWidth() / 100;
    for (auto _ : state) {
        view.PanBy(step = -step);
        view.Draw();
    }
}

void PanZoomedToOnePercent(benchmark::State& state) {
    Prepare();
    BenchView view(&TenMillion());
    if (!view.ZoomIn(100.0f)) state.SkipWithError("refused");
    view.Draw();
    if (view.Drawn() < 500) state.SkipWithError("no line");
    int step = view.VisibleWidth() / 100;
    for (auto _ : state) {
        view.PanBy(step = -step);
        view.Draw();
    }
}

BENCHMARK_CAPTURE(FirstPicture, hairlines, LineLook::Hairline)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK_CAPTURE(FirstPicture, smooth, LineLook::Smooth)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(ZoomFullView)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK_CAPTURE(PanFullView, hairlines, LineLook::Hairline)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK_CAPTURE(PanFullView, smooth, LineLook::Smooth)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(PanZoomedToOnePercent)->Unit(benchmark::kMillisecond)->MinTime(0.5);

}  // namespace
