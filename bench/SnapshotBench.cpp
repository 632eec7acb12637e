// Saving and restoring ten million points, with copying the same bytes to fresh memory as the yardstick.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "sources/KPointSource.h"

namespace {

constexpr int kPoints = 10000000;
constexpr std::size_t kBytes = kPoints * (sizeof(CPoint) + sizeof(unsigned short));

KPointSource& Series() {
    static KPointSource series("series", 1.0, 1.0, "s", "m", kPoints, 1000);
    if (series.empty())
        for (int i = 0; i < kPoints; ++i) series.push_back(CPoint(i, i % 1000));
    return series;
}

void CopyToFreshMemory(benchmark::State& state) {
    const std::vector<char> from(kBytes, 'x');
    for (auto _ : state) {
        void* fresh = std::malloc(kBytes);
        std::memcpy(fresh, from.data(), kBytes);
        benchmark::DoNotOptimize(fresh);
        benchmark::ClobberMemory();
        std::free(fresh);
    }
}
BENCHMARK(CopyToFreshMemory)->Unit(benchmark::kMillisecond);

void CopyToUsedMemory(benchmark::State& state) {
    const std::vector<char> from(kBytes, 'x');
    std::vector<char> to(kBytes);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), kBytes);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyToUsedMemory)->Unit(benchmark::kMillisecond);

void SaveFirst(benchmark::State& state) {
    KPointSource& series = Series();
    for (auto _ : state) {
        series.SaveForUndo(true);
        benchmark::ClobberMemory();
        series.ClearUndoBuffer();
    }
}
BENCHMARK(SaveFirst)->Unit(benchmark::kMillisecond);

// One undo and one redo: two snapshots, into streams used before, and two restores.
void UndoAndRedo(benchmark::State& state) {
    KPointSource& series = Series();
    series.ClearUndoBuffer();
    series.SaveForUndo(true);
    series[5].y = -7;
    for (auto _ : state) {
        series.UndoEdit();
        if (series[5].y != 5) return state.SkipWithError("wrong undo");
        series.RedoEdit();
        if (series[5].y != -7) return state.SkipWithError("wrong redo");
    }
    series.UndoEdit();
    series.ClearUndoBuffer();
}
BENCHMARK(UndoAndRedo)->Unit(benchmark::kMillisecond);

}  // namespace
