// Reading and writing tables of two columns; times are per row.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "app/table/OpenTable.h"
#include "app/table/TableReader.h"
#include "app/table/TableWriter.h"

namespace app {
namespace {

constexpr int kRows = 1000000;

std::string NumberRows() {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<int> noise(-999999, 999999);
    std::string text = "x,y\n";
    char row[64];
    for (int i = 0; i < kRows; ++i) {
        const int y = noise(random);
        std::snprintf(row, sizeof row, "%d.%04d,%.4f\n", i, i % 10000, y / 10000.0);
        text += row;
    }
    return text;
}

std::string TimeRows() {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<int> noise(0, 99999);
    std::string text = "time,level\n";
    for (int i = 0; i < kRows; ++i) {
        char value[16];
        std::snprintf(value, sizeof value, ",%.3f\n", noise(random) / 1000.0);
        text += IsoText(kSecond * 60 * i, true) + value;
    }
    return text;
}

Result<Table> Read(const std::string& text) {
    const auto layout = GuessLayout(text, "rows", {});
    if (!layout) return layout.Error();
    const auto choice = ChooseColumns(*layout, {});
    if (!choice) return choice.Error();
    return ReadTable(text, "rows", *layout, *choice, {});
}

void PerRow(benchmark::State& state) {
    state.counters["row"] =
        benchmark::Counter(static_cast<double>(kRows),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ReadRows(benchmark::State& state, const std::string& text, double lastX) {
    for (auto _ : state) {
        const auto table = Read(text);
        if (!table || table->rows != kRows || table->skippedRows != 0)
            return state.SkipWithError("rows are missing");
        const double x =
            table->HasTimes() ? static_cast<double>(table->xTimes.back()) / kSecond : table->xNumbers.back();
        if (x != lastX) return state.SkipWithError("the last x is wrong");
    }
    PerRow(state);
}

void BM_ReadNumbers(benchmark::State& state) { ReadRows(state, NumberRows(), 999999.9999); }
BENCHMARK(BM_ReadNumbers)->Unit(benchmark::kMillisecond)->MinTime(1.0);

void BM_ReadTimes(benchmark::State& state) { ReadRows(state, TimeRows(), 60.0 * (kRows - 1)); }
BENCHMARK(BM_ReadTimes)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// The bare parse: a file's way to its values on all processors, its pages in the system's cache.
void BM_OpenFile(benchmark::State& state) {
    const std::string path = (std::filesystem::temp_directory_path() / "tavin-bench.csv").string();
    std::ofstream(path) << NumberRows();
    for (auto _ : state) {
        const auto table = OpenTable({path});
        if (!table || table->rows != kRows || table->skippedRows != 0 ||
            table->xNumbers.back() != 999999.9999)
            return state.SkipWithError("rows are missing");
    }
    std::filesystem::remove(path);
    PerRow(state);
}
BENCHMARK(BM_OpenFile)->Unit(benchmark::kMillisecond)->MinTime(1.0)->UseRealTime();

void BM_MakeSeries(benchmark::State& state) {
    const auto table = Read(NumberRows());
    for (auto _ : state) {
        const XAxis axis = MakeXAxis(*table);
        const Series series = MakeSeries(*table, axis, 0, {});
        if (series.source->GetCount() != kRows || series.exactness.inexact != 0)
            return state.SkipWithError("values are missing or not exact");
    }
    PerRow(state);
}
BENCHMARK(BM_MakeSeries)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// Argument: every how many-th value was edited.
void BM_WriteRows(benchmark::State& state) {
    const std::string text = NumberRows();
    const auto table = Read(text);
    const XAxis axis = MakeXAxis(*table);
    std::vector<Series> series;
    series.push_back(MakeSeries(*table, axis, 0, {}));
    std::int64_t edited = 0;
    for (long i = 0; i < kRows; i += static_cast<long>(state.range(0)), ++edited)
        series[0].source->GetData()[i].y += 1;
    for (auto _ : state) {
        OutputFile output;
        WriteCounts counts;
        const bool written =
            output.Open("/dev/null") && WriteTable(output, *table, series, {}, counts) && output.Commit();
        if (!written || counts.rows != kRows || counts.edited != edited)
            return state.SkipWithError("rows were not written");
    }
    PerRow(state);
}
BENCHMARK(BM_WriteRows)->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace
}  // namespace app
