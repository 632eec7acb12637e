// The extreme of a window that slides over a sequence: positions whose values fall (or rise) from front to
// back, so that the front is the extreme and each position comes and goes once. (D. Lemire, Streaming
// Maximum-Minimum Filter Using No More than Three Comparisons per Element, 2006.)
#pragma once

#include <vector>

namespace selections {

class MonotoneQueue {
  public:
    // Positions ascend from call to call; those at the back that are worse(position) go. Throws
    // std::bad_alloc.
    template <class Worse>
    void Push(long position, Worse worse) {
        while (positions_.size() > front_ && worse(positions_.back())) positions_.pop_back();
        if (front_ > 1024 && front_ * 2 > positions_.size()) {
            positions_.erase(positions_.begin(), positions_.begin() + static_cast<std::ptrdiff_t>(front_));
            front_ = 0;
        }
        positions_.push_back(position);
    }
    void DropBefore(long position) {
        while (front_ < positions_.size() && positions_[front_] < position) ++front_;
    }
    long Front() const { return positions_[front_]; }

  private:
    std::vector<long> positions_;
    std::size_t front_ = 0;
};

}  // namespace selections
