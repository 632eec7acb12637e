// Selections by rule over ten million points of a noisy wave with spikes, flat stretches and a few deleted
// points.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "selections/Selection.h"
#include "sources/PointStatus.h"

namespace {

constexpr long kCount = 10000000;

struct Workload {
    Workload() : points(kCount), status(kCount) {
        std::mt19937 random(7);
        for (long i = 0; i < kCount; ++i) {
            const double wave = 20000 * std::sin(double(i) / 5000);
            const int spike = random() % 1000 == 0 ? 5000 : 0;
            const bool flat = i % 100000 < 300;
            points[static_cast<std::size_t>(i)] = {
                static_cast<int>(i * 60),
                flat ? 7 : static_cast<int>(wave) + static_cast<int>(random() % 200) + spike};
            if (random() % 500 == 0) status[static_cast<std::size_t>(i)] = PS_DELETED;
        }
        samples.points = points.data();
        samples.status = status.data();
        samples.count = kCount;
        samples.y.scale = 1000;
        samples.xIsTime = true;
    }
    std::vector<CPoint> points;
    std::vector<unsigned short> status;
    selections::Samples samples;
};

void Select(benchmark::State& state, const char* text) {
    static const Workload workload;
    selections::SelectionFault fault;
    const auto selection = selections::Selection::Read(text, fault);
    selections::PlaceSet found;
    if (!selection || !selection->Find(workload.samples, {}, found)) return state.SkipWithError("not read");
    if (found.IsEmpty() || found.Count() > kCount / 2) return state.SkipWithError("wrong number of points");
    for (auto _ : state) {
        selection->Find(workload.samples, {}, found);
        benchmark::ClobberMemory();
    }
    state.counters["found"] = static_cast<double>(found.Count());
}

}  // namespace

BENCHMARK_CAPTURE(Select, range, "range(-19.5,19.5)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, rate, "rate(120/h)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, spike, "spike(2)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, flat, "flat(3h,0.01)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, step, "step(5,1h)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, gap, "gap(1min)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, grow, "spike(2) grow(5)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, hampel_3, "hampel(3,5)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, hampel_50, "hampel(50,5)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, hampel_1000, "hampel(1000,3)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, hampel_20000, "hampel(20000,1.2)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Select, combined, "(range(-19.5,19.5) or spike(2)) and not flat(3h) or gap(1min)")
    ->Unit(benchmark::kMillisecond);
