// Saving and restoring ten million points, and what their history takes, with copying the same bytes to fresh
// memory as the yardstick.
#include <benchmark/benchmark.h>

#include <chrono>
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
        state.PauseTiming();
        series.ClearUndoBuffer();
        while (state.range(0) && series.PrepareForUndo(kBytes / 10)) {
        }
        state.ResumeTiming();
    }
    series.ClearUndoBuffer();
}
BENCHMARK(SaveFirst)->ArgName("prepared")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// A history of edits, each saved, undone and redone. Memory is what it takes beyond the first copy.
struct Workload {
    const char* name;
    int edits;
    int points;  // of each edit
    int every;   // how far apart they lie
};
constexpr Workload kWorkloads[] = {
    {"single points", 100, 1, 1},
    {"1 % in a run", 20, kPoints / 100, 1},
    {"1 % spread", 20, kPoints / 100, 99},
    {"every point", 5, kPoints, 1},
};

void Touch(KPointSource& series, const Workload& workload, int edit) {
    const int last = (workload.points - 1) * workload.every;
    const int first = static_cast<int>((edit * 7919LL * 997) % (kPoints - last));
    for (int i = first; i <= first + last; i += workload.every) {
        series[i].y ^= 1;
        series.GetStatus()[i] ^= PS_MOVED;
    }
}

template <class Act>
void History(benchmark::State& state, Act act) {
    KPointSource& series = Series();
    const Workload& workload = kWorkloads[state.range(0)];
    state.SetLabel(workload.name);
    const std::vector<CPoint> before(series.GetData(), series.GetData() + kPoints);
    for (auto _ : state) {
        double seconds = 0;
        const auto timed = [&seconds](auto work) {
            const auto start = std::chrono::steady_clock::now();
            work();
            seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        };
        while (series.PrepareForUndo(kBytes)) {
        }
        act(series, workload, timed);
        state.SetIterationTime(seconds / workload.edits);
        state.counters["MB"] = static_cast<double>(series.GetUndoMemory()) / 1e6;
        while (series.CanUndo()) series.UndoEdit();
        series.ClearUndoBuffer();
        if (std::memcmp(before.data(), series.GetData(), kPoints * sizeof(CPoint)) != 0)
            return state.SkipWithError("the undone series differs");
    }
}

void SaveEach(benchmark::State& state) {
    History(state, [](KPointSource& series, const Workload& workload, auto timed) {
        for (int edit = 0; edit < workload.edits; ++edit) {
            timed([&] { series.SaveForUndo(true); });
            Touch(series, workload, edit);
        }
        series.UndoEdit();  // takes what the last edit changed into the memory counted
    });
}
BENCHMARK(SaveEach)->DenseRange(0, 3)->UseManualTime()->Unit(benchmark::kMillisecond);

void UndoEach(benchmark::State& state) {
    History(state, [](KPointSource& series, const Workload& workload, auto timed) {
        for (int edit = 0; edit < workload.edits; ++edit) {
            series.SaveForUndo(true);
            Touch(series, workload, edit);
        }
        timed([&] {
            while (series.CanUndo()) series.UndoEdit();
        });
    });
}
BENCHMARK(UndoEach)->DenseRange(0, 3)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
