// The selection of many points.
#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "editing/CBigRegion.h"
#include "editing/CXYEditData.h"
#include "editing/SeriesArrays.h"

bool CXYEditData::ValidateSelection(int i, unsigned short* status) {
    return !status || !(status[i] & PS_DELETED);
}

bool CXYEditData::SetSelected(const long* indices, int n) {
    if (!indices || n < 1) {
        selectedCount = 0;
        return false;
    }
    if (n > selectedCapacity) {
        std::unique_ptr<long[]> larger(new (std::nothrow) long[static_cast<std::size_t>(n)]);
        if (!larger) {
            selectedCount = 0;
            return false;
        }
        std::copy_n(indices, n, larger.get());
        selected = std::move(larger);
        selectedCapacity = n;
    } else {
        std::memmove(selected.get(), indices, static_cast<std::size_t>(n) * sizeof(long));
    }
    selectedCount = n;
    return true;
}

bool CXYEditData::SetSelected(CBigRegion& region, bool inside) {
    ClearSelection();
    const SeriesArrays series(source);
    std::vector<long> found;
    if (series.count == 0) return true;
    if (!SelectInRegion(region, series.draw, series.count, inside, found)) return false;
    std::erase_if(found,
                  [this, &series](long i) { return !ValidateSelection(static_cast<int>(i), series.status); });
    return found.empty() || SetSelected(found.data(), static_cast<int>(found.size()));
}

void CXYEditData::ClearSelection() { selectedCount = 0; }

long CXYEditData::GetSelectedCount() { return selectedCount; }

const long* CXYEditData::GetSelected() { return selected.get(); }

long CXYEditData::GetFirstSelectedIndex() {
    const long count = source ? source->GetCount() : 0;
    for (long k = 0; k < selectedCount; ++k) {
        const long index = selected[static_cast<std::size_t>(k)];
        if (index >= 0 && index < count) return index;
    }
    return count > 0 ? 0 : -1;
}
