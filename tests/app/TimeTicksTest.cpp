#include "app/workbench/TimeTicks.h"

#include <gtest/gtest.h>

namespace app {
namespace {

Microseconds At(const char* text) {
    ReadTime time;
    EXPECT_TRUE(ReadIsoTime(text, time)) << text;
    return time.at;
}

// With what they leave out where it changes.
std::string Labels(double leastSeconds, const char* from, const char* to) {
    const TimeStep step = TimeStepFor(leastSeconds);
    std::string labels;
    std::string before;
    for (const Microseconds at : TimesAt(step, At(from), At(to))) {
        labels += (labels.empty() ? "" : " ") + TimeTickText(at, step);
        const std::string context = TimeTickContext(at, step);
        if (context != before) labels += "/" + context;
        before = context;
    }
    return labels;
}

TEST(TimeTicks, StandAtRoundTimesOfTheCalendarAndSayWhatTheStepNeeds) {
    const struct {
        double leastSeconds;
        const char* from;
        const char* to;
        const char* labels;
    } cases[] = {
        {0.003, "2024-03-01T10:00:00.002", "2024-03-01T10:00:00.011", "10:00:00.005/2024-03-01 10:00:00.010"},
        {0.3, "2024-03-01T10:00:00.2", "2024-03-01T10:00:01", "10:00:00.5/2024-03-01 10:00:01.0"},
        {20, "2024-03-01T23:59:10", "2024-03-02T00:00:40",
         "23:59:30/2024-03-01 00:00:00/2024-03-02 00:00:30"},
        {300.5, "2024-03-01T10:01", "2024-03-01T10:21", "10:10/2024-03-01 10:20"},
        {4 * 3600, "2024-03-01T05:00", "2024-03-02T07:00",
         "06:00/2024-03-01 12:00 18:00 00:00/2024-03-02 06:00"},
        {80000, "2023-12-30T01:00", "2024-01-01T00:00", "12-31/2023 01-01/2024"},
        // Mondays.
        {3 * 86400, "2024-03-01", "2024-03-18", "03-04/2024 03-11 03-18"},
        // Months and years differ in length.
        {20 * 86400, "2024-01-15", "2024-04-01", "2024-02 2024-03 2024-04"},
        {80 * 86400, "2023-11-15", "2024-08-01", "2024-01 2024-04 2024-07"},
        {300 * 86400, "2021-06-01", "2024-01-01", "2022 2023 2024"},
        {3e8, "1955-01-01", "1990-01-01", "1960 1970 1980 1990"},
    };
    for (const auto& one : cases) EXPECT_EQ(Labels(one.leastSeconds, one.from, one.to), one.labels);
}

TEST(TimeTicks, AreNeverMoreThanAPlotCanHold) {
    EXPECT_EQ(TimesAt({1, 0}, 0, 3600 * kSecond).size(), 1000u);
    EXPECT_TRUE(TimesAt({0, 0}, 0, kSecond).empty());
    EXPECT_TRUE(TimesAt({kSecond, 0}, kSecond, 0).empty());
}

TEST(TimeTicks, ReadOutsHaveThePrecisionOfAPixel) {
    const Microseconds at = At("2024-03-01T10:05:31.256");
    EXPECT_EQ(TimeReadOut(at, 400), "2024-03-01 10:06");
    EXPECT_EQ(TimeReadOut(at, 3), "2024-03-01 10:05:31");
    EXPECT_EQ(TimeReadOut(at, 0.02), "2024-03-01 10:05:31.26");
    EXPECT_EQ(TimeReadOut(At("1969-12-31T23:59:59.9"), 1), "1970-01-01 00:00:00");
}

}  // namespace
}  // namespace app
