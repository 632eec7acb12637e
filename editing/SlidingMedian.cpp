#include "editing/SlidingMedian.h"

#include <algorithm>
#include <array>
#include <bit>

namespace {

constexpr int kDigitBits = 11;
constexpr int kKeyShift = 32;

// One pass of a radix sort, stable.
void SortByDigit(const std::uint64_t* from, std::uint64_t* to, std::uint32_t count, int shift, int bits) {
    std::array<std::uint32_t, 1 << kDigitBits> starts;
    const std::uint64_t mask = (1u << bits) - 1;
    std::fill_n(starts.begin(), mask + 1, 0u);
    for (std::uint32_t i = 0; i < count; ++i) ++starts[(from[i] >> shift) & mask];
    std::uint32_t start = 0;
    for (std::uint64_t digit = 0; digit <= mask; ++digit) {
        const std::uint32_t size = starts[digit];
        starts[digit] = start;
        start += size;
    }
    for (std::uint32_t i = 0; i < count; ++i) to[starts[(from[i] >> shift) & mask]++] = from[i];
}

}  // namespace

SlidingMedian::SlidingMedian(std::uint32_t capacity)
    : sorted_(capacity), spare_(capacity), ranks_(capacity), runs_(capacity), window_(capacity) {}

void SlidingMedian::Load(const int* samples, std::uint32_t count) {
    samples_ = samples;
    Sort(count);
    std::uint32_t start = 0;
    for (std::uint32_t rank = 0; rank < count; ++rank) {
        if (sorted_[rank] >> kKeyShift != sorted_[start] >> kKeyShift) start = rank;
        runs_[rank] = {start, start};
        ranks_[PositionAt(rank)] = rank;
    }
    window_.Clear();
    window_.Insert(ranks_[0]);
    begin_ = 0;
    end_ = 1;
    cursor_ = ranks_[0];
    below_ = 0;
}

void SlidingMedian::Sort(std::uint32_t count) {
    const auto [least, greatest] = std::minmax_element(samples_, samples_ + count);
    const auto base = static_cast<std::uint32_t>(*least);
    for (std::uint32_t i = 0; i < count; ++i) {
        sorted_[i] = std::uint64_t{static_cast<std::uint32_t>(samples_[i]) - base} << kKeyShift | i;
    }
    const int keyBits = std::bit_width(static_cast<std::uint32_t>(*greatest) - base);
    const int passes = (keyBits + kDigitBits - 1) / kDigitBits;
    for (int pass = 0; pass < passes; ++pass) {
        const int bits = (keyBits + passes - 1) / passes;
        SortByDigit(sorted_.data(), spare_.data(), count, kKeyShift + pass * bits, bits);
        sorted_.swap(spare_);
    }
}

void SlidingMedian::Drop() {
    const std::uint32_t rank = ranks_[begin_++];
    // The window loses its samples in order, so this was the earliest of its run.
    runs_[runs_[rank].start].earliest = rank + 1;
    if (rank == cursor_) {
        cursor_ = window_.Next(cursor_);
    } else {
        below_ -= rank < cursor_;
    }
    window_.Erase(rank);
}

int SlidingMedian::Median() {
    const std::uint32_t size = end_ - begin_;
    const std::uint32_t wanted = size / 2 - 1;
    for (; below_ < wanted; ++below_) cursor_ = window_.Next(cursor_);
    for (; below_ > wanted; --below_) cursor_ = window_.Previous(cursor_);
    const std::uint32_t middle = window_.Next(cursor_);
    const std::uint32_t lower = runs_[runs_[cursor_].start].earliest;
    std::uint32_t first = std::min(PositionAt(lower), PositionAt(middle));
    if (size % 2 != 0) first = std::min(first, PositionAt(window_.Next(middle)));
    return samples_[first];
}
