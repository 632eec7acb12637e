// A window of samples in sorted order: an array, in which a sample that comes moves those above it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace selections {

class SortedWindow {
  public:
    explicit SortedWindow(std::size_t capacity) { samples_.reserve(capacity); }

    long Size() const { return static_cast<long>(samples_.size()); }
    std::int64_t At(long rank) const { return samples_[static_cast<std::size_t>(rank)]; }
    void Add(std::int32_t sample) { samples_.insert(Place(sample), sample); }
    void Remove(std::int32_t sample) { samples_.erase(Place(sample)); }
    // Remove and Add, moving only the samples between the two.
    void Replace(std::int32_t old, std::int32_t sample) {
        const auto from = Place(old);
        if (sample > old) {
            const auto to = std::lower_bound(from + 1, samples_.end(), sample);
            std::move(from + 1, to, from);
            *(to - 1) = sample;
        } else {
            const auto to = std::upper_bound(samples_.begin(), from, sample);
            std::move_backward(to, from, from + 1);
            *to = sample;
        }
    }

  private:
    std::vector<std::int32_t>::iterator Place(std::int32_t sample) {
        return std::lower_bound(samples_.begin(), samples_.end(), sample);
    }

    std::vector<std::int32_t> samples_;
};

}  // namespace selections
