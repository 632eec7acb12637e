// Edits of a series of ten million points, end to end: snapshot, edit, command and the picture of 1200 by 800
// pixels that the user waits for.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/Selected.h"
#include "platform/undo/KUndoManager.h"
#include "platform/window/CommandIds.h"
#include "sources/KPointSource.h"
#include "views/CEditorView.h"

namespace {

constexpr CSize kArea(1200, 800);
constexpr int kPoints = 10000000;
constexpr int kSelected = 1000000;

KPointSource& TenMillion() {
    static KPointSource series("sine", 1000.0, 1000.0, "s", "m", kPoints, 1);
    if (series.empty()) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        setenv("TAVIN_REGISTRY", ("/tmp/tavin-editor-bench-" + std::to_string(getpid())).c_str(), 0);
        std::mt19937 random(7);
        for (int i = 0; i < kPoints; ++i) {
            const double y = 20000.0 * std::sin(i * 20.0 / kPoints) + static_cast<int>(random() % 500);
            series.push_back({i * 10, RoundHalfAway(y)});
        }
    }
    return series;
}

class BenchEditor : public CEditorView {
  public:
    BenchEditor() : CEditorView("EditorBench", true, -1, RGB(255, 255, 255), nullptr) {
        kelvo::SetUndoManager(&manager_);
        picture_.ReSize(nullptr, kArea.cx, kArea.cy);
        AddSource(&TenMillion(), true);
        lineLook = LineLook::Smooth;
        OnInitialUpdate();
        while (TenMillion().PrepareForUndo(100000000)) {
        }
        Draw();
    }
    ~BenchEditor() override {
        TenMillion().ClearUndoBuffer();
        kelvo::SetUndoManager(nullptr);
    }
    void Draw() {
        CDC dc(picture_);
        DrawOn(dc, kArea);
    }
    // The points in the middle.
    void Select(int count) {
        std::vector<long> indices(static_cast<std::size_t>(count));
        std::iota(indices.begin(), indices.end(), kPoints / 2 - count / 2);
        GetDataHandler()->SetSelected(indices.data(), count);
    }
    bool IsDeleted() const { return TenMillion().GetStatus()[kPoints / 2] & PS_DELETED; }
    void PrepareDrag(CDC& dc) {
        // As in a window, whose plot leaves room for labels.
        OnPrepareDC(&dc);
        dc.SetViewportOrg(100, 700);
        dc.SetViewportExt(1000, -600);
        sample.SetDataSet(GetDataHandler());
        sample.GetSampleInsideRegion();
        sample.Simplify(dc);
    }
    // What a move of the mouse draws: the sample erased, and drawn elsewhere.
    void DragTo(CDC& dc, int y) {
        sample.DrawSample(&dc);
        sample.TranslateSample({0, y});
        sample.DrawSample(&dc);
    }
    int DraggedPoints() const { return sample.GetPointCount(); }
    CBitmapEx& Picture() { return picture_; }
    CPen& Pen() { return dottedPen; }

  private:
    kelvo::KUndoManager manager_;
    CBitmapEx picture_{4, 16, 256};
};

void DeleteSelection(benchmark::State& state) {
    BenchEditor editor;
    const auto selected = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        editor.Select(selected);
        state.ResumeTiming();
        RunCommand(editor, CmdDeleteInside);
        editor.Draw();
        state.PauseTiming();
        if (!editor.IsDeleted()) return state.SkipWithError("nothing was deleted");
        RunCommand(editor, ID_EDIT_UNDO);
        editor.Draw();
        state.ResumeTiming();
    }
}
BENCHMARK(DeleteSelection)->Arg(1)->Arg(kSelected)->Unit(benchmark::kMillisecond)->Iterations(20);

void UndoAndRedoOfADeletion(benchmark::State& state) {
    BenchEditor editor;
    editor.Select(static_cast<int>(state.range(0)));
    RunCommand(editor, CmdDeleteInside);
    for (auto _ : state) {
        RunCommand(editor, ID_EDIT_UNDO);
        editor.Draw();
        if (editor.IsDeleted()) return state.SkipWithError("not undone");
        RunCommand(editor, ID_EDIT_REDO);
        editor.Draw();
        if (!editor.IsDeleted()) return state.SkipWithError("not redone");
    }
    RunCommand(editor, ID_EDIT_UNDO);
}
BENCHMARK(UndoAndRedoOfADeletion)->Arg(1)->Arg(kSelected)->Unit(benchmark::kMillisecond)->Iterations(20);

void BeginToDragAMillion(benchmark::State& state) {
    BenchEditor editor;
    editor.Select(kSelected);
    CDC dc(editor.Picture());
    for (auto _ : state) editor.PrepareDrag(dc);
}
BENCHMARK(BeginToDragAMillion)->Unit(benchmark::kMillisecond);

void MoveADraggedMillion(benchmark::State& state) {
    BenchEditor editor;
    editor.Select(kSelected);
    CDC dc(editor.Picture());
    editor.PrepareDrag(dc);
    const Selected usePen(dc, editor.Pen());
    const SelectedRop2 inXor(dc, R2_XORPEN);
    int y = 0;
    for (auto _ : state) editor.DragTo(dc, y = y > 5000 ? -5000 : y + 100);
    state.counters["points"] = editor.DraggedPoints();
}
BENCHMARK(MoveADraggedMillion)->Unit(benchmark::kMillisecond);

}  // namespace
