#include "platform/gdi/ColumnScan.h"

#include "platform/core/Cpu.h"
#include "platform/gdi/PointVectors.h"

namespace {

using namespace vectors;

typedef std::int32_t Coordinates __attribute__((vector_size(16)));
typedef double Columns __attribute__((vector_size(32)));

constexpr std::size_t kBlock = 2 * kAtOnce;

TAVIN_INLINE void FindColumns(Columns& columns, const Points& points, const ColumnWindow& window) {
    Coordinates x = __builtin_shufflevector(points, points, 0, 2, 4, 6);
    x = x < window.lowest ? Coordinates{} + window.lowest : x;
    x = x > window.highest ? Coordinates{} + window.highest : x;
    columns = __builtin_convertvector(x, Columns);
    window.columns.ToColumns(columns);
}

template <bool kFiltered>
TAVIN_INLINE void Scan(const CPoint* points, std::size_t end, const StatusFilter& which,
                       const ColumnWindow& window, std::int32_t x, RunScan& scan) {
    const double column = window.Column(x);
    Points neutral, least, greatest;
    Broadcast(least, 0, scan.low);
    Broadcast(greatest, 0, scan.high);
    Broadcast(neutral, x, scan.low);
    std::size_t i = scan.next;
    for (; i + kBlock <= end; i += kBlock) {
        Points p, q;
        std::memcpy(&p, points + i, sizeof p);
        std::memcpy(&q, points + i + kAtOnce, sizeof q);
        if constexpr (kFiltered) {
            Mask(p, neutral, which.status + i, which);
            Mask(q, neutral, which.status + i + kAtOnce, which);
        }
        Columns columnsOfP, columnsOfQ;
        FindColumns(columnsOfP, p, window);
        FindColumns(columnsOfQ, q, window);
        if (Any((columnsOfP != column) | (columnsOfQ != column))) break;
        const Points low = p < q ? p : q, high = p > q ? p : q;
        least = low < least ? low : least;
        greatest = high > greatest ? high : greatest;
    }
    for (int lane = 1; lane < 8; lane += 2) {
        scan.low = std::min(scan.low, least[lane]);
        scan.high = std::max(scan.high, greatest[lane]);
    }
    // The block that has a point of another column, or that the array does not fill.
    for (; i < end; ++i) {
        if (!which.Takes(i)) continue;
        if (window.Column(points[i].x) != column) break;
        scan.low = std::min<std::int32_t>(scan.low, points[i].y);
        scan.high = std::max<std::int32_t>(scan.high, points[i].y);
    }
    scan.next = i;
}

template <bool kFiltered>
void ScanPortable(const CPoint* points, std::size_t end, const StatusFilter& which,
                  const ColumnWindow& window, std::int32_t x, RunScan& scan) {
    Scan<kFiltered>(points, end, which, window, x, scan);
}

#ifdef __x86_64__
template <bool kFiltered>
__attribute__((target("avx2"))) void ScanAvx2(const CPoint* points, std::size_t end,
                                              const StatusFilter& which, const ColumnWindow& window,
                                              std::int32_t x, RunScan& scan) {
    Scan<kFiltered>(points, end, which, window, x, scan);
}
#endif

template <bool kFiltered>
auto Choose() {
#ifdef __x86_64__
    if (HasAvx2()) return ScanAvx2<kFiltered>;
#endif
    return ScanPortable<kFiltered>;
}

}  // namespace

void ScanColumn(const CPoint* points, std::size_t end, const StatusFilter& which, const ColumnWindow& window,
                std::int32_t x, RunScan& scan) {
    static const auto all = Choose<false>(), filtered = Choose<true>();
    (which.status ? filtered : all)(points, end, which, window, x, scan);
}
