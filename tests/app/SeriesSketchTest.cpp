#include <gtest/gtest.h>

#include <cmath>

#include "app/workbench/SeriesSketch.h"

namespace app {
namespace {

// Every value lies in the range of its row, whatever portions the rows come in; ranges hold nothing else.
TEST(SeriesSketch, RangesHoldTheExtremesOfTheirRows) {
    for (const std::size_t rows : {0u, 1u, 2048u, 2049u, 100000u}) {
        Table table;
        table.columns.resize(1);
        auto& values = table.columns[0].values;
        SeriesSketch sketch;
        for (std::size_t row = 0; row < rows; ++row) {
            values.Add(row % 5 == 4 ? kMissing : std::sin(double(row) / 700) * double(row), 17);
            if (row % 997 == 0) sketch.Follow(table);
        }
        sketch.Follow(table);
        const auto& ranges = sketch.Ranges();
        ASSERT_LE(ranges.size(), SeriesSketch::kMostRanges);
        if (rows == 0) continue;
        ASSERT_GT(ranges.size(), 0u);
        std::size_t each = 1;
        while (each * SeriesSketch::kMostRanges < rows) each *= 2;
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            SeriesSketch::Range expected;
            for (std::size_t row = i * each; row < std::min(rows, (i + 1) * each); ++row) {
                if (!HasValue(values[row])) continue;
                expected.low = std::min(expected.low, values[row]);
                expected.high = std::max(expected.high, values[row]);
            }
            EXPECT_EQ(ranges[i].low, expected.low) << rows << " rows, range " << i;
            EXPECT_EQ(ranges[i].high, expected.high) << rows << " rows, range " << i;
        }
    }
}

}  // namespace
}  // namespace app
