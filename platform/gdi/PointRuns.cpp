#include "platform/gdi/PointRuns.h"

#include "platform/core/Cpu.h"
#include "platform/gdi/PointVectors.h"

namespace {

using namespace vectors;

constexpr std::size_t kBlock = 16;

template <bool kFiltered>
TAVIN_INLINE void Scan(const CPoint* points, std::size_t count, const StatusFilter& which, std::int32_t left,
                       std::int32_t right, RunScan& scan) {
    Points neutral, lowest, highest, least, greatest;
    constexpr std::int32_t kNone = INT32_MIN, kAll = INT32_MAX;
    Broadcast(neutral, left, scan.low);
    Broadcast(lowest, left, kNone);
    Broadcast(highest, right, kAll);
    Broadcast(least, left, scan.low);
    Broadcast(greatest, left, scan.high);
    std::size_t i = scan.next;
    for (; i + kBlock <= count; i += kBlock) {
        Points blockLeast = least, blockGreatest = greatest;
        for (std::size_t k = 0; k < kBlock; k += kAtOnce) {
            Points p;
            std::memcpy(&p, points + i + k, sizeof p);
            if constexpr (kFiltered) Mask(p, neutral, which.status + i + k, which);
            blockLeast = p < blockLeast ? p : blockLeast;
            blockGreatest = p > blockGreatest ? p : blockGreatest;
        }
        if (Any((Lanes)((blockLeast < lowest) | (blockGreatest > highest)))) break;
        least = blockLeast;
        greatest = blockGreatest;
    }
    scan.next = i;
    for (int lane = 1; lane < 8; lane += 2) {
        if (least[lane] < scan.low) scan.low = least[lane];
        if (greatest[lane] > scan.high) scan.high = greatest[lane];
    }
}

template <bool kFiltered>
TAVIN_INLINE void Extremes(const CPoint* points, std::size_t blocks, const StatusFilter& which,
                           PointExtremes* extremes) {
    Points least0, greatest0;
    Broadcast(least0, INT32_MAX, INT32_MAX);
    Broadcast(greatest0, INT32_MIN, INT32_MIN);
    for (std::size_t block = 0; block < blocks; ++block) {
        Points least = least0, greatest = greatest0;
        for (std::size_t k = block * kPointBlock; k < (block + 1) * kPointBlock; k += kAtOnce) {
            Points low, high;
            std::memcpy(&low, points + k, sizeof low);
            high = low;
            if constexpr (kFiltered) {
                Mask(low, least0, which.status + k, which);
                Mask(high, greatest0, which.status + k, which);
            }
            least = low < least ? low : least;
            greatest = high > greatest ? high : greatest;
        }
        PointExtremes all{least[0], greatest[0], least[1], greatest[1]};
        for (int lane = 2; lane < 8; lane += 2) {
            all.minX = least[lane] < all.minX ? least[lane] : all.minX;
            all.maxX = greatest[lane] > all.maxX ? greatest[lane] : all.maxX;
            all.minY = least[lane + 1] < all.minY ? least[lane + 1] : all.minY;
            all.maxY = greatest[lane + 1] > all.maxY ? greatest[lane + 1] : all.maxY;
        }
        extremes[block] = all;
    }
}

using ScanFunction = void (*)(const CPoint*, std::size_t, const StatusFilter&, std::int32_t, std::int32_t,
                              RunScan&);

template <bool kFiltered>
void ScanPortable(const CPoint* points, std::size_t count, const StatusFilter& which, std::int32_t left,
                  std::int32_t right, RunScan& scan) {
    Scan<kFiltered>(points, count, which, left, right, scan);
}

using ExtremesFunction = void (*)(const CPoint*, std::size_t, const StatusFilter&, PointExtremes*);

template <bool kFiltered>
void ExtremesPortable(const CPoint* points, std::size_t blocks, const StatusFilter& which,
                      PointExtremes* extremes) {
    Extremes<kFiltered>(points, blocks, which, extremes);
}

#ifdef __x86_64__
template <bool kFiltered>
__attribute__((target("avx2"))) void ExtremesAvx2(const CPoint* points, std::size_t blocks,
                                                  const StatusFilter& which, PointExtremes* extremes) {
    Extremes<kFiltered>(points, blocks, which, extremes);
}

template <bool kFiltered>
__attribute__((target("avx2"))) void ScanAvx2(const CPoint* points, std::size_t count,
                                              const StatusFilter& which, std::int32_t left,
                                              std::int32_t right, RunScan& scan) {
    Scan<kFiltered>(points, count, which, left, right, scan);
}
#endif

template <bool kFiltered>
ScanFunction Choose() {
#ifdef __x86_64__
    if (HasAvx2()) return ScanAvx2<kFiltered>;
#endif
    return ScanPortable<kFiltered>;
}

template <bool kFiltered>
ExtremesFunction ChooseExtremes() {
#ifdef __x86_64__
    if (HasAvx2()) return ExtremesAvx2<kFiltered>;
#endif
    return ExtremesPortable<kFiltered>;
}

}  // namespace

void ScanBlocks(const CPoint* points, std::size_t blocks, const StatusFilter& which,
                PointExtremes* extremes) {
    static const ExtremesFunction all = ChooseExtremes<false>(), filtered = ChooseExtremes<true>();
    (which.status ? filtered : all)(points, blocks, which, extremes);
}

void ScanBlocksInside(const CPoint* points, std::size_t count, const StatusFilter& which, std::int32_t left,
                      std::int32_t right, RunScan& scan) {
    static const ScanFunction all = Choose<false>(), filtered = Choose<true>();
    (which.status ? filtered : all)(points, count, which, left, right, scan);
}
