#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "sources/CKelvoStat.h"

namespace {

CKelvoStat StatOf(const std::vector<double>& values) {
    CKelvoStat stat;
    for (const double value : values) stat.Add(value);
    return stat;
}

TEST(KelvoStat, ReadsZeroUntilValuesCome) {
    CKelvoStat stat;
    EXPECT_EQ(stat.GetCount(), 0);
    EXPECT_EQ(stat.GetMean(), 0);
    EXPECT_EQ(stat.GetStdDev(true), 0);
    EXPECT_FALSE(stat.Add(-5));
    EXPECT_EQ(stat.GetMin(), -5);
    EXPECT_EQ(stat.GetMax(), -5);
    EXPECT_EQ(stat.GetConfidence95(), 0);
    EXPECT_TRUE(stat.Add(-5));
}

TEST(KelvoStat, OneTwoThreeAndAgainAfterReset) {
    CKelvoStat stat = StatOf({100, -100});
    stat.Reset();
    EXPECT_EQ(stat.GetCount(), 0);
    for (const double value : {1, 2, 3}) stat.Add(value);
    EXPECT_DOUBLE_EQ(stat.GetMean(), 2);
    EXPECT_EQ(stat.GetMin(), 1);
    EXPECT_EQ(stat.GetMax(), 3);
    EXPECT_DOUBLE_EQ(stat.GetStdDev(false), std::sqrt(2.0 / 3));
    EXPECT_DOUBLE_EQ(stat.GetStdDev(true), 1);
    EXPECT_DOUBLE_EQ(stat.GetConfidence95(), 1.96);
}

// Against two passes in a wider type; data far from zero would lose all digits of a plain sum of squares.
TEST(KelvoStat, AgreesWithTwoPassesHoweverFarFromZero) {
    for (const double offset : {0.0, -3e5, 2e9, 1e12}) {
        std::mt19937 random(11);
        std::normal_distribution<double> noise(0.0, 2.5);
        std::vector<double> values;
        for (int i = 0; i < 20000; ++i) values.push_back(offset + noise(random));
        long double mean = 0;
        for (const double value : values) mean += static_cast<long double>(value) / values.size();
        long double squares = 0;
        for (const double value : values) squares += (value - mean) * (value - mean);
        const CKelvoStat stat = StatOf(values);
        EXPECT_NEAR(stat.GetMean(), static_cast<double>(mean), 1e-9 + std::fabs(offset) * 1e-15) << offset;
        EXPECT_NEAR(stat.GetStdDev(false), std::sqrt(static_cast<double>(squares / 20000)), 1e-9) << offset;
        EXPECT_NEAR(stat.GetStdDev(true), std::sqrt(static_cast<double>(squares / 19999)), 1e-9) << offset;
        EXPECT_EQ(stat.GetMin(), *std::min_element(values.begin(), values.end()));
        EXPECT_EQ(stat.GetMax(), *std::max_element(values.begin(), values.end()));
    }
}

TEST(KelvoStat, EqualValuesNeverGiveTheRootOfANegative) {
    const CKelvoStat stat = StatOf(std::vector<double>(1000, 0.1));
    EXPECT_EQ(stat.GetStdDev(false), 0);
    const CKelvoStat nearlyEqual = StatOf({0.1, 0.1 + 1e-17, std::nextafter(0.1, 1), std::nextafter(0.1, 1)});
    EXPECT_GE(nearlyEqual.GetStdDev(true), 0);
}

}  // namespace
