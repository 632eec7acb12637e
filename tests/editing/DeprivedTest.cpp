// Edits that lack something: a series, an undo manager, or memory at any place. Nothing is thrown, and an
// edit is done whole or not at all.
#include <new>

#include "editing/CBigRegion.h"
#include "editing/CSampleInfoSet.h"
#include "editing/EditCommands.h"
#include "tests/core/FailingMemory.h"
#include "tests/editing/EditingFixture.h"

namespace {

constexpr CPoint kBox[] = {{5, -900}, {65, -900}, {65, 900}, {5, 900}};

struct Edit {
    const char* name;
    int (*act)(CXYEditData& data);
};
const Edit kEdits[] = {
    {"delete point", [](CXYEditData& data) { return data.DeleteSelected(); }},
    {"reject point", [](CXYEditData& data) { return data.RejectSelected(4); }},
    {"move point", [](CXYEditData& data) { return data.TranslateSelected(1, 2, true); }},
    {"scale point", [](CXYEditData& data) { return data.ScaleSelected(2.0, 1.0); }},
    {"scale all", [](CXYEditData& data) { return data.ScaleAll(0, 2.0, 1.0); }},
    {"delete inside", [](CXYEditData& data) { return data.DeleteSelected(true); }},
    {"delete outside", [](CXYEditData& data) { return data.DeleteSelected(false); }},
    {"reject", [](CXYEditData& data) { return data.RejectSelected(true, 4); }},
    {"clear rejections", [](CXYEditData& data) { return data.ClearAllRejection(); }},
    {"translate all", [](CXYEditData& data) { return data.TranslateAll(1, 2, false); }},
    {"translate", [](CXYEditData& data) { return data.TranslateSelected(1, 2, false, true); }},
    {"level outside", [](CXYEditData& data) { return data.TranslateSelected(1, 2, true, false); }},
    {"scale", [](CXYEditData& data) { return data.ScaleSelected(0, 2.0, 0.0, true); }},
    {"interpolate", [](CXYEditData& data) { return data.InterpolateSelected(); }},
    {"smooth all", [](CXYEditData& data) { return data.SmoothAll(500.0); }},
    {"smooth", [](CXYEditData& data) { return data.SmoothSelected(500.0, false); }},
    {"detect", [](CXYEditData& data) { return data.SpikeDetectAll(30.0, 20.0, true); }},
    {"detect outside", [](CXYEditData& data) { return data.SpikeDetectSelected(30.0, 5.0, false, true); }},
    {"median", [](CXYEditData& data) { return data.SpikeDetectMedianFilter(5.0, 20.0, true); }},
    {"delete spikes",
     [](CXYEditData& data) {
         data.SetSpikesFound(true);
         return data.DeleteSpikes();
     }},
};

// A series with a spike and a part, and a selection that does not ascend.
struct Scene {
    Scene() {
        series.parts = {&part};
        data.SelectPointSource(&series);
        data.SelectPoint(0);
        data.SetSelected(kUnsorted, 4);
    }
    bool Is(Scene& other) {
        const std::vector<CPoint> points(series.GetData(), series.GetData() + series.GetCount());
        return std::equal(points.begin(), points.end(), other.series.GetData()) &&
               series.Words() == other.series.Words() && series.codes == other.series.codes;
    }

    static constexpr long kUnsorted[] = {5, 1, 2, 5};
    FullSource part{AtTens({0})};
    FullSource series{AtTens({0, 9, 3, 90, 3, 9, 0, 9, 3, 0})};
    CXYEditData data;
};

TEST_F(EditingTest, WithoutASeriesNothingIsDone) {
    CXYEditData none;
    for (const Edit& edit : kEdits) EXPECT_EQ(edit.act(none), 0) << edit.name;
    double x = 1.0;
    CPoint point;
    CBigRegion region(kBox, 4);
    CDC dc;
    EXPECT_EQ(none.XYtoDP(x, x), CPoint());
    EXPECT_EQ(none.SelectPoint(0), CPoint());
    EXPECT_EQ(none.SelectFirstPoint(), CPoint());
    EXPECT_TRUE(none.SetSelected(region, false));
    EXPECT_EQ(none.GetSelectedCount(), 0);
    EXPECT_EQ(none.HitTest(&dc, point, 5), -1);
    EXPECT_EQ(none.RemoveSpikeMarkings(), 0);
    none.DrawDots(&dc, 0, 3, 0);
    none.DrawLine(&dc, 0, 0, CRect());
    none.DrawSelection(&dc, 0, 3);
    none.DrawRubberBand(&dc, point);
    none.DrawSpikeMarkings(&dc);
    none.DrawSpikeWindow(&dc);
    EXPECT_TRUE(messages.empty());
}

TEST_F(EditingTest, WithoutAnUndoManagerEditsHappen) {
    kelvo::SetUndoManager(nullptr);
    for (const Edit& edit : kEdits) {
        Scene scene;
        EXPECT_EQ(edit.act(scene.data), 1) << edit.name;
        EXPECT_EQ(manager.GetCount(&scene.series), 0) << edit.name;
    }
}

TEST_F(EditingTest, WithoutMemoryAnEditIsDoneWholeOrNotAtAll) {
    for (const Edit& edit : kEdits) {
        Scene before;
        Scene after;
        EXPECT_EQ(edit.act(after.data), 1) << edit.name;
        std::unique_ptr<Scene> scene;
        int changed = 0;
        WithEveryFailure([&] { scene = std::make_unique<Scene>(); },
                         [&] { EXPECT_NO_THROW(changed = edit.act(scene->data)) << edit.name; },
                         [&](bool failed) {
                             EXPECT_TRUE(scene->Is(changed ? after : before)) << edit.name;
                             EXPECT_TRUE(changed || failed) << edit.name;
                             manager.Clear(&scene->series);
                             manager.Clear(&scene->part);
                         });
    }
}

TEST_F(EditingTest, WithoutMemorySelectionsAndCopiesAreEmpty) {
    Scene scene;
    CBigRegion region(kBox, 4);
    bool selected = false;
    WithEveryFailure([] {}, [&] { EXPECT_NO_THROW(selected = scene.data.SetSelected(region, true)); },
                     [&](bool failed) {
                         EXPECT_EQ(scene.data.GetSelectedCount(), selected ? 6 : 0);
                         EXPECT_TRUE(selected || failed);
                     });
    CSampleInfoSet sample;
    sample.SetDataSet(&scene.data);
    WithEveryFailure([&] { sample.DeleteSample(); }, [&] { EXPECT_NO_THROW(sample.GetSample()); },
                     [&](bool failed) { EXPECT_EQ(sample.GetPointCount(), failed ? 0 : 10); });
}

TEST_F(EditingTest, WithoutMemoryHistoriesStayAsTheyAre) {
    std::unique_ptr<FullSource> series;
    const auto prepare = [&] {
        series = std::make_unique<FullSource>(AtTens({1, 2}));
        series->SaveForUndo(true);
        series->GetData()[0].y = 7;
    };
    bool good = false;
    WithEveryFailure(
        prepare, [&] { EXPECT_NO_THROW(good = series->SaveForUndo(true).good()); },
        [&](bool failed) { EXPECT_EQ(good, !failed); });
    WithEveryFailure(
        prepare, [&] { EXPECT_NO_THROW(series->UndoEdit()); },
        [&](bool failed) {
            EXPECT_EQ(series->Ys()[0], failed ? 7 : 1);
            EXPECT_EQ(!series->CanRedo(), failed);
            EXPECT_EQ(!series->CanUndo(), !failed);
            series->RedoEdit();
            EXPECT_EQ(series->Ys()[0], 7);
        });
    long recorded = 0;
    std::unique_ptr<kelvo::IAction> action;
    WithEveryFailure([&] { action = std::make_unique<KDeleteCmd>(nullptr); },
                     [&] { EXPECT_NO_THROW(manager.SetLastAction(this, action.release())); },
                     [&](bool failed) { EXPECT_EQ(manager.GetCount(this), failed ? 0 : ++recorded); });
}

}  // namespace
