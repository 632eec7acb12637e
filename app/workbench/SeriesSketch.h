// The course of a table's first value column in a few hundred ranges, kept up while rows come in: what can be
// shown of a file that is still being read. A range stands for equally many rows; when there are too many
// ranges, neighbours join.
#pragma once

#include <cstdint>
#include <vector>

#include "app/table/Table.h"

namespace app {

class SeriesSketch {
  public:
    struct Range {
        double low = 1e300;
        double high = -1e300;
        bool IsEmpty() const { return low > high; }
    };
    static constexpr std::size_t kMostRanges = 2048;

    // Takes the rows that have come in since the last call.
    void Follow(const Table& table);

    const std::vector<Range>& Ranges() const { return ranges_; }
    // Of all of them; empty without a value.
    const Range& Whole() const { return whole_; }

  private:
    void Add(std::int64_t row, double value);
    void Halve();

    std::int64_t rows_ = 0;
    std::int64_t rowsPerRange_ = 1;
    std::vector<Range> ranges_;
    Range whole_;
};

}  // namespace app
