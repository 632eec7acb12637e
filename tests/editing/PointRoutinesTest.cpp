#include "editing/PointRoutines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "editing/PointMarks.h"
#include "sources/PointStatus.h"
#include "tests/core/Limits.h"

namespace {

constexpr unsigned short kMoved = PS_MOVED | PS_EDITED;

// Points with the y given at x 0, 5, 10, ...; guard words behind the arrays catch a write past the end.
struct Series {
    std::vector<CPoint> data;
    std::vector<unsigned short> status;
    std::vector<int> rejection;
    int count;

    explicit Series(const std::vector<LONG>& ys) : count(static_cast<int>(ys.size())) {
        for (const LONG y : ys) data.emplace_back(static_cast<LONG>(data.size()) * 5, y);
        data.emplace_back(77, 77);
        status.assign(data.size(), PS_SPIKE);
        rejection.assign(data.size(), 1);
    }
    std::vector<LONG> Ys() const {
        std::vector<LONG> ys;
        for (int i = 0; i < count; ++i) ys.push_back(data[static_cast<std::size_t>(i)].y);
        return ys;
    }
    std::vector<int> Marked() const {
        std::vector<int> marked;
        for (std::size_t i = 0; i < status.size(); ++i) {
            const bool full = status[i] == (PS_SPIKE | kMoved) && rejection[i] == (1 | REJECT_MOVED);
            EXPECT_TRUE(full || (status[i] == PS_SPIKE && rejection[i] == 1)) << i;
            if (full) marked.push_back(static_cast<int>(i));
        }
        return marked;
    }
};

using Ys = std::vector<LONG>;
using Marks = std::vector<int>;

TEST(PointRoutines, ScaleMethodsFollowTheirRulesAndRoundHalvesAway) {
    Series custom({101, -101});
    EXPECT_EQ(CustomScale(custom.data.data(), 2, nullptr, 2, 50, 0, nullptr, nullptr, 0), 1);
    EXPECT_EQ(custom.Ys(), (Ys{152, -152}));

    Series ramp({0, 0, 0, 9});
    EXPECT_EQ(RampScale(ramp.data.data(), 4, nullptr, 3, 100, ramp.status.data(), ramp.rejection.data(),
                        REJECT_MOVED),
              1);
    EXPECT_EQ(ramp.Ys(), (Ys{0, 50, 100, 9}));
    EXPECT_EQ(ramp.Marked(), (Marks{0, 1, 2}));

    Series drift({200, 200, -200});
    const long listed[] = {0, 1, 2};
    EXPECT_EQ(DriftScale(drift.data.data(), 3, listed, 3, 10, nullptr, nullptr, 0), 1);
    EXPECT_EQ(drift.Ys(), (Ys{200, 210, -220}));
}

TEST(PointRoutines, RampAndDriftOverOnePositionKeepTheValuesAndMark) {
    for (const bool ramp : {true, false}) {
        Series s({3, 4, 5});
        for (CPoint& point : s.data) point.x = 7;
        const auto routine = ramp ? RampScale : DriftScale;
        EXPECT_EQ(
            routine(s.data.data(), 3, nullptr, 3, 100, s.status.data(), s.rejection.data(), REJECT_MOVED), 1);
        EXPECT_EQ(s.Ys(), (Ys{3, 4, 5}));
        EXPECT_EQ(s.Marked(), (Marks{0, 1, 2}));
    }
}

TEST(PointRoutines, TranslationSaturatesForAmountsOfAnySize) {
    const struct {
        long dy;
        Ys expected;
    } cases[] = {{1, {kMin + 1, 0, kMax}},
                 {4294967295L, {kMax, kMax, kMax}},
                 {4294967294L, {kMax - 1, kMax, kMax}},
                 {-3000000000L, {kMin, kMin, -852516353}},
                 {std::numeric_limits<long>::max(), {kMax, kMax, kMax}},
                 {std::numeric_limits<long>::min(), {kMin, kMin, kMin}}};
    for (const auto& one : cases) {
        Series s({kMin, -1, kMax});
        EXPECT_EQ(TranslatePoints(s.data.data(), 3, nullptr, 3, 2, one.dy, 0, nullptr, nullptr, 0), 1);
        EXPECT_EQ(s.Ys(), one.expected) << one.dy;
        EXPECT_EQ(s.data[0].x, 2);
    }
}

TEST(PointRoutines, ModesCoverListedOrOtherPointsAndForeignIndicesAreHarmless) {
    const struct {
        std::vector<long> indices;
        int mode;
        Marks covered;
    } cases[] = {{{1, 2, 4}, 1, {1, 2, 4}},
                 {{1, 2, 4}, 0, {0, 3}},
                 {{0, 1, 2, 3, 4}, 0, {}},
                 {{1, 2, 4}, 2, {}},
                 {{-1, 0, 5, 99}, 1, {0}},
                 {{-1, 0, 5, 99}, 0, {1, 2, 3, 4}},
                 {{3, 1, 3, 3, 4}, 1, {1, 3, 4}},
                 {{3, 3, 4}, 0, {0, 1, 2}},
                 {{std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}, 1, {}}};
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& one = cases[i];
        Series s({1, 2, 3, 4, 5});
        EXPECT_EQ(TranslatePoints(s.data.data(), 5, one.indices.data(), static_cast<int>(one.indices.size()),
                                  0, 10, one.mode, s.status.data(), s.rejection.data(), REJECT_MOVED),
                  1);
        EXPECT_EQ(s.Marked(), one.covered) << "case " << i;
        for (int k = 0; k < 5; ++k) {
            const bool covered = std::count(one.covered.begin(), one.covered.end(), k) > 0;
            EXPECT_EQ(s.Ys()[static_cast<std::size_t>(k)] > 10, covered) << "case " << i << " point " << k;
        }
    }
    Series s({1});
    const long none[] = {0};
    EXPECT_EQ(TranslatePoints(nullptr, 1, none, 1, 1, 1, 1, nullptr, nullptr, 0), 0);
    EXPECT_EQ(TranslatePoints(s.data.data(), 1, none, 0, 1, 1, 0, s.status.data(), nullptr, 0), 0);
    EXPECT_EQ(CustomScale(s.data.data(), 1, nullptr, 99, 100, 0, nullptr, nullptr, 0), 1);
    EXPECT_EQ(s.data[0].y, 2);
    EXPECT_EQ(s.data[1], CPoint(77, 77));
    const long foreign[] = {-5, 3};
    EXPECT_EQ(RampScale(s.data.data(), 1, foreign, 2, 5, s.status.data(), nullptr, 0), 1);
    EXPECT_EQ(s.data[0].y, 2);
}

// The vectorised loops against RoundHalfAway itself, at run lengths around the width of the vectors.
TEST(PointRoutines, EveryValueIsRoundedAsTheOneRoundingDoes) {
    std::mt19937 random(5);
    const double factors[] = {0.5, -0.5, 1e-300, 1e300, kInfinity, -kInfinity, kNaN,
                              0.0, -0.0, 1.0,    0.1,   -2.5,      1.0000001,  4e9};
    const double origins[] = {0.0, 0.25, -1e10, kInfinity, 2147483647.5, -2147483648.5, 0.49999999999999994};
    for (const double factor : factors) {
        for (const double origin : origins) {
            Ys ys = {0, 1, -1, 3, -3, kMin, kMax, kMin + 1, kMax - 1};
            while (ys.size() < 9 + random() % 40) ys.push_back(static_cast<LONG>(random()));
            Series s(ys);
            ScaleWithOffset(s.data.data(), s.count, nullptr, s.count, factor, origin, 1, nullptr, nullptr, 0);
            for (LONG& y : ys) y = RoundHalfAway(origin + (y - origin) * factor);
            EXPECT_EQ(s.Ys(), ys) << factor << " " << origin;
        }
    }
}

TEST(PointRoutines, MethodNamesAreListedByGroup) {
    EXPECT_STREQ(GetMethodName(3, 1), "Custom scale (KI) (y1 = y + (y - offset)*P/100)");
    for (const auto& [index, group] : {std::pair<short, int>{4, 1}, {-1, 1}, {1, 0}, {0, 3}})
        EXPECT_STREQ(GetMethodName(index, group), "Error Nothing found!!");
    EXPECT_EQ(GetMethodCount(1), 4);
    EXPECT_EQ(GetMethodCount(3), 0);
}

TEST(PointMarks, RandomListsMarkInsideOrOutsideAndReportIt) {
    std::mt19937 random(9);
    for (int round = 0; round < 200; ++round) {
        const long count = static_cast<long>(random() % 40);
        std::set<long> listed;
        for (unsigned i = random() % 30; i > 0 && count > 0; --i)
            listed.insert(static_cast<long>(random()) % count);
        const std::vector<long> indices(listed.begin(), listed.end());
        for (const bool inside : {true, false}) {
            std::vector<unsigned short> status(static_cast<std::size_t>(count) + 1, PS_MOVED);
            std::vector<int> rejection(status.size(), 2);
            const int changed = MarkPoints(count, indices.data(), static_cast<long>(indices.size()), inside,
                                           status.data(), PS_DELETED, rejection.data(), 8);
            for (long i = 0; i <= count; ++i) {
                const bool marks = i < count && (listed.count(i) > 0) == inside;
                EXPECT_EQ(status[static_cast<std::size_t>(i)],
                          PS_MOVED | (marks ? PS_DELETED | PS_EDITED : 0));
                EXPECT_EQ(rejection[static_cast<std::size_t>(i)], marks ? 10 : 2);
            }
            const long covered =
                static_cast<long>(inside ? listed.size() : static_cast<std::size_t>(count) - listed.size());
            EXPECT_EQ(changed, covered > 0);
        }
    }
    EXPECT_EQ(MarkPoints(3, nullptr, 0, false, nullptr, PS_DELETED, nullptr, 0), 0);
}

}  // namespace
