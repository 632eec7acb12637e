#include <climits>
#include <functional>
#include <utility>

#include "editing/CBigRegion.h"
#include "editing/CSampleInfoSet.h"
#include "editing/EditCommands.h"
#include "editing/SmoothingSpline.h"
#include "tests/editing/EditingFixture.h"

namespace {

constexpr int kMoved = PS_MOVED | PS_EDITED;

class XYEditData : public EditingTest {
  protected:
    XYEditData() { data.SelectPointSource(&series); }
    void Select(std::vector<long> indices) {
        data.SetSelected(indices.data(), static_cast<int>(indices.size()));
    }
    std::vector<long> Selection() {
        return {data.GetSelected(), data.GetSelected() + data.GetSelectedCount()};
    }

    FullSource series{AtTens({0, 10, 20, 30, 40}), 10.0, 100.0};
    CXYEditData data;
};

TEST_F(XYEditData, XYtoDPTruncatesTowardZero) {
    series.SetOffset(3, -4);
    double x = 1.99;
    double y = -0.019;
    EXPECT_EQ(data.XYtoDP(x, y), CPoint(19 - 3, -1 + 4));
    x = 1e300;
    EXPECT_EQ(data.XYtoDP(x, y).x, INT_MAX - 3);
}

TEST_F(XYEditData, TheCurrentPointFollowsDeletions) {
    series.GetStatus()[0] = series.GetStatus()[4] = PS_DELETED;
    EXPECT_EQ(data.SelectFirstPoint(), CPoint(10, 10));
    EXPECT_EQ(data.SelectLastPoint(), CPoint(30, 30));
    EXPECT_EQ(data.SelectPoint(0), CPoint(0, 0)) << "deleted points may be current";
    EXPECT_EQ(data.GetSelectedIndex(), 0);

    data.SelectPoint(2);
    EXPECT_EQ(data.DeleteSelected(), 1);
    EXPECT_EQ(data.GetSelectedIndex(), 3);
    EXPECT_EQ(data.DeleteSelected(), 1);
    EXPECT_EQ(data.GetSelectedIndex(), -1) << "the last one there was";
    EXPECT_EQ(data.DeleteSelected(), 0);
    EXPECT_EQ(series.Words()[3], PS_DELETED | PS_EDITED);
    EXPECT_EQ(manager.GetCount(&series), 2);

    data.SelectPoint(5);
    EXPECT_EQ(data.GetSelectedIndex(), -1);
    data.SelectPoint(1);
    EXPECT_EQ(data.GetPoint(-1), CPoint());
    EXPECT_EQ(data.GetSelectedIndex(), -1) << "a place outside the series drops the current point";
    series.hasStatus = false;
    EXPECT_EQ(data.SelectFirstPoint(), CPoint());
    EXPECT_EQ(data.DeleteSelected(), 0);
}

TEST_F(XYEditData, RejectingOnePointNeedsRejectionCodes) {
    data.SelectPoint(2);
    EXPECT_EQ(data.RejectSelected(0x40), 1);
    EXPECT_EQ(series.codes[2], 0x40);
    EXPECT_EQ(series.Words()[2], PS_REJECTED | PS_EDITED);
    EXPECT_EQ(Last(series), "Reject points: Reject points");
    series.hasCodes = false;
    EXPECT_EQ(data.RejectSelected(0x40), 0);
    EXPECT_EQ(messages, std::vector<std::string>{"Rejection is missing"});
    EXPECT_EQ(manager.GetCount(&series), 1);
}

TEST_F(XYEditData, MarksInsideOrOutsideTheSelection) {
    Select({1, 3});
    const long* array = data.GetSelected();
    EXPECT_EQ(data.DeleteSelected(true), 1);
    EXPECT_EQ(data.GetSelectedCount(), 0);
    EXPECT_EQ(data.GetSelected(), array) << "kept for reuse";
    EXPECT_EQ(series.Words(),
              (std::vector<unsigned short>{0, PS_DELETED | PS_EDITED, 0, PS_DELETED | PS_EDITED, 0}));
    EXPECT_EQ(Last(series), "Delete points: Deleted marked points");
    EXPECT_EQ(data.DeleteSelected(true), 0) << "nothing is selected any more";

    Select({1, 2, 3});
    EXPECT_EQ(data.RejectSelected(false, 4), 1);
    EXPECT_EQ(data.GetSelectedCount(), 3);
    EXPECT_EQ(series.codes, (std::vector<int>{4, 0, 0, 0, 4}));
    EXPECT_EQ(Last(series), "Delete points: Deleted marked points") << "rejections are recorded so too";
    data.ClearSelection();
    EXPECT_EQ(data.DeleteSelected(false), 1) << "everything is outside an empty selection";
    for (const unsigned short word : series.Words()) EXPECT_TRUE(word & PS_DELETED);
    EXPECT_EQ(manager.GetCount(&series), 3);
    EXPECT_FALSE(series.IsModified());
}

TEST_F(XYEditData, AStaleSelectionTouchesOnlyWhatIsThere) {
    Select({3, 4, 4000000});
    EXPECT_EQ(data.GetSelectedCount(), 3);
    EXPECT_EQ(data.TranslateSelected(0, 5, false, true), 1);
    EXPECT_EQ(series.Ys(), (std::vector<int>{0, 10, 20, 35, 45}));
    FullSource shorter(AtTens({1, 2}));
    data.SelectPoint(4);
    EXPECT_EQ(data.SelectPointSource(&shorter), &series);
    EXPECT_EQ(data.GetSelectedIndex(), -1);
    EXPECT_EQ(data.GetFirstSelectedIndex(), 0);
    const int results[] = {data.TranslateSelected(1, 1, false),
                           data.TranslateSelected(1, 1, false, true),
                           data.ScaleSelected(2, 0),
                           data.ScaleSelected(0, 2, 0, true),
                           data.InterpolateSelected(),
                           data.DeleteSelected(),
                           data.RejectSelected(1),
                           data.SmoothSelected(1, true),
                           data.DeleteSelected(true)};
    for (const int result : results) EXPECT_EQ(result, 0);
    EXPECT_EQ(shorter.Ys(), (std::vector<int>{1, 2}));
    const long unordered[] = {1, 0, 1};
    data.SetSelected(unordered, 3);
    EXPECT_EQ(data.TranslateSelected(0, 10, false, true), 1);
    EXPECT_EQ(shorter.Ys(), (std::vector<int>{11, 12})) << "each once";
}

TEST_F(XYEditData, SelectsByRegionWhatIsNotDeleted) {
    const std::vector<CPoint> box{{5, 5}, {35, 5}, {35, 35}, {5, 35}};
    CBigRegion region(box.data(), 4);
    series.GetStatus()[2] = PS_DELETED;
    EXPECT_TRUE(data.SetSelected(region, true));
    EXPECT_EQ(Selection(), (std::vector<long>{1, 3}));
    EXPECT_EQ(data.GetFirstSelectedIndex(), 1);
    EXPECT_TRUE(data.SetSelected(region, false));
    EXPECT_EQ(Selection(), (std::vector<long>{0, 4}));
    CBigRegion nothing(box.data(), 1);
    EXPECT_TRUE(data.SetSelected(nothing, true));
    EXPECT_EQ(data.GetSelectedCount(), 0);
    EXPECT_TRUE(data.SetSelected(nothing, false));
    EXPECT_EQ(data.GetSelectedCount(), 4);
    series.hasStatus = false;
    EXPECT_TRUE(data.SetSelected(region, true));
    EXPECT_EQ(Selection(), (std::vector<long>{1, 2, 3}));
    EXPECT_FALSE(data.SetSelected(nullptr, 3));
    EXPECT_EQ(data.GetSelectedCount(), 0);
}

// A host may select by rules of its own.
class EvenOnly : public CXYEditData {
  public:
    bool ValidateSelection(int i, unsigned short*) override { return i % 2 == 0; }
};

TEST_F(XYEditData, SelectionByRegionAsksTheHostAndCrossesBlocks) {
    std::vector<CPoint> points;
    for (int i = 0; i < 10000; ++i) points.emplace_back(i, i % 100);
    FullSource many(points);
    EvenOnly even;
    even.SelectPointSource(&many);
    const std::vector<CPoint> box{{4000, -1}, {9000, -1}, {9000, 50}, {4000, 50}};
    CBigRegion region(box.data(), 4);
    even.SetSelected(region, true);
    std::vector<long> expected;
    for (int i = 0; i < 10000; ++i)
        if (i % 2 == 0 && region.PtInRegion(points[static_cast<std::size_t>(i)])) expected.push_back(i);
    ASSERT_GT(expected.size(), 1000u);
    EXPECT_EQ(std::vector<long>(even.GetSelected(), even.GetSelected() + even.GetSelectedCount()), expected);
}

TEST_F(XYEditData, ClearsAllRejectionsBehindItsOwnSnapshot) {
    data.SelectPoint(1);
    data.RejectSelected(2);
    EXPECT_EQ(data.ClearAllRejection(), 1);
    EXPECT_EQ(series.codes, std::vector<int>(5));
    EXPECT_EQ(series.Words()[0], PS_EDITED);
    EXPECT_EQ(series.Words()[1], PS_REJECTED | PS_EDITED);
    EXPECT_TRUE(series.IsModified());
    EXPECT_EQ(Last(series), "Clear all rejections: Clear all rejections");
    series.UndoEdit();
    EXPECT_EQ(series.codes[1], 2);
    EXPECT_EQ(series.Words()[0], 0);

    FullSource without(AtTens({1}));
    without.hasCodes = false;
    data.SelectPointSource(&without);
    EXPECT_EQ(data.ClearAllRejection(), 0);
    EXPECT_FALSE(without.CanUndo());
}

TEST_F(XYEditData, TranslatesRecordsInRealUnitsAndIsUndoneBySnapshots) {
    Select({1, 2});
    const std::vector<int> before = series.Ys();
    series.SaveForUndo(true);
    EXPECT_EQ(data.TranslateSelected(0, 50, false, true), 1);
    const std::vector<int> after = series.Ys();
    EXPECT_EQ(after, (std::vector<int>{0, 60, 70, 30, 40}));
    EXPECT_EQ(series.Words()[1], kMoved);
    EXPECT_EQ(series.codes[1], REJECT_MOVED);
    EXPECT_EQ(series.codes[0], 0);
    EXPECT_EQ(Last(series), "Translate points: Points translated (0.000 s, 0.500 m) ");
    EXPECT_FALSE(series.IsModified());
    series.UndoEdit();
    EXPECT_EQ(manager.Undo(&series, 1), 1);
    EXPECT_EQ(series.Ys(), before);
    EXPECT_EQ(series.Words(), std::vector<unsigned short>(5));
    series.RedoEdit();
    EXPECT_EQ(manager.Redo(&series, 1), 1);
    EXPECT_EQ(series.Ys(), after);
}

TEST_F(XYEditData, SetsLevelsInsideOrOutside) {
    EXPECT_EQ(data.TranslateSelected(0, 7, true, true), 0) << "nothing selected";
    EXPECT_EQ(data.TranslateSelected(0, 7, false, false), 0) << "nothing selected";
    Select({0, 1, 2, 3, 4});
    EXPECT_EQ(data.TranslateSelected(0, 7, true, false), 0) << "nothing outside";
    EXPECT_EQ(manager.GetCount(&series), 0);
    Select({1, 3});
    EXPECT_EQ(data.TranslateSelected(0, 7, true, true), 1);
    EXPECT_EQ(series.Ys(), (std::vector<int>{0, 7, 20, 7, 40}));
    EXPECT_EQ(data.TranslateSelected(0, LONG_MAX, true, false), 1);
    EXPECT_EQ(series.Ys(), (std::vector<int>{INT_MAX, 7, INT_MAX, 7, INT_MAX}));
    EXPECT_EQ(series.Words(), std::vector<unsigned short>(5, kMoved));
    EXPECT_EQ(series.codes, std::vector<int>(5, REJECT_MOVED));
    data.ClearSelection();
    EXPECT_EQ(data.TranslateSelected(0, 1, true, false), 1) << "everything is outside";
    EXPECT_EQ(series.Ys(), std::vector<int>(5, 1));
}

TEST_F(XYEditData, MovesTheCurrentPointByOrTo) {
    data.SelectPoint(1);
    EXPECT_EQ(data.TranslateSelected(0, 5, false), 1);
    EXPECT_EQ(series.GetData()[1], CPoint(10, 15));
    EXPECT_EQ(data.TranslateSelected(12, 99, true), 1);
    EXPECT_EQ(series.GetData()[1], CPoint(12, 99));
    EXPECT_EQ(series.codes[1], REJECT_MOVED);
    data.SelectPoint(2);
    EXPECT_EQ(data.TranslateSelected(20, 20, true), 1);
    EXPECT_EQ(series.Words()[2], 0) << "it was there already";
    EXPECT_EQ(manager.GetCount(&series), 3);
}

TEST_F(XYEditData, EditsOfTheWholeAreRecordedForItsParts) {
    EXPECT_EQ(data.TranslateAll(0, 5, false), 1);
    EXPECT_TRUE(series.IsModified());
    EXPECT_EQ(series.codes, std::vector<int>(5)) << "no rejection code";
    EXPECT_EQ(manager.GetCount(&series), 0);

    FullSource part(AtTens({0}), 1.0, 50.0);
    series.parts = {&part};
    EXPECT_EQ(data.TranslateAll(0, 100, true), 1);
    EXPECT_EQ(series.Ys(), std::vector<int>(5, 100));
    EXPECT_EQ(series.codes, std::vector<int>(5, REJECT_MOVED));
    EXPECT_TRUE(part.IsModified());
    EXPECT_EQ(part.Ys(), std::vector<int>{0});
    EXPECT_EQ(Last(part), "Translate points: Points translated (0.000 s, 2.000 m) ");
    EXPECT_EQ(data.ScaleAll(0, 2.0, 50.0), 1);
    EXPECT_EQ(series.Ys(), std::vector<int>(5, 150));
    EXPECT_EQ(Last(part), "Scale points: Points scaled with factor 2.000 about origin 0.500 s");
    EXPECT_EQ(data.SmoothAll(3.0), 1);
    EXPECT_EQ(Last(part), "Smooth points: Wave length 3.000 s");
    EXPECT_EQ(manager.GetCount(&series), 0);
}

TEST_F(XYEditData, ScalesAndRefusesUnknownMethods) {
    Select({0, 1});
    EXPECT_EQ(data.ScaleSelected(0, 0.5, 0.0, false), 1);
    EXPECT_EQ(series.Ys(), (std::vector<int>{0, 10, 10, 15, 20}));
    EXPECT_EQ(data.ScaleSelected(1, 0.1, 0.0, true), 1);  // K = 10 over both
    EXPECT_EQ(series.Ys(), (std::vector<int>{0, 20, 10, 15, 20}));
    EXPECT_EQ(Last(series), "Scale points: Points scaled with factor 0.100 about origin 0.000 s");
    data.SelectPoint(4);
    EXPECT_EQ(data.ScaleSelected(3.0, 10.0), 1);
    EXPECT_EQ(series.Ys()[4], 40);
    EXPECT_EQ(series.codes[4], REJECT_MOVED);
    const long recorded = manager.GetCount(&series);
    data.ClearSelection();
    EXPECT_EQ(data.ScaleSelected(1, 1.0, 0.0, false), 0);
    EXPECT_EQ(data.ScaleSelected(4, 1.0, 0.0, true), 0);
    EXPECT_EQ(data.ScaleAll(-1, 1.0, 0.0), 0);
    EXPECT_EQ(messages, std::vector<std::string>(3, "Function is not implemented"));
    EXPECT_EQ(data.ScaleSelected(0, 1.0, 0.0, true), 0) << "nothing selected";
    EXPECT_EQ(manager.GetCount(&series), recorded);
}

TEST_F(XYEditData, InterpolatesTheSelectionOrTheCurrentPoint) {
    FullSource peak(AtTens({0, 500, 100}));
    data.SelectPointSource(&peak);
    EXPECT_EQ(data.InterpolateSelected(), 0);
    data.SelectPoint(1);
    EXPECT_EQ(data.InterpolateSelected(), 1);
    EXPECT_EQ(peak.Ys(), (std::vector<int>{0, 50, 100}));
    Select({0, 1});
    EXPECT_EQ(data.InterpolateSelected(), 1);
    EXPECT_EQ(peak.Ys(), std::vector<int>(3, 100));
    EXPECT_EQ(Last(peak), "Interpolate points: Interpolated 2 points");
}

TEST_F(XYEditData, SmoothsTheSelectionWithTheScaledWaveLength) {
    FullSource zigzag(AtTens({0, 40, 0, 40, 0, 40, 0, 40}), 10.0, 1.0);
    FullSource expected(AtTens({0, 40, 0, 40, 0, 40, 0, 40}), 10.0, 1.0);
    data.SelectPointSource(&zigzag);
    data.SetWaveLengthScale(2.0);
    Select({2, 3});
    EXPECT_EQ(data.SmoothSelected(15.0, true), 1);
    SmoothPoints(expected.GetData(), nullptr, 8, nullptr, 8, 30.0, 1, 10.0, 1.0, nullptr, nullptr, 0);
    for (const int i : {2, 3}) {
        EXPECT_EQ(zigzag.GetData()[i], expected.GetData()[i]);
        EXPECT_EQ(zigzag.Words()[static_cast<std::size_t>(i)], PS_SMOOTHED | PS_EDITED);
    }
    EXPECT_EQ(zigzag.Ys()[1], 40);
    EXPECT_EQ(Last(zigzag), "Smooth points: Wave length 15.000 s");
    EXPECT_FALSE(zigzag.IsModified());
    data.ClearSelection();
    EXPECT_EQ(data.SmoothSelected(15.0, false), 0);
    FullSource tooFew(AtTens({0, 1, 2}));
    data.SelectPointSource(&tooFew);
    EXPECT_EQ(data.SmoothAll(15.0), 0);
    EXPECT_FALSE(tooFew.IsModified());
}

TEST_F(XYEditData, FindsDeletesAndForgetsSpikes) {
    std::vector<CPoint> line;
    for (int i = 0; i < 50; ++i) line.emplace_back(i * 10, 1000);
    line[20].y = 3000;
    FullSource spiky(line, 10.0, 100.0);
    data.SelectPointSource(&spiky);
    EXPECT_EQ(data.DeleteSpikes(), 0) << "no detection yet";
    EXPECT_EQ(data.SpikeDetectAll(10.0, 25.0, true), 0) << "the window is in real units";
    EXPECT_EQ(data.SpikeDetectMedianFilter(5.0, 25.0, true), 0);
    EXPECT_FALSE(data.HasSpikes());
    EXPECT_EQ(manager.GetCount(&spiky), 0);
    EXPECT_EQ(data.SpikeDetectAll(10.0, 5.0, true), 1);
    EXPECT_TRUE(data.HasSpikes());
    EXPECT_EQ(spiky.Words()[20], PS_SPIKE | PS_EDITED);
    EXPECT_EQ(Last(spiky), "Spike detection: Wave length: 10.000 s\r\nWindow: 5.000 m");
    EXPECT_EQ(data.RemoveSpikeMarkings(), 1);
    EXPECT_EQ(data.RemoveSpikeMarkings(), 0);
    EXPECT_FALSE(data.HasSpikes());
    EXPECT_EQ(spiky.Words()[20], PS_EDITED);

    Select({1, 2, 3});
    EXPECT_EQ(data.SpikeDetectSelected(10.0, 5.0, true, false), 0);
    EXPECT_EQ(data.SpikeDetectMedianFilter(5.0, 5.0, false), 1);
    EXPECT_EQ(Last(spiky), "Median spike detection: Filter length: 5 samples\r\nReject distance: 5.000");
    EXPECT_EQ(data.DeleteSpikes(), 1);
    EXPECT_EQ(Last(spiky), "Delete marked spikes: Deleted 1 points. (2.00 %).");
    EXPECT_EQ(spiky.Words()[20], PS_DELETED | PS_SPIKE | PS_EDITED);
    EXPECT_EQ(spiky.codes[20], REJECT_SPIKE);
    EXPECT_EQ(data.RejectSpikes(), 0) << "only once for each detection";
    data.ClearSelection();
    EXPECT_EQ(data.SpikeDetectSelected(10.0, 5.0, true, true), 0);
}

// A listener that draws at once must not take the samples for those it knows.
TEST_F(XYEditData, EveryEditMovesTheChangeCountBeforeItIsRecorded) {
    std::vector<CPoint> points;
    for (int i = 0; i < 30; ++i) points.emplace_back(i, i == 20 ? 1000 : i % 3);
    FullSource spiky(points, 10.0, 10.0);
    data.SelectPointSource(&spiky);
    std::uint64_t before = 0;
    const int listener = manager.AddListener([&](const void*) { EXPECT_NE(spiky.GetChangeCount(), before); });
    const std::pair<const char*, std::function<void()>> edits[] = {
        {"median", [&] { data.SpikeDetectMedianFilter(5, 5, false); }},
        {"unmark", [&] { data.RemoveSpikeMarkings(); }},
        {"spline", [&] { data.SpikeDetectAll(1, 5, false); }},
        {"spline in part",
         [&] {
             Select({1, 2}), data.SpikeDetectSelected(2, 5, false, false);
         }},
        {"delete spikes", [&] { data.DeleteSpikes(); }},
        {"delete current", [&] { data.SelectPoint(1), data.DeleteSelected(); }},
        {"reject current", [&] { data.SelectPoint(2), data.RejectSelected(1); }},
        {"move current", [&] { data.SelectPoint(2), data.TranslateSelected(1, 1, false); }},
        {"scale current", [&] { data.ScaleSelected(2, 0); }},
        {"mark", [&] { Select({3}), data.RejectSelected(true, 1); }},
        {"clear", [&] { data.ClearAllRejection(); }},
        {"move", [&] { Select({4}), data.TranslateSelected(1, 1, false, true); }},
        {"move all", [&] { data.TranslateAll(1, 1, false); }},
        {"scale", [&] { Select({4}), data.ScaleSelected(0, 2, 0, true); }},
        {"scale all", [&] { data.ScaleAll(0, 2, 0); }},
        {"smooth",
         [&] {
             Select({5, 6}), data.SmoothSelected(2, true);
         }},
        {"smooth all", [&] { data.SmoothAll(2); }},
        {"interpolate", [&] { Select({7}), data.InterpolateSelected(); }},
        {"command", [&] { KMedianFilterSpikeDetectCmd(&spiky, nullptr, 0, 5, 0).Execute(); }},
    };
    for (const auto& [what, edit] : edits) {
        const auto words = spiky.Words();
        const auto ys = spiky.Ys();
        before = spiky.GetChangeCount();
        edit();
        EXPECT_NE(spiky.GetChangeCount(), before) << what;
        EXPECT_TRUE(spiky.Words() != words || spiky.Ys() != ys) << what << " did nothing";
    }
    manager.RemoveListener(listener);
}

TEST_F(XYEditData, CopiesRunsOfPoints) {
    FullSource six(AtTens({0, 1, 2, 3, 4, 5}));
    six.GetStatus()[3] = PS_DELETED;
    data.SelectPointSource(&six);
    const auto copied = [](CPoint* points, int pointCount, int* segments, int segmentCount) {
        const std::unique_ptr<CPoint[]> ownPoints(points);
        const std::unique_ptr<int[]> ownSegments(segments);
        std::vector<int> numbers;
        for (int i = 0; i < pointCount; ++i) numbers.push_back(points[i].y);
        numbers.push_back(-1);
        numbers.insert(numbers.end(), segments, segments + segmentCount);
        return numbers;
    };
    int points = -1;
    int count = -1;
    int* segments = nullptr;
    CPoint* copy = data.GetCopy(points, count, &segments);
    EXPECT_EQ(copied(copy, points, segments, count), (std::vector<int>{0, 1, 2, 4, 5, -1, 0, 3, 5}));
    Select({1, 3, 4, 900});
    copy = data.GetCopyInsideRegion(points, count, &segments);
    EXPECT_EQ(copied(copy, points, segments, count), (std::vector<int>{1, 3, 4, -1, 0, 1, 3}));
    data.ClearSelection();
    EXPECT_EQ(data.GetCopyInsideRegion(points, count, &segments), nullptr);
    EXPECT_EQ(points, 0);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(segments, nullptr);
}

TEST_F(XYEditData, SamplesMoveAndCopyDeeply) {
    Select({1, 3});
    CSampleInfoSet sample;
    sample.GetSampleInsideRegion();  // no data set yet
    sample.SetDataSet(&data);
    sample.GetSampleInsideRegion();
    sample.TranslateSample({5, 7});
    sample.TranslateSample({0, 7});
    ASSERT_EQ(sample.GetPointCount(), 2);
    EXPECT_EQ(sample.GetPoints()[1], CPoint(30, 37)) << "from where it was taken";
    CSampleInfoSet copy(sample);
    sample.DeleteSample();
    EXPECT_EQ(sample.GetPoints(), nullptr);
    EXPECT_EQ(copy.GetPoints()[0], CPoint(10, 17));
    copy = *&copy;
    sample = copy;
    sample.ReGetSample();
    EXPECT_EQ(sample.GetPoints()[0], CPoint(10, 10));
    EXPECT_EQ(copy.GetPoints()[0], CPoint(10, 17));
}

}  // namespace
