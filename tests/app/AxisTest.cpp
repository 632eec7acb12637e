#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "app/table/AxisScale.h"
#include "app/table/CellNumber.h"
#include "app/table/Duration.h"
#include "app/table/TableReader.h"

namespace app {
namespace {

TEST(NumberText, CountsAndKeepsDecimals) {
    const struct {
        const char* text;
        int decimals;
    } cases[] = {{"1", 0},      {"1.50", 2}, {"-0.001", 3}, {"1.5e-3", 4}, {"1e-3", 3},
                 {"1.5e+1", 0}, {"1e5", 0},  {"2.", 0},     {".5", 1},     {"1.23E1", 1}};
    for (const auto& one : cases) EXPECT_EQ(DecimalsOf(one.text, '.'), one.decimals) << one.text;
    EXPECT_EQ(NumberText(-0.0004, 3), "0.000");
    EXPECT_EQ(NumberText(-2.5, 2, ','), "-2,50");
    EXPECT_EQ(Counted(1, "row"), "1 row");
    EXPECT_EQ(Counted(1234567, "row"), "1,234,567 rows");
    EXPECT_EQ(Grouped(-1234), "-1,234");
}

TEST(TimeText, WritesWhatItReads) {
    for (const char* text : {"2024-02-29T23:59:59.25", "1582-10-15T00:00:00", "0001-01-01T00:00:00",
                             "9999-12-31T23:59:59.999999"}) {
        ReadTime time;
        ASSERT_TRUE(ReadIsoTime(text, time)) << text;
        EXPECT_EQ(IsoText(time.at, false), text);
    }
    for (const char* text :
         {"2024-13-01", "2024-01-01T", "2024-01-01T25:00", "2024-01-01T24:01", "2024-01-01T12", "2024-01/01",
          "2024-01-01T12:00:00.", "2024-01-01T12:00+1", "2024-1-32", "2024-01-01x"}) {
        ReadTime time;
        EXPECT_FALSE(ReadIsoTime(text, time)) << text;
    }
    EXPECT_EQ(DurationText(300), "5 min");
    EXPECT_EQ(DurationText(5400), "1 h 30 min");
    EXPECT_EQ(DurationText(86400), "1 d");
    EXPECT_EQ(DurationText(36.5), "36.5 s");
    EXPECT_EQ(ReadDuration("1.5h"), 5400);
    EXPECT_EQ(ReadDuration("15min"), 900);
    EXPECT_EQ(ReadDuration("h"), std::nullopt);
}

TEST(AxisScale, KeepsValuesExactlyWhere32BitsCan) {
    const struct {
        const char* about;
        std::vector<double> values;
        int written;
        bool exact;
        int decimals;
    } cases[] = {
        {"plain decimals", {1.25, -3.1, 0}, 2, true, 2},
        {"thousandths of large numbers, near each other", {1e9 + 0.125, 1e9 + 0.25}, 3, true, 3},
        {"whole 64-bit counters", {1700000000123.0, 1700000000999.0}, 0, true, 0},
        {"more digits than fit", {74.93588199999998, 73.9, 108.51}, 14, false, 7},
        {"far apart", {1e12, 3}, 0, false, -3},
        {"huge", {1e300, -1e300}, 0, false, -291},
        {"widest doubles",
         {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()},
         0,
         false,
         -300},
        {"tiny", {4e-320, 1e-310}, 320, false, 22},
        {"nothing", {kMissing, kUnreadable}, 0, true, 0},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.about);
        const AxisScale scale = ScaleForValues(one.values, one.written, false);
        const Exactness exactness = Examine(scale, one.values);
        EXPECT_EQ(exactness.inexact == 0, one.exact);
        EXPECT_EQ(scale.Decimals(), one.decimals);
        for (const double value : one.values) {
            if (!HasValue(value)) continue;
            EXPECT_LE(std::fabs(scale.Real(scale.Stored(value)) - value), 0.5000001 / scale.Scale());
        }
    }
}

TEST(AxisScale, CountsTimesFromTheFirst) {
    const auto times = [](std::initializer_list<const char*> texts) {
        std::vector<Microseconds> all;
        for (const char* text : texts) {
            ReadTime time;
            EXPECT_TRUE(ReadIsoTime(text, time));
            all.push_back(time.at);
        }
        return all;
    };
    const struct {
        std::vector<Microseconds> times;
        int decimals;
        std::int64_t inexact;
    } cases[] = {{times({"2024-01-01T00:00:00.5", "2024-01-01T00:00:01.5"}), 0, 0},
                 {times({"2024-01-01T00:00:00", "2024-01-01T00:00:00.125"}), 3, 0},
                 {times({"1000-01-01", "2024-01-01"}), -2, 0},
                 {times({"2020-01-01", "2024-01-01T00:00:00.125"}), 1, 1}};
    for (const auto& one : cases) {
        const AxisScale scale = ScaleForTimes(one.times);
        EXPECT_EQ(scale.Decimals(), one.decimals);
        EXPECT_EQ(scale.StoredTime(one.times[0]), 0);
        EXPECT_EQ(Examine(scale, one.times).inexact, one.inexact);
    }
}

}  // namespace
}  // namespace app
