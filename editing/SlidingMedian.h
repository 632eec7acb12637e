// A window that slides over a block of samples and knows its WindowMedian.
//
// The block is sorted once, equal samples by position, so that every sample has a rank of its own. The window
// is the set of its samples' ranks; a cursor stands on the m-th smallest, m = n / 2, and moves by a step or
// two for each sample that comes or goes. The m-th smallest and the one or two ranks after it hold all values
// that may be the answer. The earliest sample of the middle or the upper value is the one at that rank,
// unless the value below is the same; the earliest of the lower value may have a lower rank, so each run of
// equal samples keeps its earliest one in the window. (Sorting blocks first: J. Suomela, Median Filtering is
// Equivalent to Sorting, 2014; a bitmap of ranks takes the place of the linked lists there.)
#pragma once

#include <cstdint>
#include <vector>

#include "editing/RankSet.h"

class SlidingMedian {
  public:
    // For blocks of up to `capacity` samples. Throws std::bad_alloc.
    explicit SlidingMedian(std::uint32_t capacity);

    // Takes a block of `count` samples, at least one, which must outlive its use here; the window is its
    // first sample.
    void Load(const int* samples, std::uint32_t count);

    std::uint32_t Begin() const { return begin_; }
    std::uint32_t End() const { return end_; }
    // Lets the sample behind the window come in.
    void Add() {
        const std::uint32_t rank = ranks_[end_++];
        window_.Insert(rank);
        below_ += rank < cursor_;
    }
    // Lets the first sample of the window go: one at most after each Median(), and that of three samples or
    // more.
    void Drop();
    // The WindowMedian of the window, which holds two samples or more.
    int Median();

  private:
    // The run of equal samples that starts at a rank, or to which a rank belongs.
    struct Run {
        std::uint32_t start;     // its lowest rank
        std::uint32_t earliest;  // kept at the start only: its lowest rank in the window
    };

    void Sort(std::uint32_t count);
    std::uint32_t PositionAt(std::uint32_t rank) const { return static_cast<std::uint32_t>(sorted_[rank]); }

    const int* samples_ = nullptr;
    std::uint32_t begin_ = 0;
    std::uint32_t end_ = 0;
    std::uint32_t cursor_ = 0;           // a rank in the window
    std::uint32_t below_ = 0;            // how many ranks of the window are lower
    std::vector<std::uint64_t> sorted_;  // by rank: the sample above the block's least << 32 | its position
    std::vector<std::uint64_t> spare_;   // the other side of the sort
    std::vector<std::uint32_t> ranks_;   // by position
    std::vector<Run> runs_;              // by rank
    RankSet window_;
};
