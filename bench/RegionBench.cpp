// Points of a noisy series against regions: the whole operation, from the outline to the flags.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "editing/CBigRegion.h"

namespace {

constexpr long kPoints = 1000000;

// x ascends; y scatters over the height of the region and beyond.
std::vector<CPoint> NoisySeries(bool sorted) {
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 400000.0);
    std::vector<CPoint> points;
    for (long i = 0; i < kPoints; ++i)
        points.emplace_back(static_cast<LONG>(i), RoundHalfAway(noise(random)));
    if (!sorted) std::shuffle(points.begin(), points.end(), random);
    return points;
}

std::vector<CPoint> Outline(int vertices) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> radius(0.8, 1.0);
    std::vector<CPoint> outline;
    for (int i = 0; i < vertices; ++i) {
        const double angle = 6.283185307179586 * (i + 0.3) / vertices;
        const double r = radius(random);
        outline.emplace_back(RoundHalfAway(500000 + 450000 * r * std::cos(angle)),
                             RoundHalfAway(800000 * r * std::sin(angle)));
    }
    return outline;
}

void FlagPoints(benchmark::State& state) {
    const std::vector<CPoint> points = NoisySeries(state.range(1) != 0);
    const std::vector<CPoint> outline = Outline(static_cast<int>(state.range(0)));
    std::vector<unsigned char> inside(points.size());
    for (auto _ : state) {
        const CBigRegion region(outline.data(), static_cast<int>(outline.size()));
        region.PtsInRegion(points.data(), kPoints, inside.data());
        benchmark::DoNotOptimize(inside.data());
    }
    const CBigRegion region(outline.data(), static_cast<int>(outline.size()));
    for (std::size_t i = 0; i < points.size(); i += 997)
        if (region.PtInRegion(points[i]) != (inside[i] == 1)) return state.SkipWithError("wrong answer");
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(FlagPoints)
    ->ArgNames({"vertices", "sorted"})
    ->ArgsProduct({{4, 100, 1000, 100000}, {1, 0}})
    ->Unit(benchmark::kMillisecond);

void SelectPoints(benchmark::State& state) {
    const std::vector<CPoint> points = NoisySeries(true);
    const std::vector<CPoint> outline = Outline(100);
    const CBigRegion region(outline.data(), 100);
    std::vector<long> indices;
    for (auto _ : state) {
        SelectInRegion(region, points.data(), kPoints, true, indices);
        benchmark::DoNotOptimize(indices.data());
    }
    if (!std::is_sorted(indices.begin(), indices.end()) || indices.empty())
        state.SkipWithError("wrong selection");
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(SelectPoints)->Unit(benchmark::kMillisecond);

void FlagFewPoints(benchmark::State& state) {
    const std::vector<CPoint> points = NoisySeries(true);
    const std::vector<CPoint> outline = Outline(1000);
    const CBigRegion region(outline.data(), 1000);
    std::vector<unsigned char> inside(points.size());
    for (auto _ : state) {
        region.PtsInRegion(points.data() + kPoints / 2, state.range(0), inside.data());
        benchmark::DoNotOptimize(inside.data());
    }
}
BENCHMARK(FlagFewPoints)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
