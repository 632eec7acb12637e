// An edit as the editor makes it, on whole series: select by a drawn outline, snapshot, delete, undo.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "editing/CBigRegion.h"
#include "editing/CXYEditData.h"
#include "platform/core/CPointEx.h"
#include "platform/gdi/CBitmapEx.h"
#include "platform/undo/KUndoManager.h"
#include "sources/KPointSource.h"

namespace {

// Noise around a slow wave, x ascending by 1.
std::unique_ptr<KPointSource> NoisyWave(long count) {
    auto series = std::make_unique<KPointSource>("noise", 1.0, 1.0, "s", "m", static_cast<int>(count), 1000);
    std::mt19937 random(20260101);
    for (long i = 0; i < count; ++i) {
        const double wave = 20000.0 * std::sin(50.0 * static_cast<double>(i) / static_cast<double>(count));
        series->push_back(
            CPoint(static_cast<int>(i), static_cast<int>(wave) + static_cast<int>(random() % 20001) - 10000));
    }
    return series;
}

// A free-hand outline of 200 vertices around the middle half of the series.
CBigRegion Outline(long count) {
    std::vector<CPoint> vertices;
    const double middle = static_cast<double>(count) / 2.0;
    for (int i = 0; i < 200; ++i) {
        const double angle = 6.283185307179586 * i / 200.0;
        const double radius = 1.0 + 0.1 * std::sin(9.0 * angle);
        vertices.push_back(
            CPointEx(middle + middle / 2.0 * radius * std::cos(angle), 15000.0 * radius * std::sin(angle)));
    }
    return {vertices.data(), static_cast<int>(vertices.size())};
}

long CountInside(KPointSource& series, const CBigRegion& region) {
    long inside = 0;
    for (long i = 0; i < series.GetCount(); ++i) inside += region.PtInRegion(series.GetData()[i]);
    return inside;
}

long CountDeleted(KPointSource& series) {
    long deleted = 0;
    for (long i = 0; i < series.GetCount(); ++i) deleted += series.GetStatus()[i] & PS_DELETED;
    return deleted;
}

void SelectByOutline(benchmark::State& state) {
    const auto series = NoisyWave(state.range(0));
    CBigRegion region = Outline(state.range(0));
    CXYEditData data;
    data.SelectPointSource(series.get());
    data.SetSelected(region, true);
    if (data.GetSelectedCount() == 0 || data.GetSelectedCount() != CountInside(*series, region))
        state.SkipWithError("wrong selection");
    for (auto _ : state) benchmark::DoNotOptimize(data.SetSelected(region, true));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SelectByOutline)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void SelectDeleteUndo(benchmark::State& state) {
    kelvo::KUndoManager manager;
    kelvo::SetUndoManager(&manager);
    const auto series = NoisyWave(state.range(0));
    CBigRegion region = Outline(state.range(0));
    CXYEditData data;
    data.SelectPointSource(series.get());
    const auto edit = [&] {
        data.SetSelected(region, true);
        series->SaveForUndo(true);
        data.DeleteSelected(true);
    };
    const auto undo = [&] {
        series->UndoEdit();
        manager.Undo(series.get(), 1);
    };
    edit();
    if (CountDeleted(*series) != CountInside(*series, region)) state.SkipWithError("wrong points deleted");
    undo();
    if (CountDeleted(*series) != 0) state.SkipWithError("undo left points deleted");
    for (auto _ : state) {
        edit();
        undo();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    kelvo::SetUndoManager(nullptr);
}
BENCHMARK(SelectDeleteUndo)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

// Every second point: the selection with the most runs.
void TranslateSelection(benchmark::State& state) {
    kelvo::KUndoManager manager;
    kelvo::SetUndoManager(&manager);
    const auto series = NoisyWave(state.range(0));
    CXYEditData data;
    data.SelectPointSource(series.get());
    std::vector<long> everySecond;
    for (long i = 0; i < state.range(0); i += 2) everySecond.push_back(i);
    data.SetSelected(everySecond.data(), static_cast<int>(everySecond.size()));
    const int before = (*series)[0].y;
    if (!data.TranslateSelected(0, 5, false, true) || (*series)[0].y != before + 5 || (*series)[1].x != 1)
        state.SkipWithError("wrong translation");
    for (auto _ : state) {
        data.TranslateSelected(0, 5, false, true);
        data.TranslateSelected(0, -5, false, true);
        manager.Clear(series.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    kelvo::SetUndoManager(nullptr);
}
BENCHMARK(TranslateSelection)->Arg(10000000)->Unit(benchmark::kMillisecond);

// What a view draws of a series on 1200 by 800 pixels.
struct Drawing {
    explicit Drawing(long count) : series(NoisyWave(count)), bitmap(4, 32, 0) {
        bitmap.ReSize(nullptr, 1200, 800);
        dc.SelectObject(&bitmap);
        dc.SetMapMode(MM_ANISOTROPIC);
        dc.SetWindowExt(static_cast<int>(count), 60000);
        dc.SetViewportExt(1200, 800);
        dc.SetWindowOrg(0, -30000);
        for (long i = 0; i < count; i += 3) series->GetStatus()[i] = PS_DELETED;
        for (long i = 1; i < count; i += 100) series->GetStatus()[i] = PS_EDITED;
    }
    // Counts the pixels that are not white.
    long Painted() {
        const auto* bits = static_cast<const COLORREF*>(bitmap.GetBits());
        return std::count_if(bits, bits + 1200 * 800,
                             [](COLORREF pixel) { return (pixel & 0xFFFFFF) != 0xFFFFFF; });
    }

    std::unique_ptr<KPointSource> series;
    CBitmapEx bitmap;
    CDC dc;
};

// A third of the points deleted, every hundredth edited.
template <class Data, class Draw>
void DrawSeries(benchmark::State& state, Draw draw) {
    Drawing drawing(state.range(0));
    Data data;
    data.SelectPointSource(drawing.series.get());
    draw(data, drawing.dc);
    if (drawing.Painted() < 1200) state.SkipWithError("nothing painted");
    for (auto _ : state) draw(data, drawing.dc);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DrawEditedLine(benchmark::State& state) {
    DrawSeries<CXYEditData>(state,
                            [](CXYData& data, CDC& dc) { data.DrawLine(&dc, 0xFF0000, PS_SOLID, CRect()); });
}
BENCHMARK(DrawEditedLine)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void DrawEditedDots(benchmark::State& state) {
    DrawSeries<CXYEditData>(state, [](CXYData& data, CDC& dc) { data.DrawDots(&dc, 0xFF0000, 2, 0xFF); });
}
BENCHMARK(DrawEditedDots)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void DrawPlainDots(benchmark::State& state) {
    DrawSeries<CXYData>(state, [](CXYData& data, CDC& dc) { data.DrawDots(&dc, 0xFF0000, 2, 0xFF); });
}
BENCHMARK(DrawPlainDots)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void DrawMedianBand(benchmark::State& state) {
    Drawing drawing(state.range(0));
    CXYEditData data;
    data.SelectPointSource(drawing.series.get());
    data.SpikeDetectMedianFilter(11.0, 2000.0, true);
    data.DrawSpikeWindow(&drawing.dc);
    if (drawing.Painted() < 1200) state.SkipWithError("nothing painted");
    for (auto _ : state) data.DrawSpikeWindow(&drawing.dc);
}
BENCHMARK(DrawMedianBand)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
