// Cleans a series by way of the installed library alone and exits with 1 when a result is wrong.
#include <tavin/tavin.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

int faults = 0;

void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "wrong: %s\n", what);
    ++faults;
}

std::vector<CPoint> Samples(KPointSource& series) {
    return {series.GetData(), series.GetData() + series.GetCount()};
}

// A slow wave with a fast ripple on it, every 10 stored units of x, and two spikes.
void Fill(KPointSource& series) {
    for (int i = 0; i < 1000; ++i) {
        const double y = 5000.0 * std::sin(i / 100.0) + (i % 2 == 0 ? 40.0 : -40.0);
        series.push_back(CPointEx(10.0 * i, y));
    }
    series[300].y += 9000;
    series[700].y -= 9000;
}

void CheckText(kelvo::IAction* action, const char* name, const char* result) {
    Check(action != nullptr, name);
    if (!action) return;
    Check(std::strcmp(action->GetName(), name) == 0, action->GetName());
    Check(std::strcmp(action->GetResultText(), result) == 0, action->GetResultText());
}

// Undoes and redoes one edit in the series and in the history, and checks that the samples follow.
void CheckUndoRedo(KPointSource& series, kelvo::KUndoManager& manager, const std::vector<CPoint>& before) {
    const std::vector<CPoint> after = Samples(series);
    series.UndoEdit();
    Check(manager.Undo(&series, 1) == 1, "one step back");
    Check(Samples(series) == before, "the samples before the edit");
    series.RedoEdit();
    Check(manager.Redo(&series, 1) == 1, "one step forward");
    Check(Samples(series) == after, "the samples after the edit");
}

}  // namespace

int main() {
    kelvo::KUndoManager manager;
    kelvo::SetUndoManager(&manager);
    KPointSource series("depth", 10.0, 100.0, "s", "m", 1000, 100);
    Fill(series);
    CXYEditData data;
    data.SelectPointSource(&series);

    Check(data.SpikeDetectAll(20.0, 30.0, false) == 1 && data.HasSpikes(), "spikes are found");
    CheckText(manager.GetAction(&series, 0), "Spike detection", "Wave length: 20.000 s\r\nWindow: 30.000 m");
    series.SaveForUndo(true);
    Check(data.DeleteSpikes() == 1, "spikes are deleted");
    CheckText(manager.GetAction(&series, 1), "Delete marked spikes", "Deleted 2 points. (0.20 %).");
    Check(series.GetStatus()[300] == (PS_DELETED | PS_SPIKE | PS_EDITED), "the first spike is deleted");
    CheckUndoRedo(series, manager, Samples(series));

    const CPoint outline[] = {{995, -9000}, {3005, -9000}, {3005, 9000}, {995, 9000}};
    CBigRegion region(outline, 4);
    Check(data.SetSelected(region, true) && data.GetSelectedCount() == 200, "100 ... 300 but for the spike");
    const std::vector<CPoint> before = Samples(series);
    series.SaveForUndo(true);
    Check(data.SmoothSelected(10.0, true) == 1, "the selection is smoothed");
    CheckText(manager.GetAction(&series, 2), "Smooth points", "Wave length 10.000 s");
    Check(std::abs(series[200].y - 5000.0 * std::sin(2.0)) < 5.0, "the ripple is gone");
    Check(series[99] == before[99] && series[301] == before[301], "points outside stay");
    CheckUndoRedo(series, manager, before);
    Check(manager.GetCount(&series) == 3 && manager.GetDoneCount(&series) == 3, "three actions in force");

    manager.Clear(&series);
    kelvo::SetUndoManager(nullptr);
    if (faults == 0) std::puts("all results are right");
    return faults == 0 ? 0 : 1;
}
