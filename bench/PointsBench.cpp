// Edits and statistics of ten million points, with one plain pass over the arrays as the yardstick.
#include <benchmark/benchmark.h>

#include <functional>
#include <random>
#include <vector>

#include "editing/Interpolate.h"
#include "editing/PointMarks.h"
#include "editing/PointRoutines.h"
#include "sources/KPointSource.h"

namespace {

constexpr int kPoints = 10000000;

struct Arrays {
    std::vector<CPoint> data;
    std::vector<unsigned short> status;

    Arrays() : status(kPoints) {
        std::mt19937 random(1);
        data.reserve(kPoints);
        for (int i = 0; i < kPoints; ++i) data.emplace_back(i, static_cast<LONG>(random() % 100000));
    }
};

Arrays& Shared() {
    static Arrays arrays;
    return arrays;
}

// Reads and writes every sample and status word.
void PlainPass(benchmark::State& state) {
    Arrays& a = Shared();
    for (auto _ : state) {
        for (CPoint& point : a.data) point.y ^= 1;
        for (unsigned short& word : a.status) word |= PS_MOVED;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PlainPass)->Unit(benchmark::kMillisecond);

void ReadingPass(benchmark::State& state) {
    Arrays& a = Shared();
    for (auto _ : state) {
        LONG sum = 0;
        for (const CPoint& point : a.data) sum ^= point.x ^ point.y;
        for (const unsigned short word : a.status) sum ^= word;
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(ReadingPass)->Unit(benchmark::kMillisecond);

void Edit(benchmark::State& state, const std::function<int(Arrays&)>& edit, LONG from, LONG to) {
    Arrays& a = Shared();
    const CPoint kept = a.data[kPoints - 1];
    a.data[kPoints - 1].y = from;
    edit(a);
    if (a.data[kPoints - 1].y != to) state.SkipWithError("wrong result");
    a.data[kPoints - 1] = kept;
    for (auto _ : state) {
        benchmark::DoNotOptimize(edit(a));
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(
    Edit, Translate,
    [](Arrays& a) {
        return TranslatePoints(a.data.data(), kPoints, nullptr, kPoints, 0, 1, 1, a.status.data(), nullptr,
                               0);
    },
    5, 6)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(
    Edit, Offset,
    [](Arrays& a) {
        return ScaleWithOffset(a.data.data(), kPoints, nullptr, kPoints, 0.5, 100, 1, a.status.data(),
                               nullptr, 0);
    },
    201, 151)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(
    Edit, Ramp,
    [](Arrays& a) {
        return RampScale(a.data.data(), kPoints, nullptr, kPoints, 10, a.status.data(), nullptr, 0);
    },
    5, 15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(
    Edit, Drift,
    [](Arrays& a) {
        return DriftScale(a.data.data(), kPoints, nullptr, kPoints, 1, a.status.data(), nullptr, 0);
    },
    200, 202)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(
    Edit, Custom,
    [](Arrays& a) {
        return CustomScale(a.data.data(), kPoints, nullptr, kPoints, 1, 0, a.status.data(), nullptr, 0);
    },
    200, 202)
    ->Unit(benchmark::kMillisecond);

// Every `step` points, `step` - 1 are listed.
std::vector<long> Listed(long step) {
    std::vector<long> indices;
    for (long i = 0; i < kPoints; ++i)
        if (i % step != 0) indices.push_back(i);
    return indices;
}

void TranslateListed(benchmark::State& state) {
    Arrays& a = Shared();
    const std::vector<long> indices = Listed(state.range(0));
    for (auto _ : state) {
        TranslatePoints(a.data.data(), kPoints, indices.data(), static_cast<int>(indices.size()), 0, 1, 1,
                        a.status.data(), nullptr, 0);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TranslateListed)->Arg(2)->Arg(1000)->Unit(benchmark::kMillisecond);

void MarkListed(benchmark::State& state) {
    Arrays& a = Shared();
    const std::vector<long> indices = Listed(state.range(0));
    for (auto _ : state) {
        MarkPoints(kPoints, indices.data(), static_cast<long>(indices.size()), state.range(1) != 0,
                   a.status.data(), PS_SPIKE, nullptr, 0);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MarkListed)
    ->ArgNames({"step", "inside"})
    ->ArgsProduct({{2, 1000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

void InterpolateListed(benchmark::State& state) {
    Arrays& a = Shared();
    const std::vector<long> indices = Listed(state.range(0));
    for (auto _ : state) {
        InterpolatePoints(a.data.data(), kPoints, indices.data(), static_cast<long>(indices.size()), 10.0,
                          a.status.data());
        benchmark::ClobberMemory();
    }
    if (state.range(0) == 2 && std::abs(2 * a.data[1].y - a.data[0].y - a.data[2].y) > 1)
        state.SkipWithError("wrong result");
}
BENCHMARK(InterpolateListed)->Arg(2)->Arg(1000)->Unit(benchmark::kMillisecond);

void Statistics(benchmark::State& state) {
    KPointSource series("series", 10.0, 10.0, "s", "m", kPoints, 1000);
    for (const CPoint& point : Shared().data) series.push_back(point);
    series.GetStatus()[kPoints - 1] = PS_DELETED;
    for (auto _ : state) benchmark::DoNotOptimize(series.UpdateStats());
    if (series.GetMaxX() != (kPoints - 2) / 10.0) state.SkipWithError("wrong extent");
}
BENCHMARK(Statistics)->Unit(benchmark::kMillisecond);

}  // namespace
