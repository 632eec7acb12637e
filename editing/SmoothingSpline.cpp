#include "editing/SmoothingSpline.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

#include "sources/PointStatus.h"

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#endif

namespace {

constexpr double kLongestWave = 9999.0;
constexpr int kFewestPoints = 4;
// Arrays that start at equal offsets within a memory page compete for the same cache lines.
constexpr std::size_t kStagger = 40;

// Large fresh blocks cost more in page faults than in arithmetic; big pages have few.
void PreferBigPages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t bytes) {
#ifdef __linux__
    constexpr std::size_t kWorthwhile = std::size_t{4} << 20;
    if (bytes < kWorthwhile) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto start = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const auto end = (reinterpret_cast<std::uintptr_t>(block) + bytes) / page * page;
    madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);  // a hint; its failure is harmless
#endif
}

bool IsUsable(const unsigned short* status, int i) {
    return status == nullptr || (status[i] & PS_DELETED) == 0;
}

int CountUsable(const unsigned short* status, int count) {
    if (status == nullptr) return count;
    int usable = 0;
    for (int i = 0; i < count; ++i) usable += (status[i] & PS_DELETED) == 0;
    return usable;
}

// Every stored value divided by the scale is finite, and so is every one times it.
bool IsUsableScale(double scale) {
    constexpr double kWidest = 4294967296.0;
    return std::isfinite(scale * kWidest) && std::isfinite(kWidest / scale);
}

// Wave length and time unit together, so that the fit stays the same.
bool BringIntoRange(SplineWork& work, double& waveLength, double& tScale) {
    if (!(waveLength >= 0 && tScale > 0)) return false;
    // Anything stiffer than this gives the least-squares line to the last digit.
    constexpr double kFinestUnit = 1e150;
    while (waveLength > kLongestWave && tScale < kFinestUnit) {
        waveLength *= 0.1;
        tScale *= 10.0;
        work.minimumSpacing *= 0.1;
    }
    return true;
}

void FillWork(SplineWork& work, const CPoint* data, const int* z, int count, double tScale, double yScale,
              const unsigned short* status) {
    int k = 0;
    for (int i = 0; i < count; ++i) {
        if (!IsUsable(status, i)) continue;
        work.abscissa[k] = (z ? z[i] : data[i].x) / tScale;
        work.values[k] = (z ? data[i].x : data[i].y) / yScale;
        if (z) work.values2[k] = data[i].y / yScale;
        ++k;
    }
}

// covered[i] is 1 where the fit is to be written into point i.
std::vector<unsigned char> CoveredPoints(const long* indices, int indexCount, int count, int mode) {
    std::vector<unsigned char> covered(static_cast<std::size_t>(count), mode == 0);
    for (int k = 0; k < indexCount; ++k) {
        if (indices[k] >= 0 && indices[k] < count) covered[static_cast<std::size_t>(indices[k])] = mode == 1;
    }
    return covered;
}

void WriteBack(const SplineWork& work, CPoint* data, int count, const unsigned char* covered, double yScale,
               unsigned short* status, int* rejection, int code) {
    int k = 0;
    for (int i = 0; i < count; ++i) {
        if (!IsUsable(status, i)) continue;
        const int fit = k++;
        if (covered != nullptr && covered[i] == 0) continue;
        data[i] = FittedPoint(work, fit, data[i], yScale);
        if (status == nullptr) continue;
        status[i] |= PS_SMOOTHED | PS_EDITED;
        if (rejection != nullptr) rejection[i] |= code;
    }
}

}  // namespace

bool SplineWork::Allocate(int points, bool twoDimensional) {
    Free();
    if (points < 0) return false;
    const std::size_t room = static_cast<std::size_t>(points) + 1 + kStagger;
    const std::size_t arrays = twoDimensional ? 5 + 4 : 3 + 3;
    if (room > std::numeric_limits<std::size_t>::max() / (arrays * sizeof(double))) return false;
    block_ = static_cast<double*>(std::calloc(arrays * room, sizeof(double)));
    if (block_ == nullptr) return false;
    PreferBigPages(block_, arrays * room * sizeof(double));
    double* next = block_;
    const auto take = [&] {
        double* array = next;
        next += room;
        return array;
    };
    values = take();
    abscissa = take();
    fitted = take();
    if (twoDimensional) {
        values2 = take();
        fitted2 = take();
    }
    solver = next;
    capacity = points;
    return true;
}

void SplineWork::Free() {
    std::free(block_);
    block_ = values = values2 = abscissa = fitted = fitted2 = solver = nullptr;
    capacity = used = 0;
}

double SetWaveLength(SplineWork& work, double waveLength) {
    if (!(waveLength > 0)) waveLength = 0;
    work.waveLength = waveLength < kLongestWave ? waveLength : kLongestWave;
    return work.waveLength;
}

bool SplineSmooth(const CPoint* data, const int* z, int count, SplineWork& work, double& waveLength,
                  double& tScale, double& yScale, const unsigned short* status) {
    if (data == nullptr || count < kFewestPoints) return false;
    const int usable = CountUsable(status, count);
    if (usable < kFewestPoints || !IsUsableScale(tScale) || !IsUsableScale(yScale)) return false;
    work.minimumSpacing = kMinimumSpacing;
    if (!BringIntoRange(work, waveLength, tScale) || !work.Allocate(usable, z != nullptr)) return false;
    FillWork(work, data, z, count, tScale, yScale, status);
    SetWaveLength(work, waveLength);
    work.used = usable;
    z ? SolveSmoothingSpline2(work) : SolveSmoothingSpline(work);
    return true;
}

int SmoothPoints(CPoint* data, const int* z, int count, const long* indices, int indexCount,
                 double waveLength, int mode, double tScale, double yScale, unsigned short* status,
                 int* rejection, int code) try {
    if (data == nullptr || indexCount < 1) return 0;
    SplineWork work;
    if (!SplineSmooth(data, z, count, work, waveLength, tScale, yScale, status)) return 0;
    if (mode != 0 && mode != 1) return 1;
    std::vector<unsigned char> covered;
    if (indices != nullptr) covered = CoveredPoints(indices, indexCount, count, mode);
    WriteBack(work, data, count, indices ? covered.data() : nullptr, yScale, status, rejection, code);
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}
