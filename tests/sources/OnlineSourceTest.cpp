#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "platform/core/MessageBox.h"
#include "sources/COnlineAritmetricSource.h"
#include "sources/KDataAcqSource.h"
#include "sources/KPointSource.h"
#include "tests/core/FailingMemory.h"
#include "tests/core/Limits.h"

namespace {

using Points = std::vector<CPoint>;

Points SamplesOf(IPointSource& series) {
    return series.GetCount() > 0 ? Points(series.GetData(), series.GetData() + series.GetCount()) : Points();
}

Points Diagonal(LONG from, LONG to) {
    Points points;
    for (LONG i = from; i <= to; ++i) points.emplace_back(i, i);
    return points;
}

// Offset x, least and greatest x, least and greatest y.
std::vector<double> ExtentOf(COnlineSource& series) {
    return {double(series.GetOffset().x), series.GetMinX(), series.GetMaxX(), series.GetMinY(),
            series.GetMaxY()};
}

TEST(OnlineSource, KeepsTheNewestSamplesAsOneArray) {
    COnlineSource series("live", 1, 1, 4, COnlineSource::Absolute);
    for (LONG i = 1; i <= 6; ++i) EXPECT_TRUE(series.AddData(double(i), double(i)));
    EXPECT_EQ(SamplesOf(series), Diagonal(3, 6));
    EXPECT_EQ(series.GetAppended() - 4, 2u);
    EXPECT_TRUE(series.ReSize(2));
    EXPECT_EQ(SamplesOf(series), Diagonal(3, 4)) << "the oldest ones";
    EXPECT_TRUE(series.ReSize(8));
    series.AddData(5.9, -5.9);
    EXPECT_EQ(SamplesOf(series), (Points{{3, 3}, {4, 4}, {5, -5}})) << "truncated";
    EXPECT_EQ(series.GetLatestPoint().y, -5.0);
    series.Clear();
    EXPECT_EQ(series.GetCount(), 0);
    EXPECT_EQ(series.GetLatestPoint().x, 0.0);
    series.AddData(7, 7);
    EXPECT_EQ(SamplesOf(series), Diagonal(7, 7));
    EXPECT_TRUE(series.ReSize(0));
    EXPECT_FALSE(series.AddData(1, 1));
    EXPECT_TRUE(series.empty());
    EXPECT_EQ(SamplesOf(series), Points());
    EXPECT_TRUE(series.ReSize(2));
    Points batch = Diagonal(1, 9);
    EXPECT_TRUE(series.AddData(batch.data(), 9));
    EXPECT_EQ(SamplesOf(series), Diagonal(8, 9));
    EXPECT_FALSE(series.AddData(nullptr, 1));
}

TEST(OnlineSource, ItsExtentFollowsTheModeOfX) {
    using Extent = std::vector<double>;
    const struct {
        int mode;
        double scale;
        Points points;
        Extent extent;
    } cases[] = {
        {0, 1, Diagonal(0, 10), {-10, -100, 0, 0, 10}},
        {0, 1, {{0, 3}, {500, 3}}, {-500, -500, 0, 2.5, 3.5}},
        {0, 10, {{0, 0}, {500, 20}}, {-500, -50, 0, 0, 2}},
        {0, 1, {{7, 7}}, {-7, -100, 0, 6.5, 7.5}},
        {0, 1, {}, {0, -100, 0, -0.5, 0.5}},
        // The x test is strict, the y test is not: a range of a twentieth of the scale.
        {1, 20, {{100, 40}, {101, 41}}, {0, 5, 5.05, 1.5, 2.55}},
        {1, 20, {{100, 40}, {100, 42}}, {0, 4, 6, 2, 2.1}},
        {2, 1, {{100, 40}, {900, 42}}, {0, -1, 1, 40, 42}},
        {0, 1, {{kMin, kMin}, {kMax, kMax}}, {-double(kMax), -4294967295.0, 0, double(kMin), double(kMax)}},
        {0, 1, {{kMin, 0}}, {double(kMax), -100, 0, -0.5, 0.5}},
    };
    for (const auto& one : cases) {
        COnlineSource series("live", one.scale, one.scale, 100, "s", "m", one.mode);
        Points points = one.points;
        series.AddData(points.data(), static_cast<long>(points.size()));
        const Extent extent = ExtentOf(series);
        for (std::size_t i = 0; i < extent.size(); ++i)
            EXPECT_DOUBLE_EQ(extent[i], one.extent[i]) << i << " of case " << &one - cases;
    }
}

// Against plain walks over all that was appended, with appends of every kind, in rings of every size.
TEST(OnlineSource, ExtremesOfWhatWasAppendedAndOfTheWindowAreThoseOfAWalk) {
    std::mt19937 random(31);
    for (int round = 0; round < 120; ++round) {
        std::uint32_t size = 1 + random() % (round % 3 == 0 ? 70 : 3000);
        COnlineSource series("live", 1, 1, size, COnlineSource::Absolute);
        Points window;
        Points since;  // the last UpdateStats()
        for (int step = 0; step < 60; ++step) {
            Points batch(1 + random() % (step % 4 == 0 ? 4000 : 90));
            for (CPoint& point : batch)
                point = {static_cast<LONG>(random() % 2000000) - 1000000, static_cast<LONG>(random() % 999)};
            if (step % 3 == 0)
                for (const CPoint& point : batch) series.AddData(double(point.x), double(point.y));
            else
                series.AddData(batch.data(), static_cast<long>(batch.size()));
            window.insert(window.end(), batch.begin(), batch.end());
            since.insert(since.end(), batch.begin(), batch.end());
            if (window.size() > size) window.erase(window.begin(), window.end() - size);
            if (step % 5 == 0) series.UpdateStats(), since = window;
            if (step % 17 == 16) {
                size = 1 + random() % 3000;
                ASSERT_TRUE(series.ReSize(size));
                window.resize(std::min<std::size_t>(window.size(), size));
                since = window;
            }
            if (step % 31 == 30) series.Clear(), window.clear(), since.clear();
            ASSERT_EQ(SamplesOf(series), window) << round << " " << step;
            if (since.empty()) continue;
            const auto [lowX, highX] = std::ranges::minmax(since, {}, [](const CPoint& p) { return p.x; });
            const auto [lowY, highY] = std::ranges::minmax(since, {}, [](const CPoint& p) { return p.y; });
            const double narrowX = lowX.x == highX.x ? 1.0 : 0.0;
            const double narrowY = lowY.y == highY.y ? 0.5 : 0.0;
            ASSERT_EQ(ExtentOf(series), (std::vector<double>{0, lowX.x - narrowX, highX.x + narrowX,
                                                             lowY.y - narrowY, highY.y + narrowY}))
                << round << " " << step;
        }
    }
}

TEST(OnlineSource, WithoutMemoryItStaysAsItIs) {
    COnlineSource series("live", 1, 1, 100, COnlineSource::Absolute);
    series.AddData(1, 2);
    WithEveryFailure([] {}, [&] { series.ReSize(50000); },
                     [&](bool) {
                         EXPECT_EQ(SamplesOf(series), (Points{{1, 2}}));
                         EXPECT_TRUE(series.AddData(1, 2) && series.GetMaxY() == 2.5);
                         series.Clear(), series.AddData(1, 2);
                     });
}

class Listener : public kelvo::Observer {
  public:
    explicit Listener(std::function<void(kelvo::Subject*)> newAct = {}) : act(std::move(newAct)) {}
    void Update(kelvo::Subject* subject) override {
        ++updates;
        if (act) act(subject);
    }

    std::function<void(kelvo::Subject*)> act;
    int updates = 0;
};

TEST(Subject, TellsEveryObserverOnceAndLetsThemGoAfterTheRound) {
    auto series = std::make_unique<COnlinePublishSource>("live", 1, 1, 9, 1);
    Listener last;
    Listener itself;
    itself.act = [&](kelvo::Subject* subject) { subject->Detach(&itself), subject->Detach(&last); };
    series->Attach(&itself, "a");
    series->Attach(&itself, "again");
    series->Attach(&last, "b");
    Points batch = Diagonal(1, 5);
    EXPECT_TRUE(series->AddData(batch.data(), 5));
    EXPECT_EQ(itself.updates, 1) << "one entry, one call for a batch";
    EXPECT_EQ(last.updates, 1) << "until the round is over";
    series->AddData(6, 6);
    EXPECT_EQ(itself.updates + last.updates, 2);

    // An append from inside a round, an observer that comes in it and one that ends in it.
    auto ending = std::make_unique<COnlineAritmetricSource>("sum", 1, 1, 9, 1);
    ending->AddOperand(series.get(), 0);
    Listener late;
    Listener busy([&](kelvo::Subject* subject) {
        if (busy.updates > 1) return;
        series->AddData(7, 7);
        subject->Detach(&busy);
        subject->Attach(&late, "late");
        ending.reset();
    });
    series->Detach(ending.get());
    series->Attach(&busy, "busy");
    series->Attach(ending.get(), "ending");
    series->AddData(8, 8);
    EXPECT_EQ(busy.updates, 2);
    EXPECT_EQ(late.updates, 1);
    series->AddData(9, 9);
    EXPECT_EQ(busy.updates, 2);
    EXPECT_EQ(late.updates, 2);

    late.act = [&](kelvo::Subject*) { series.reset(); };
    series->Attach(&last, "behind");
    series->Notify();
    EXPECT_EQ(last.updates, 1) << "the subject ended before its turn came";
}

TEST(AritmetricSource, CombinesTheNewestValuesAtTheXOfTheFirst) {
    COnlinePublishSource a("a", 2, 10, 4, 1);
    COnlinePublishSource b("b", 1, 1, 4, 1);
    COnlinePublishSource other("other", 1, 1, 4, 1);
    {
        COnlineAritmetricSource combined("c", 100, 10, 9, 1);
        EXPECT_FALSE(combined.AddOperand(&a, 2));
        EXPECT_TRUE(combined.AddOperand(&a, 0));
        a.AddData(4, 5);
        EXPECT_TRUE(combined.AddOperand(&other, 1));
        EXPECT_TRUE(combined.AddOperand(&b, 1));
        EXPECT_EQ(combined.GetCount(), 0) << "no second operand, and then none with a sample";
        combined.SetOperationType(OPERATION_ADD);
        b.AddData(1, 2);  // A newest stored y 50
        combined.SetOperationType(OPERATION_SUBTRACT);
        a.AddData(5, 6);
        combined.SetOperationType(static_cast<operationtype>(7));
        a.AddData(9, 9);
        other.AddData(1, 1);
        EXPECT_EQ(SamplesOf(combined), (Points{{400, 70}, {500, 40}}));
    }
    a.AddData(1, 1);  // nobody listens any more
}

TEST(DataAcqSource, CorrectsAndCombinesWithItsReferences) {
    KDataAcqSource series("gauge", 1, 100, 9, 1);
    series.setInvertY(true);
    series.setFixedOffsetY(2.0);
    EXPECT_TRUE(series.AddData(0, 1.5));
    EXPECT_EQ(SamplesOf(series).back(), CPoint(0, 50));
    series.setInvertX(true);
    series.setFixedOffsetX(-0.5);
    series.AddData(1, 2.125);
    EXPECT_EQ(SamplesOf(series).back(), CPoint(-2, -13)) << "half away from zero";

    const struct {
        Points reference;
        double x;
        LONG expected;
    } cases[] = {{{{0, 1}, {10, 2}, {20, 3}}, 15, 3},
                 {{{0, 1}, {10, 2}, {20, 3}}, 25, 3},
                 {{{0, 1}, {10, 2}, {20, 3}}, 10, 2},
                 {{{0, 1}, {10, 2}, {20, 3}}, -5, 1},
                 {{{20, 3}, {10, 2}, {0, 1}}, 15, 2},
                 {{{20, 3}, {10, 2}, {0, 1}}, -1, 1},
                 {{{5, 7}}, 99, 7},
                 {{}, 1, 0},
                 {{{0, kMax}, {10, kMax}}, 1, kMax}};
    for (const auto& one : cases) {
        KPointSource reference("r", 1, 1, "", "", 0, 1);
        for (const CPoint& point : one.reference) reference.push_back(point);
        KDataAcqSource live("gauge", 1, 1, 9, 1);
        live.Add(&reference);
        live.Add(nullptr);
        live.AddData(one.x, 0);
        EXPECT_EQ(SamplesOf(live).back().y, one.expected) << one.x;
        live.Subtract(&reference);
        live.AddData(one.x, 4);
        EXPECT_EQ(SamplesOf(live).back().y, 4) << "what is added and subtracted cancels";
        live.Remove(&reference);
        EXPECT_TRUE(live.getSubtract().empty());
        live.AddData(one.x, 5);
        EXPECT_EQ(SamplesOf(live).back().y, 5);
    }
}

TEST(DataAcqSource, RefusesBatchesWithAMessage) {
    std::string message;
    const MessageBoxHandler before = SetMessageBoxHandler([&](const char* text, UINT) {
        message = text;
        return IDOK;
    });
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(KDataAcqSource)->CreateObject());
    auto& series = dynamic_cast<KDataAcqSource&>(*made);
    Points batch = Diagonal(1, 2);
    EXPECT_FALSE(series.AddData(batch.data(), 2));
    EXPECT_EQ(message, "Ooops, not implemented yet!!");
    EXPECT_TRUE(series.IsKindOf(RUNTIME_CLASS(COnlineSource)));
    SetMessageBoxHandler(before);
}

}  // namespace
