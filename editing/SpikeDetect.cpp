#include "editing/SpikeDetect.h"

#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

#include "editing/SmoothingSpline.h"
#include "sources/PointStatus.h"

namespace {

// The status words with every point that is not tested deleted.
std::vector<unsigned short> ExcludeUntested(const unsigned short* status, int count, const long* indices,
                                            int indexCount, int mode) {
    constexpr unsigned short kExcluded = PS_DELETED | PS_EDITED;
    std::vector<unsigned short> work(status, status + count);
    if (mode == 1) {
        for (unsigned short& word : work) word |= kExcluded;
    }
    for (int k = 0; k < indexCount; ++k) {
        if (indices[k] < 0 || indices[k] >= count) continue;
        const auto i = static_cast<std::size_t>(indices[k]);
        work[i] = mode == 1 ? status[i] : static_cast<unsigned short>(status[i] | kExcluded);
    }
    return work;
}

bool IsFarther(CPoint point, CPoint smoothed, int window) {
    const std::int64_t dx = std::int64_t{point.x} - smoothed.x;
    const std::int64_t dy = std::int64_t{point.y} - smoothed.y;
    if (dx == 0) return (dy < 0 ? -dy : dy) > window;
    const auto x = double(dx);
    const auto y = double(dy);
    return std::sqrt(x * x + y * y) > window;
}

}  // namespace

bool SpikeDetect(const CPoint* data, const int* z, int count, const long* indices, int indexCount,
                 double waveLength, int window, int mode, double tScale, double yScale, CPoint* band,
                 int* bandCount, unsigned short* status) try {
    if (data == nullptr || status == nullptr || indexCount < 1 || count < 1) return false;
    if (indices != nullptr && mode != 0 && mode != 1) return false;
    std::vector<unsigned short> tested;
    if (indices != nullptr) tested = ExcludeUntested(status, count, indices, indexCount, mode);
    const unsigned short* takesPart = indices != nullptr ? tested.data() : status;
    SplineWork work;
    if (!SplineSmooth(data, z, count, work, waveLength, tScale, yScale, takesPart)) return false;

    const bool fillBand = band != nullptr && z == nullptr;
    bool found = false;
    int fit = 0;
    for (int i = 0; i < count; ++i) {
        if ((takesPart[i] & PS_DELETED) != 0) {
            if (indices != nullptr) status[i] &= static_cast<unsigned short>(~PS_SPIKE);
            continue;
        }
        const CPoint smoothed = FittedPoint(work, fit, data[i], yScale);
        if (fillBand) {
            band[fit] = {smoothed.x, AddSaturated(smoothed.y, window)};
            band[2 * std::int64_t{work.used} - 1 - fit] = {smoothed.x, SubtractSaturated(smoothed.y, window)};
        }
        ++fit;
        const bool isSpike = IsFarther(data[i], smoothed, window);
        status[i] &= static_cast<unsigned short>(~PS_SPIKE);
        if (isSpike) status[i] |= PS_SPIKE | PS_EDITED;
        found = found || isSpike;
    }
    if (fillBand && bandCount != nullptr) *bandCount = SaturateToInt32(2 * std::int64_t{work.used});
    return found;
} catch (const std::bad_alloc&) {
    return false;
}
