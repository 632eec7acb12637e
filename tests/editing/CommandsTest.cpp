#include <memory>
#include <random>

#include "editing/EditCommands.h"
#include "editing/PointIndices.h"
#include "platform/core/StringTable.h"
#include "tests/editing/EditingFixture.h"

namespace {

using Commands = EditingTest;

constexpr long kListed[] = {1, 3};

TEST_F(Commands, ReportWhatTheirArgumentsMean) {
    FullSource series(AtTens({0, 0, 0, 0}));
    EXPECT_STREQ(KTranslateCmd(&series, 0.25f, -2.0f).GetResultText(),
                 "Points translated (0.250 s, -2.000 m) ");
    EXPECT_STREQ(KMedianFilterSpikeDetectCmd(&series, nullptr, 0, 11.9f, 0.25f).GetResultText(),
                 "Filter length: 11 samples\r\nReject distance: 0.250");
    KInterpolateCmd whole(&series, nullptr, 0);
    EXPECT_STREQ(whole.GetResultText(), "Interpolated 4 points");
    EXPECT_EQ(whole.GetOwner(), &series);
    EXPECT_TRUE(whole.QueryFlag2());
    EXPECT_FALSE(KDeleteCmd(&series).QueryFlag2());
    EXPECT_EQ(KRejectCmd(&series).GetName(), KRejectCmd(&series).GetName()) << "one name for the class";
}

TEST_F(Commands, WithoutASeriesTheyDoNothingAndStillReport) {
    const std::unique_ptr<KPointSourceCmd> commands[] = {
        std::make_unique<KTranslateCmd>(nullptr, 1.0f, 1.0f),
        std::make_unique<KScaleCmd>(nullptr, 9, 1.0f, 1.0f),
        std::make_unique<KSmoothCmd>(nullptr, kListed, 2, 1.0f, 1.0f),
        std::make_unique<KSpikeDetectCmd>(nullptr, kListed, 2, 1.0f, 1.0f, 1.0f),
        std::make_unique<KSpikeDeleteCmd>(nullptr, PS_DELETED),
        std::make_unique<KInterpolateCmd>(nullptr, kListed, 2),
        std::make_unique<KDeleteCmd>(nullptr),
        std::make_unique<KMedianFilterSpikeDetectCmd>(nullptr, kListed, 2, 1.0f, 1.0f),
    };
    for (const auto& command : commands) {
        EXPECT_FALSE(command->Execute()) << command->GetName();
        EXPECT_STRNE(command->GetResultText(), "") << command->GetName();
        EXPECT_EQ(command->GetOwner(), nullptr);
    }
    EXPECT_TRUE(messages.empty());
}

TEST_F(Commands, ResultsAreFormattedAnewAndFollowTheStringTable) {
    FullSource series(AtTens({0, 0, 0}));
    KInterpolateCmd command(&series, kListed, 1);
    EXPECT_STREQ(command.GetResultText(), "Interpolated 1 points");
    static constexpr StringResource kOthers[] = {{40007, "%d"}, {40005, "100% gone"}};
    const StringTable others(kOthers);
    EXPECT_STREQ(command.GetResultText(), "1");
    EXPECT_STREQ(KDeleteCmd(&series).GetResultText(), "100% gone");
}

// A command of a host's own, which brings no result text.
class HostCmd : public KPointSourceCmd {
  public:
    using KPointSourceCmd::KPointSourceCmd;
    const char* GetName() override { return Result(40999); }
};

TEST_F(Commands, TheBaseCountsItsPoints) {
    FullSource series(AtTens({0, 0, 0}));
    EXPECT_STREQ(HostCmd(&series).GetResultText(), "3 point(s) affected");
    EXPECT_STREQ(HostCmd(&series, kListed, 2).GetResultText(), "2 point(s) affected");
    EXPECT_STREQ(HostCmd(&series, kListed, 0).GetResultText(), "3 point(s) affected");
    EXPECT_STREQ(HostCmd().GetResultText(), "0 point(s) affected");
    EXPECT_STREQ(HostCmd(nullptr, kListed, 2).GetResultText(), "0 point(s) affected");
    EXPECT_STREQ(HostCmd(&series).GetName(), "") << "no such text";
}

TEST_F(Commands, TranslationRoundsHalvesAway) {
    const struct {
        float dx, dy;
        CPoint expected;
    } cases[] = {{0.25f, 0.0f, {3, 0}}, {-0.25f, 1.0f, {-3, 4}}, {0.0f, -0.125f, {0, -1}}};
    for (const auto& one : cases) {
        FullSource series({{0, 0}, {0, 0}}, 10.0, 4.0);
        EXPECT_TRUE(KTranslateCmd(&series, one.dx, one.dy).Execute());
        EXPECT_EQ(series.GetData()[1], one.expected) << one.dx;
        EXPECT_EQ(series.GetStatus()[1], PS_MOVED | PS_EDITED);
        EXPECT_EQ(series.codes[1], 0);
        EXPECT_TRUE(series.IsModified());
    }
}

TEST_F(Commands, ScalingUsesTheOriginInRealUnits) {
    // Scale 10, offset 20: real 12 is stored 100. Twice the distance: 150 becomes 200.
    FullSource series(AtTens({150, 50}), 1.0, 10.0);
    series.SetOffset(0, 20);
    EXPECT_TRUE(KScaleCmd(&series, 0, 2.0f, 12.0f).Execute());
    EXPECT_EQ(series.Ys(), (std::vector<int>{200, 0}));

    FullSource ramp(AtTens({0, 0, 0}), 1.0, 10.0);
    EXPECT_FALSE(KScaleCmd(&ramp, 4, 10.0f, 0.0f).Execute());
    EXPECT_FALSE(ramp.IsModified());
    EXPECT_EQ(messages, std::vector<std::string>{"Function is not implemented"});
    EXPECT_TRUE(KScaleCmd(&ramp, 1, 10.0f, 0.0f).Execute());
    EXPECT_EQ(ramp.Ys(), (std::vector<int>{0, 50, 100}));
}

TEST_F(Commands, SpikeDeletionCountsAndKeepsTheMarks) {
    for (const unsigned short flag : {PS_DELETED, PS_REJECTED}) {
        FullSource series(std::vector<CPoint>(200));
        for (const int i : {0, 99, 199}) series.GetStatus()[i] = PS_SPIKE;
        KSpikeDeleteCmd command(&series, flag);
        EXPECT_TRUE(command.Execute());
        EXPECT_STREQ(command.GetResultText(), "Deleted 3 points. (1.50 %).");
        for (const int i : {0, 99, 199}) {
            EXPECT_EQ(series.GetStatus()[i], flag | PS_SPIKE | PS_EDITED);
            EXPECT_EQ(series.codes[static_cast<std::size_t>(i)], REJECT_SPIKE);
        }
        EXPECT_EQ(series.GetStatus()[1], 0);
        EXPECT_TRUE(series.IsModified());
    }
    FullSource bare(AtTens({0}));
    bare.hasStatus = false;
    EXPECT_FALSE(KSpikeDeleteCmd(&bare, PS_DELETED).Execute());
}

TEST_F(Commands, InterpolationSparesTheWholeSeries) {
    FullSource series(AtTens({0, 500, 100}));
    constexpr long kMiddle[] = {1};
    EXPECT_TRUE(KInterpolateCmd(&series, kMiddle, 1).Execute());
    EXPECT_EQ(series.Ys(), (std::vector<int>{0, 50, 100}));
    EXPECT_EQ(series.GetStatus()[1], PS_INTERPOLATED | PS_EDITED);

    series.SetModified(0);
    constexpr long kAll[] = {0, 1, 2};
    EXPECT_FALSE(KInterpolateCmd(&series, kAll, 3).Execute());
    EXPECT_FALSE(KInterpolateCmd(&series, nullptr, 0).Execute());
    EXPECT_FALSE(series.IsModified());
}

TEST_F(Commands, IndicesThatNoLongerFitAreNotTouched) {
    FullSource series(AtTens({0, 500, 100, 7, 7}));
    constexpr long kSome[] = {1, 3, 4};
    KInterpolateCmd command(&series, kSome, 3);
    series.clear();
    EXPECT_FALSE(command.Execute());
    for (const int y : {0, 500, 100}) series.push_back({static_cast<int>(series.GetCount()) * 10, y});
    KSpikeDetectCmd detection(&series, kSome + 1, 2, 1.0f, 1.0f, 1.0f);
    EXPECT_FALSE(detection.Execute());
}

TEST_F(Commands, MedianDetectionMarksAndNeverUnmarks) {
    FullSource series(AtTens({5, 5, 90, 5, 5}), 1.0, 10.0);
    series.GetStatus()[0] = PS_SPIKE;
    KMedianFilterSpikeDetectCmd command(&series, nullptr, 0, 3.0f, 0.5f);
    EXPECT_TRUE(command.Execute());
    // The median of a window of three is its first sample: the one behind the peak is measured against it.
    EXPECT_EQ(series.Words(),
              (std::vector<unsigned short>{PS_SPIKE, 0, PS_SPIKE | PS_EDITED, PS_SPIKE | PS_EDITED, 0}));
    EXPECT_FALSE(series.IsModified());
}

TEST(PointIndices, KeepCountAndOrderWhateverIsListed) {
    EXPECT_EQ(PointIndices::First(-1).GetCount(), 0);
    EXPECT_EQ(PointIndices::First(3).Within(10), (std::vector<long>{0, 1, 2}));
    EXPECT_EQ(PointIndices::First(3).Within(2), (std::vector<long>{0, 1}));
    const long wild[] = {
        5, 6, 7, 2, 2, -3, -2, 6, 100, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()};
    const PointIndices indices(wild, 11);
    EXPECT_EQ(indices.GetCount(), 11);
    EXPECT_EQ(indices.Within(7), (std::vector<long>{2, 5, 6}));

    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<long> listed;
        for (long i = 0; i < 60; ++i)
            if (random() % 3 > 0) listed.push_back(i);
        EXPECT_EQ(PointIndices(listed.data(), static_cast<long>(listed.size())).Within(60), listed);
    }
}

}  // namespace
