#include "app/workbench/SeriesSketch.h"

#include <algorithm>

namespace app {

namespace {

void Widen(SeriesSketch::Range& range, double low, double high) {
    range.low = std::min(range.low, low);
    range.high = std::max(range.high, high);
}

}  // namespace

void SeriesSketch::Follow(const Table& table) {
    if (table.columns.empty()) return;
    const auto& values = table.columns.front().values;
    const auto end = static_cast<std::int64_t>(values.size());
    for (; rows_ < end; ++rows_) Add(rows_, values[static_cast<std::size_t>(rows_)]);
}

void SeriesSketch::Add(std::int64_t row, double value) {
    if (row / rowsPerRange_ >= static_cast<std::int64_t>(kMostRanges)) Halve();
    ranges_.resize(static_cast<std::size_t>(row / rowsPerRange_) + 1);
    if (!HasValue(value)) return;
    Widen(ranges_.back(), value, value);
    Widen(whole_, value, value);
}

void SeriesSketch::Halve() {
    for (std::size_t i = 0; i < ranges_.size(); ++i) {
        const Range range = ranges_[i];
        if (i % 2 == 0)
            ranges_[i / 2] = range;
        else
            Widen(ranges_[i / 2], range.low, range.high);
    }
    ranges_.resize((ranges_.size() + 1) / 2);
    rowsPerRange_ *= 2;
}

}  // namespace app
