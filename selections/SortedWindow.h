// A window of samples in sorted order: an array, in which a sample that comes moves those above it. Quicker
// than RankedWindow up to some thousand samples.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace selections {

class SortedWindow {
  public:
    // An empty window for samples of this block, which has to outlive it. Throws std::bad_alloc.
    SortedWindow(std::span<const std::int32_t> block, std::size_t capacity) : block_(block) {
        sorted_.reserve(std::min(capacity, block.size()));
    }

    long Size() const { return static_cast<long>(sorted_.size()); }
    std::int64_t At(long rank) const { return sorted_[static_cast<std::size_t>(rank)]; }
    // The samples at these positions of the block come and go.
    void Add(long position) { sorted_.insert(Place(Sample(position)), Sample(position)); }
    void Remove(long position) { sorted_.erase(Place(Sample(position))); }
    // Both at once, moving only the samples between the two.
    void Replace(long goes, long comes) {
        const std::int32_t sample = Sample(comes);
        const auto from = Place(Sample(goes));
        if (sample > *from) {
            const auto to = std::lower_bound(from + 1, sorted_.end(), sample);
            std::move(from + 1, to, from);
            *(to - 1) = sample;
        } else {
            const auto to = std::upper_bound(sorted_.begin(), from, sample);
            std::move_backward(to, from, from + 1);
            *to = sample;
        }
    }

  private:
    std::int32_t Sample(long position) const { return block_[static_cast<std::size_t>(position)]; }
    std::vector<std::int32_t>::iterator Place(std::int32_t sample) {
        return std::lower_bound(sorted_.begin(), sorted_.end(), sample);
    }

    std::span<const std::int32_t> block_;
    std::vector<std::int32_t> sorted_;
};

}  // namespace selections
