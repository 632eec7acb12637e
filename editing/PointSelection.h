// A selection as far as it fits a series.
#pragma once

#include <vector>

#include "editing/SeriesArrays.h"

// The selected indices that lie within 0 ... pointCount - 1, ascending and each once: the caller's own array
// where it is so, else a repaired copy. Without memory for the copy it is empty. The array stays the caller's
// and must outlive this object.
class FittingSelection {
  public:
    FittingSelection(const long* selected, long selectedCount, int pointCount);
    FittingSelection(const FittingSelection&) = delete;
    FittingSelection& operator=(const FittingSelection&) = delete;

    // False when there was no memory for the copy: what is selected is then not known.
    bool IsKnown() const { return isKnown_; }
    const long* Indices() const { return indices_; }
    int Count() const { return count_; }
    Covered Cover(bool inside) const { return {indices_, count_, inside ? 1 : 0}; }

  private:
    std::vector<long> repaired_;
    const long* indices_ = nullptr;
    int count_ = 0;
    bool isKnown_ = true;
};
