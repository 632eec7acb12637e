// A selection as far as it fits a series, and walks over the points inside or outside it.
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

    const long* Indices() const { return indices_; }
    int Count() const { return count_; }
    Covered Cover(bool inside) const { return {indices_, count_, inside ? 1 : 0}; }

  private:
    std::vector<long> repaired_;
    const long* indices_ = nullptr;
    int count_ = 0;
};

// Calls visit(i) for every covered point, ascending.
template <class Visit>
void VisitCovered(const Covered& covered, int pointCount, Visit visit) {
    if (covered.mode == 1) {
        for (int k = 0; k < covered.count; ++k)
            visit(covered.indices ? static_cast<int>(covered.indices[k]) : k);
        return;
    }
    int next = 0;  // the first point behind the last listed one
    for (int k = 0; k < covered.count; ++k) {
        const int listed = static_cast<int>(covered.indices[k]);
        for (; next < listed; ++next) visit(next);
        next = listed + 1;
    }
    for (; next < pointCount; ++next) visit(next);
}

// ORs the flags and the code into point i.
inline void Mark(const SeriesArrays& series, int i, int flags, int code) {
    if (series.status) series.status[i] = static_cast<unsigned short>(series.status[i] | flags);
    if (series.rejection) series.rejection[i] |= code;
}
