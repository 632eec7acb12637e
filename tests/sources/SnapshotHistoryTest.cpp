#include "sources/SnapshotHistory.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/core/FailingMemory.h"
#include "tests/sources/TestSeries.h"

namespace {

std::string ReadAll(std::istream& stream) {
    EXPECT_TRUE(stream.good());
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The slow, obvious history: whole copies.
struct WholeCopies {
    struct Copy {
        Points data;
        std::vector<unsigned short> status;
        std::vector<int> rejection;
        std::string own;
    };
    static Copy Of(const CTestSeries& series, std::string own) {
        return {series.data, series.status, series.hasRejection ? series.rejection : std::vector<int>(),
                std::move(own)};
    }
    void Save(const CTestSeries& series, bool clearRedo, std::string own) {
        undo.push_back(Of(series, std::move(own)));
        dropped = clearRedo ? std::exchange(redo, {}) : std::vector<Copy>();
        canWithdraw = true;
    }
    bool Withdraw() {
        if (!std::exchange(canWithdraw, false)) return false;
        undo.pop_back();
        if (redo.empty()) redo.swap(dropped);
        return true;
    }
    std::string Restore(std::vector<Copy>& from, std::vector<Copy>& to, CTestSeries& series) {
        const Copy copy = std::move(from.back());
        from.pop_back();
        to.push_back(Of(series, ""));
        const auto restore = [](const auto& saved, auto& present) {
            std::copy_n(saved.begin(), std::min(saved.size(), present.size()), present.begin());
        };
        restore(copy.data, series.data);
        restore(copy.status, series.status);
        if (series.hasRejection) restore(copy.rejection, series.rejection);
        canWithdraw = false;
        dropped.clear();
        return copy.own;
    }

    std::vector<Copy> undo;
    std::vector<Copy> redo;
    std::vector<Copy> dropped;
    bool canWithdraw = false;
};

// A series with a history of its own, and its twin under whole copies.
class Twins {
  public:
    explicit Twins(unsigned seed) : random_(seed) {
        series_.hasRejection = twin_.hasRejection = Below(2) == 0;
        Resize();
    }
    void Step() {
        switch (Below(12)) {
            case 0:
            case 1:
                Save();
                break;
            case 2:
                Save();
                [[fallthrough]];
            case 3:
            case 4:
                Write();
                break;
            case 5:
            case 6:
            case 7:
                if (whole_.undo.empty()) break;
                ASSERT_EQ(ReadAll(series_.UndoEdit()), whole_.Restore(whole_.undo, whole_.redo, twin_));
                AddToLeft(whole_.redo.back());
                break;
            case 8:
            case 9:
                if (whole_.redo.empty()) break;
                ASSERT_EQ(ReadAll(series_.RedoEdit()), whole_.Restore(whole_.redo, whole_.undo, twin_));
                AddToLeft(whole_.undo.back());
                break;
            case 10:
                ASSERT_EQ(series_.WithdrawSnapshot(), whole_.Withdraw());
                break;
            case 11:
                if (Below(6) == 0) Resize();
                series_.PrepareForUndo(Below(9000));
                break;
        }
        ASSERT_EQ(series_.data, twin_.data);
        ASSERT_EQ(series_.status, twin_.status);
        ASSERT_EQ(series_.rejection, twin_.rejection);
        ASSERT_EQ(series_.CanUndo(), !whole_.undo.empty());
        ASSERT_EQ(series_.CanRedo(), !whole_.redo.empty());
    }

  private:
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    void Resize() {
        const std::size_t count = Below(8) == 0 ? 0 : Below(3000);
        series_.Resize(count);
        twin_.Resize(count);
    }
    void Save() {
        const std::string own(Below(40), static_cast<char>(random_()));
        const bool clearRedo = Below(4) != 0;
        series_.SaveForUndo(clearRedo) << own;
        whole_.Save(twin_, clearRedo, own);
    }
    void AddToLeft(WholeCopies::Copy& left) {
        if (Below(2) == 0) return;
        left.own = std::string(Below(40), static_cast<char>(random_()));
        series_.LeftSnapshot() << left.own;
    }
    // An edit, or a host that writes without a snapshot: one point, a run, or points apart from one another.
    void Write() {
        const std::size_t count = series_.data.size();
        if (count == 0) return;
        const std::size_t first = Below(count);
        const std::size_t length = Below(3) != 0 ? 1 : Below(count - first) + 1;
        const std::size_t every = 1 + Below(50);
        const bool samples = Below(4) != 0;
        for (std::size_t i = first; i < first + length; i += every) {
            const auto bits = static_cast<unsigned>(random_());
            for (CTestSeries* series : {&series_, &twin_}) {
                if (samples) series->data[i].y = static_cast<LONG>(bits);
                series->status[i] = static_cast<unsigned short>(bits >> 3);
                series->rejection[i] = static_cast<int>(bits >> 5);
            }
        }
    }

    std::mt19937 random_;
    CTestSeries series_;
    CTestSeries twin_;
    WholeCopies whole_;
};

TEST(SnapshotHistory, GivesTheBytesOfWholeCopiesWhateverHappens) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        Twins twins(seed);
        for (int step = 0; step < 50; ++step) {
            twins.Step();
            if (HasFatalFailure()) FAIL() << "seed " << seed << " step " << step;
        }
    }
}

TEST(SnapshotHistory, WithoutMemoryNothingIsRestoredAndTheHistoryStays) {
    const struct {
        const char* name;
        void (*act)(IPointSource&);
    } kActs[] = {
        {"save", [](IPointSource& series) { series.SaveForUndo(true); }},
        {"undo", [](IPointSource& series) { series.UndoEdit(); }},
        {"redo", [](IPointSource& series) { series.RedoEdit(); }},
    };
    for (const auto& one : kActs) {
        SCOPED_TRACE(one.name);
        CTestSeries series;
        const auto prepare = [&] {
            series.ClearUndoBuffer();
            series.Resize(0);
            series.Resize(700);
            for (const LONG y : {1, 2}) {  // a step behind and a step ahead
                series.SaveForUndo(true);
                for (CPoint& point : series.data) point.y = y;
            }
            series.UndoEdit();
            for (std::size_t i = 0; i < series.data.size(); i += 9) series.data[i].y = 5;  // a host's
        };
        Points before;
        WithEveryFailure(
            [&] {
                prepare();
                before = series.data;
            },
            [&] { one.act(series); },
            [&](bool failed) {
                if (!failed) return;
                EXPECT_EQ(series.data, before);
                series.UndoEdit();
                EXPECT_EQ(series.data[1].y, 0);
                EXPECT_FALSE(series.CanUndo());
                series.RedoEdit();
                EXPECT_EQ(series.data, before) << "redo of what stood there";
                series.RedoEdit();
                EXPECT_EQ(series.data[1].y, 2);
                EXPECT_FALSE(series.CanRedo());
            });
    }
}

TEST(SnapshotHistory, CostsWhatChanged) {
    CTestSeries series;
    series.Resize(1000000);
    for (std::size_t edit = 0; edit < 100; ++edit) {
        series.SaveForUndo(true);
        series.data[edit * 9999].y = 1;
        series.status[edit * 9999] = PS_MOVED;
    }
    for (int i = 0; i < 100; ++i) series.UndoEdit();
    for (int i = 0; i < 50; ++i) series.RedoEdit();
    EXPECT_LT(series.GetUndoMemory(), 100000U);
    for (int edit = 0; edit < 3; ++edit) {
        series.SaveForUndo(true);
        for (CPoint& point : series.data) ++point.x;
    }
    series.SaveForUndo(true);
    EXPECT_LT(series.GetUndoMemory(), 3U * 14100000U) << "never more than whole copies";
}

}  // namespace
