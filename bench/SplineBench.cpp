// Smoothing and wave-length spike detection of a million unevenly spaced points, whole operations.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "editing/SmoothingSpline.h"
#include "editing/SpikeDetect.h"
#include "sources/PointStatus.h"

namespace {

constexpr int kPoints = 1000000;
constexpr double kWave = 20000;  // of the signal, in stored x units
constexpr double kHeight = 20000;

double SignalAt(int x) { return kHeight * std::sin(6.283185307179586 / kWave * x); }

// A slow wave under noise of +-1000, every thousandth point thrown out by 30000.
const std::vector<CPoint>& NoisyWave() {
    static const std::vector<CPoint> points = [] {
        std::mt19937 random(2024);
        std::vector<CPoint> made;
        int x = 0;
        for (int i = 0; i < kPoints; ++i) {
            x += 1 + static_cast<int>(random() % 20);
            const int spike = i % 1000 == 500 ? 30000 : 0;
            const int noise = static_cast<int>(random() % 2001) - 1000;
            made.emplace_back(x, static_cast<int>(SignalAt(x)) + noise + spike);
        }
        return made;
    }();
    return points;
}

// The share of the signal that the points in `smoothed` have kept.
double ShareKept(const std::vector<CPoint>& smoothed) {
    double product = 0, square = 0;
    for (const CPoint& p : smoothed) {
        product += p.y * SignalAt(p.x);
        square += SignalAt(p.x) * SignalAt(p.x);
    }
    return product / square;
}

// The argument is the wave length; x counts tenths.
void SmoothMillionPoints(benchmark::State& state) {
    const auto waveLength = static_cast<double>(state.range(0));
    const double expected = 1 / (1 + std::pow(waveLength * 10 / kWave, 4));
    std::vector<unsigned short> status(kPoints);
    std::vector<CPoint> points = NoisyWave();
    const auto smooth = [&] {
        return SmoothPoints(points.data(), nullptr, kPoints, nullptr, kPoints, waveLength, 1, 10.0, 100.0,
                            status.data(), nullptr, 0);
    };
    if (smooth() != 1 || std::fabs(ShareKept(points) - expected) > 0.01) {
        state.SkipWithError("the fit does not keep the share of the signal that it should");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        points = NoisyWave();
        state.ResumeTiming();
        benchmark::DoNotOptimize(smooth());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
    state.counters["s/point"] = benchmark::Counter(static_cast<double>(state.iterations()) * kPoints,
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(SmoothMillionPoints)->Arg(5)->Arg(200)->Arg(2000)->Arg(500000)->Unit(benchmark::kMillisecond);

void DetectSpikesInMillionPoints(benchmark::State& state) {
    const bool withBand = state.range(0) != 0;
    const std::vector<CPoint>& points = NoisyWave();
    std::vector<unsigned short> status(kPoints);
    std::vector<CPoint> band(withBand ? 2 * kPoints : 0);
    int bandCount = 0;
    const auto detect = [&] {
        return SpikeDetect(points.data(), nullptr, kPoints, nullptr, kPoints, 100, 15000, 1, 10.0, 100.0,
                           withBand ? band.data() : nullptr, &bandCount, status.data());
    };
    bool right = detect();
    for (int i = 0; i < kPoints; ++i) {
        right = right && ((status[static_cast<std::size_t>(i)] & PS_SPIKE) != 0) == (i % 1000 == 500);
    }
    if (!right) {
        state.SkipWithError("the spikes found are not those put in");
        return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(detect());
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(DetectSpikesInMillionPoints)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
