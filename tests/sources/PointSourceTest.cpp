#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <functional>
#include <istream>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "sources/KPointSource.h"
#include "tests/core/Limits.h"
#include "tests/sources/TestSeries.h"

namespace {

void Fill(KPointSource& series, const Points& points) {
    for (const CPoint& point : points) series.push_back(point);
}

Points Samples(IPointSource& series) {
    Points points;
    for (auto sample = series.begin_data(); !(sample == series.end_data()); ++sample)
        points.push_back(*sample);
    return points;
}

// Least and greatest x, least and greatest y.
std::vector<double> ExtentOf(KPointSource& series) {
    EXPECT_TRUE(series.UpdateStats());
    return {series.GetMinX(), series.GetMaxX(), series.GetMinY(), series.GetMaxY()};
}

TEST(PointSource, TheClosestIndexPrefersTheUpperAndAvoidsDeleted) {
    CTestSeries series;
    std::vector<long> xs = {0, 10, 20, 30};
    series.Resize(4);
    EXPECT_EQ(series.GetClosestIndex(5, nullptr, false), -1);
    const struct {
        long x;
        int expected;
    } cases[] = {{-1, 0}, {0, 0},  {4, 0},
                 {5, 1},  {15, 2}, {14, 1},
                 {30, 3}, {99, 3}, {std::numeric_limits<long>::max(), 3}};
    for (const auto& one : cases)
        EXPECT_EQ(series.GetClosestIndex(one.x, xs.data(), false), one.expected) << one.x;

    series.status = {0, PS_DELETED, PS_DELETED, 0};
    EXPECT_EQ(series.GetClosestIndex(10, xs.data(), false), 1);
    EXPECT_EQ(series.GetClosestIndex(10, xs.data(), true), 0);
    EXPECT_EQ(series.GetClosestIndex(15, xs.data(), true), 3);
    series.status[3] = PS_DELETED;
    EXPECT_EQ(series.GetClosestIndex(30, xs.data(), true), 0);
    series.status[0] = PS_DELETED;
    EXPECT_EQ(series.GetClosestIndex(30, xs.data(), true), -1);
    series.hasStatus = false;
    EXPECT_EQ(series.GetClosestIndex(30, xs.data(), true), 3);
    series.Resize(2);
    EXPECT_EQ(series.GetClosestIndex(1, xs.data(), false), 1) << "of two always the upper one";
    series.Resize(1);
    EXPECT_EQ(series.GetClosestIndex(99, xs.data(), false), 0);
    series.Resize(0);
    EXPECT_EQ(series.GetClosestIndex(5, xs.data(), false), -1);
    EXPECT_EQ(series.GetClosestIndex(-5, xs.data(), false), 0);
}

TEST(PointSource, TwoUndosAndARedoLeadToTheFirstEditAndAThirdEditForgetsTheRest) {
    CTestSeries series;
    series.Resize(2);
    const auto edit = [&](LONG y, char own) {
        series.SaveForUndo(true).put(own);
        series.data[1].y = y;
        series.status[1] = static_cast<unsigned short>(y);
        series.rejection[1] = y;
        series.SetModified(1);
    };
    // What the caller put behind the snapshot comes back from behind it.
    edit(1, 'a');
    edit(2, 'b');
    EXPECT_EQ(series.UndoEdit().get(), 'b');
    EXPECT_EQ(series.UndoEdit().get(), 'a');
    EXPECT_EQ(series.data[1].y, 0);
    EXPECT_FALSE(series.CanUndo());
    EXPECT_EQ(series.RedoEdit().get(), std::istream::traits_type::eof());  // nobody put anything there
    EXPECT_EQ(series.data[1].y, 1);
    EXPECT_EQ(series.status[1], 1);
    EXPECT_EQ(series.rejection[1], 1);
    EXPECT_TRUE(series.CanRedo());
    edit(3, 'c');
    EXPECT_FALSE(series.CanRedo());
    EXPECT_EQ(series.IsModified(), 1);
    EXPECT_EQ(series.UndoEdit().get(), 'c');
    EXPECT_EQ(series.data[1].y, 1);
    series.ClearUndoBuffer();
    EXPECT_FALSE(series.CanUndo() || series.CanRedo() || series.IsModified());
    EXPECT_TRUE(series.UndoEdit().peek() == std::istream::traits_type::eof());
    EXPECT_EQ(series.data[1].y, 1);
}

// A snapshot of another length restores the points both have, each array from its own place, and leaves the
// stream behind the whole snapshot.
TEST(PointSource, ASnapshotOfAnyLengthRestoresWhatBothHave) {
    std::mt19937 random(8);
    for (int round = 0; round < 300; ++round) {
        const std::size_t before = random() % 4 == 0 ? 0 : random() % 2000;
        const std::size_t now = round % 3 == 0 ? before : random() % 2000;
        CTestSeries series;
        series.hasStatus = random() % 4 != 0;
        series.hasRejection = random() % 2 != 0;
        const auto randomize = [&](std::size_t n) {
            series.Resize(n);
            for (std::size_t i = 0; i < n; ++i) {
                series.data[i] = CPoint(static_cast<LONG>(random()), static_cast<LONG>(random()));
                series.status[i] = static_cast<unsigned short>(random());
                series.rejection[i] = static_cast<int>(random());
            }
        };
        randomize(before);
        const Points data = series.data;
        const auto status = series.status;
        const auto rejection = series.rejection;
        series.SaveForUndo(true) << "behind";
        randomize(now);
        const auto otherStatus = series.status;
        const auto otherData = series.data;
        const auto otherRejection = series.rejection;
        std::string own;
        series.UndoEdit() >> own;
        EXPECT_EQ(own, "behind");
        for (std::size_t i = 0; i < now; ++i) {
            const bool both = i < before;
            ASSERT_EQ(series.data[i], both ? data[i] : otherData[i]) << round;
            ASSERT_EQ(series.status[i], both && series.hasStatus ? status[i] : otherStatus[i]) << round;
            ASSERT_EQ(series.rejection[i], both && series.hasRejection ? rejection[i] : otherRejection[i])
                << round;
        }
    }
}

TEST(KPointSource, GrowsByItsStepAndKeepsSamplesAndStatus) {
    KPointSource series("name", 1, 1, "", "", 0, 10);
    Points expected;
    for (LONG i = 0; i < 1000; ++i) {
        series.push_back(CPoint(i, -i));
        expected.emplace_back(i, -i);
        ASSERT_EQ(series.GetStatus()[i], 0);
        series.GetStatus()[i] = static_cast<unsigned short>(i);
    }
    EXPECT_EQ(Samples(series), expected);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(series.GetStatus()[i], i);
    series.push_back(series[0]);
    EXPECT_EQ(series[1000], CPoint(0, 0));
    series.clear();
    EXPECT_TRUE(series.empty());
    EXPECT_TRUE(series.begin_data() == series.end_data());
    EXPECT_EQ(series.begin_data().last, series.GetData());
    series.push_back(CPoint(7, 7));
    EXPECT_EQ(series.GetStatus()[0], 0);  // not the word of the sample that was there before
}

TEST(KPointSource, InsertsMoveSamplesWithTheirStatus) {
    KPointSource series("name", 1, 1, "", "", 0, 2);
    Fill(series, {{1, 1}, {2, 2}, {3, 3}});
    for (unsigned short i = 0; i < 3; ++i) series.GetStatus()[i] = static_cast<unsigned short>(i + 1);
    const auto staleEnd = series.end_data();
    series.insert(series.begin_data(), CPoint(0, 0));
    series.insert(series.end_data(), CPoint(4, 4));
    series.insert(staleEnd, CPoint(5, 5));
    EXPECT_EQ(Samples(series), (Points{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}}));
    EXPECT_EQ(std::vector<unsigned short>(series.GetStatus(), series.GetStatus() + 6),
              (std::vector<unsigned short>{0, 1, 2, 3, 0, 0}));

    auto from = series.begin_data();
    auto to = ++(++series.begin_data());
    series.insert(++series.begin_data(), from, to);
    EXPECT_EQ(Samples(series), (Points{{0, 0}, {0, 0}, {1, 1}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}}));
    EXPECT_EQ(series.GetStatus()[3], 1);
    KPointSource other("other", 1, 1, "", "", 0, 1);
    other.insert(other.end_data(), series.begin_data(), series.end_data());
    EXPECT_EQ(Samples(other), Samples(series));
}

TEST(KPointSource, ACallersStatusArrayIsUsedAndNeverGrownOrFreed) {
    std::vector<unsigned short> words(100, PS_SPIKE);
    {
        KPointSource series("name", 1, 1, "", "", 0, 10);
        Fill(series, {{1, 1}});
        series.SetStatus(words.data());
        for (LONG i = 0; i < 50; ++i) series.push_back(CPoint(i, i));
        EXPECT_EQ(series.GetStatus(), words.data());
    }
    EXPECT_EQ(words[0], PS_SPIKE);
    EXPECT_EQ(words[50], 0);
    EXPECT_EQ(words[51], PS_SPIKE);
    KPointSource without("name", 1, 1, "", "", 0, 10);
    without.SetStatus(nullptr);
    Fill(without, {{1, 1}, {5, 9}});
    EXPECT_TRUE(without.UpdateStats());
    EXPECT_EQ(without.GetMaxY(), 9.0);
}

TEST(KPointSource, TheExtentFollowsScaleAndOffsetAndSkipsDeletedUnlessAllAre) {
    KPointSource empty("name", 1, 1, "", "", 0, 1);
    EXPECT_FALSE(empty.UpdateStats());
    EXPECT_EQ(empty.GetMinX(), -1.0);

    const struct {
        Points points;
        std::vector<int> deleted;
        double scale;
        std::vector<double> extent;
    } cases[] = {{{{0, 5}, {1, 5}}, {}, 1, {0, 1, 4, 6}},
                 {{{0, 0}, {1, 1}}, {}, 1, {0, 1, -1, 2}},
                 {{{0, 0}, {1, 2}}, {}, 1, {0, 1, 0, 2}},
                 {{{0, 9}, {4, 3}}, {0, 1}, 1, {0, 4, 3, 9}},
                 {{{10, 90}, {40, 30}}, {}, -10, {-4, -1, -9, -3}},
                 {{{kMin, kMin}, {kMax, kMax}}, {}, 0.5, {2.0 * kMin, 2.0 * kMax, 2.0 * kMin, 2.0 * kMax}}};
    for (const auto& one : cases) {
        KPointSource series("name", one.scale, one.scale, "", "", 0, 1);
        Fill(series, one.points);
        for (const int i : one.deleted) series.GetStatus()[i] = PS_DELETED;
        EXPECT_EQ(ExtentOf(series), one.extent);
    }
    KPointSource wild("name", 0, 0, "", "", 0, 1);
    Fill(wild, {{0, 0}, {kMax, kMax}});
    wild.SetOffset(std::numeric_limits<long>::max(), -5);
    EXPECT_TRUE(wild.UpdateStats());
    EXPECT_EQ(wild.GetMaxX(), kInfinity);
}

TEST(KPointSource, TheExtentOfRandomSeriesIsThatOfAWalkOverThem) {
    std::mt19937 random(4);
    for (int round = 0; round < 200; ++round) {
        KPointSource series("name", 8, 8, "", "", 0, 7);
        series.SetOffset(100, -100);
        double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
        const unsigned n = 1 + random() % 40;
        for (unsigned i = 0; i < n; ++i) {
            const CPoint point(static_cast<LONG>(random()), static_cast<LONG>(random()));
            series.push_back(point);
            if (i > 0 && random() % 2) {
                series.GetStatus()[i] = PS_DELETED | PS_EDITED;
                continue;
            }
            series.GetStatus()[i] = static_cast<unsigned short>(random() & ~unsigned{PS_DELETED});
            minX = std::min(minX, (point.x + 100.0) / 8);
            maxX = std::max(maxX, (point.x + 100.0) / 8);
            minY = std::min(minY, (point.y - 100.0) / 8);
            maxY = std::max(maxY, (point.y - 100.0) / 8);
        }
        const double widen = maxY - minY > 1 ? 0 : 1;
        EXPECT_EQ(ExtentOf(series), (std::vector<double>{minX, maxX, minY - widen, maxY + widen}));
    }
}

TEST(KPointSource, WhateverChangesTheSamplesMovesTheChangeCount) {
    KPointSource series("name", 1, 1, "", "", 0, 2);
    std::vector<unsigned short> words(10);
    const struct {
        const char* what;
        std::function<void()> act;
        bool moves;
    } cases[] = {
        {"append",
         [&] {
             series.push_back({1, 1});
         },
         true},
        {"insert", [&] { series.insert(series.begin_data(), CPoint(0, 0)); }, true},
        {"insert several", [&] { series.insert(series.end_data(), series.begin_data(), series.end_data()); },
         true},
        {"snapshot", [&] { series.SaveForUndo(true); }, false},
        {"undo", [&] { series.UndoEdit(); }, true},
        {"redo", [&] { series.RedoEdit(); }, true},
        {"offset", [&] { series.SetOffset(1, 1); }, true},
        {"status", [&] { series.SetStatus(words.data()); }, true},
        {"statistics", [&] { series.UpdateStats(); }, false},
        {"modified", [&] { series.SetModified(1); }, true},
        {"saved", [&] { series.ClearUndoBuffer(), series.SetModified(0); }, false},
        {"written through GetData",
         [&] {
             series.GetData()[0] = {5, 5}, series.NoteChange();
         },
         true},
        {"clear", [&] { series.clear(); }, true},
    };
    for (const auto& one : cases) {
        const std::uint64_t before = series.GetChangeCount();
        one.act();
        EXPECT_EQ(series.GetChangeCount() != before, one.moves) << one.what;
    }
    std::uint64_t ended = 0;
    {
        KPointSource other("other", 1, 1, "", "", 0, 2);
        ended = other.GetChangeCount();
    }
    EXPECT_NE(KPointSource("next", 1, 1, "", "", 0, 2).GetChangeCount(), ended) << "at the same address";
}

TEST(KPointSource, AnotherThreadMayAppendWhileALockedReaderWalks) {
    KPointSource series("name", 1, 1, "", "", 0, 100);
    constexpr int kAppended = 3000;
    std::atomic<bool> done = false;
    std::thread host([&] {
        for (int i = 0; i < kAppended; ++i) series.push_back(CPoint(i, i));
        done = true;
    });
    while (!done) {
        EXPECT_NE(series.Lock(), 0);
        LONG next = 0;
        bool ascending = true;
        for (auto sample = series.begin_data(); !(sample == series.end_data()); ++sample)
            ascending &= *sample == CPoint(next, next) && ++next;
        EXPECT_TRUE(ascending);
        series.UpdateStats();  // locks again
        EXPECT_NE(series.UnLock(), 0);
        std::this_thread::yield();
    }
    host.join();
    EXPECT_EQ(series.GetCount(), kAppended);
}

}  // namespace
