// The median-filter spike test over a million samples, flags and medians both, for windows of 11 to 10001
// samples.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "editing/MedianFilter.h"

namespace {

constexpr int kCount = 1000000;

int NoiseAt(int, std::mt19937& random) { return static_cast<int>(random()); }
// A reading that drifts over some hundred levels of a converter and back, with a little noise and a spike now
// and then.
int QuantisedDriftAt(int i, std::mt19937& random) {
    const int triangle = std::abs(i % 200000 - 100000) / 1000;
    return triangle + static_cast<int>(random() % 5) + (random() % 1000 == 0 ? 500 : 0);
}
// Every other 20000 samples lie far on either side of the rest, so that the middle of the window jumps over
// many ranks that the window does not hold.
int TwoRegimesAt(int i, std::mt19937& random) {
    const int noise = static_cast<int>(random() % 100000);
    return i % 40000 < 20000 ? (i % 2 == 0 ? noise - 1000000000 : noise + 1000000000) : noise;
}
int AscendingAt(int i, std::mt19937&) { return 2 * i; }
int ConstantAt(int, std::mt19937&) { return 5; }

using SampleAt = int (*)(int, std::mt19937&);

void MedianFilter(benchmark::State& state, SampleAt sampleAt) {
    const int half = static_cast<int>(state.range(0)) / 2;
    std::mt19937 random(20);
    std::vector<int> samples(kCount);
    for (int i = 0; i < kCount; ++i) samples[static_cast<std::size_t>(i)] = sampleAt(i, random);
    std::vector<int> medians(kCount);
    std::vector<unsigned char> flags(kCount);
    constexpr int distance = 100;
    MedianFilterSpikeTest(samples.data(), flags.data(), medians.data(), kCount, half, distance);
    for (int i = 0; i < kCount; i += 997) {  // against single windows
        const int first = std::max(0, i - half);
        const int last = std::min(kCount - 1, i + half);
        const int median = WindowMedian(samples.data() + first, last - first + 1);
        const auto at = static_cast<std::size_t>(i);
        const bool far = std::abs(std::int64_t{samples[at]} - median) > distance;
        if (medians[at] != median || flags[at] != far) return state.SkipWithError("wrong median or flag");
    }
    for (auto _ : state) {
        MedianFilterSpikeTest(samples.data(), flags.data(), medians.data(), kCount, half, distance);
        benchmark::ClobberMemory();
    }
    state.counters["per_sample"] = benchmark::Counter(
        kCount, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Windows(benchmark::internal::Benchmark* workload) {
    workload->ArgName("window")->Arg(11)->Arg(41)->Arg(101)->Arg(1001)->Arg(10001);
    workload->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_CAPTURE(MedianFilter, noise, NoiseAt)->Apply(Windows);
BENCHMARK_CAPTURE(MedianFilter, quantised_drift, QuantisedDriftAt)->Apply(Windows);
BENCHMARK_CAPTURE(MedianFilter, two_regimes, TwoRegimesAt)->Apply(Windows);
BENCHMARK_CAPTURE(MedianFilter, ascending, AscendingAt)->Apply(Windows);
BENCHMARK_CAPTURE(MedianFilter, constant, ConstantAt)->Apply(Windows);
