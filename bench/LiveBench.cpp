// Appends to live series, each with the extremes kept up to date.
#include <benchmark/benchmark.h>

#include <vector>

#include "sources/COnlineAritmetricSource.h"

namespace {

constexpr long kRing = 1000000;
constexpr long kBatch = 1000;

// Whether the newest sample and the greatest value are those appended last; values rise.
void Check(benchmark::State& state, COnlineSource& series, LONG newest) {
    const double beyond = series.GetMaxY() - newest;  // a half while there is one value only
    const bool right = series.GetData()[series.GetCount() - 1].y == newest && (beyond == 0 || beyond == 0.5);
    if (!right) state.SkipWithError("wrong result");
}

void AppendOneByOne(benchmark::State& state) {
    COnlineSource series("live", 1, 1, kRing, COnlineSource::Absolute);
    LONG next = 0;
    for (auto _ : state) series.AddData(double{1.0} * next, double{1.0} * next), ++next;
    Check(state, series, next - 1);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AppendOneByOne);

void AppendBatches(benchmark::State& state) {
    COnlineSource series("live", 1, 1, kRing, COnlineSource::Absolute);
    std::vector<CPoint> batch(kBatch);
    LONG next = 0;
    for (auto _ : state) {
        for (CPoint& point : batch) point = {next, next}, ++next;
        series.AddData(batch.data(), kBatch);
    }
    Check(state, series, next - 1);
    state.SetItemsProcessed(state.iterations() * kBatch);
}
BENCHMARK(AppendBatches);

void PublishToOneObserver(benchmark::State& state) {
    COnlinePublishSource a("a", 1, 1, kRing, COnlineSource::Absolute);
    COnlinePublishSource b("b", 1, 1, kRing, COnlineSource::Absolute);
    COnlineAritmetricSource sum("sum", 1, 1, kRing, COnlineSource::Absolute);
    sum.SetOperationType(OPERATION_ADD);
    b.AddData(double{0}, 1);
    sum.AddOperand(&a, 0);
    sum.AddOperand(&b, 1);
    LONG next = 0;
    for (auto _ : state) a.AddData(double{1.0} * next, double{1.0} * next), ++next;
    Check(state, sum, next);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PublishToOneObserver);

// The extremes of a full window, as each picture asks for them.
void ExtremesOfTheWindow(benchmark::State& state) {
    COnlineSource series("live", 1, 1, kRing, COnlineSource::Absolute);
    for (LONG i = 0; i < 2 * kRing + 12345; ++i) series.AddData(double{1.0} * i, double{1.0} * i);
    for (auto _ : state) {
        series.UpdateStats();
        benchmark::DoNotOptimize(series.GetMinY());
    }
    if (series.GetMinY() != kRing + 12345) state.SkipWithError("wrong result");
}
BENCHMARK(ExtremesOfTheWindow);

}  // namespace
