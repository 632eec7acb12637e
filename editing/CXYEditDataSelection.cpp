// The selection of many points.
#include <algorithm>
#include <cstring>
#include <limits>
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

// Works through the points block by block, so that the answers of the region stay in the cache.
bool CXYEditData::SetSelected(CBigRegion& region, bool inside) try {
    constexpr int kBlock = 4096;
    ClearSelection();
    const SeriesArrays series(source);
    std::vector<long> found;
    unsigned char contained[kBlock];
    for (int first = 0; first < series.count;) {
        const int length = std::min(kBlock, series.count - first);
        region.PtsInRegion(series.draw + first, length, contained);
        for (int i = 0; i < length; ++i) {
            if ((contained[i] != 0) == inside && ValidateSelection(first + i, series.status))
                found.push_back(first + i);
        }
        first += length;
    }
    return found.empty() || SetSelected(found.data(), static_cast<int>(found.size()));
} catch (const std::bad_alloc&) {
    ClearSelection();
    return false;
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
