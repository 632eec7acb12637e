#include "editing/PointSelection.h"

#include <new>

#include "editing/PointIndices.h"

FittingSelection::FittingSelection(const long* selected, long selectedCount, int pointCount) {
    if (!selected || selectedCount < 1 || pointCount < 1) return;
    if (AreAscendingWithin(selected, selectedCount, pointCount)) {
        indices_ = selected;
        count_ = static_cast<int>(selectedCount);
        return;
    }
    try {
        repaired_ = PointIndices(selected, selectedCount).Within(pointCount);
    } catch (const std::bad_alloc&) {
        isKnown_ = false;
        return;
    }
    indices_ = repaired_.data();
    count_ = static_cast<int>(repaired_.size());
}
