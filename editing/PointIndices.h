// The points that a command concerns, in the order given, kept as runs of consecutive indices: "all points",
// or a selection of whole stretches, costs a few bytes however long the series is. An index that stands alone
// costs 16 bytes.
#pragma once

#include <vector>

class PointIndices {
  public:
    PointIndices() = default;
    // 0 ... count - 1; none when count is not positive.
    static PointIndices First(long count);
    // A copy of the `count` indices, whatever their order.
    PointIndices(const long* indices, long count);

    long GetCount() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }
    // Those within 0 ... pointCount - 1, ascending and each once, as the routines on arrays want them. May
    // throw std::bad_alloc.
    std::vector<long> Within(long pointCount) const;

  private:
    struct Run {
        long first;
        long count;
    };
    std::vector<Run> runs_;
    long count_ = 0;
};

// Whether the `count` indices ascend strictly and lie within 0 ... pointCount - 1.
bool AreAscendingWithin(const long* indices, long count, long pointCount);
