#include "sources/StoredBox.h"

#ifdef __x86_64__
#include <immintrin.h>
#endif

#include <algorithm>

#include "platform/core/Cpu.h"

namespace {

void WidenByEach(StoredBox& box, const CPoint* data, const unsigned short* status, long count,
                 unsigned short skipped) {
    for (long i = 0; i < count; ++i) {
        if (status && (status[i] & skipped)) continue;
        box.minX = std::min(box.minX, data[i].x);
        box.minY = std::min(box.minY, data[i].y);
        box.maxX = std::max(box.maxX, data[i].x);
        box.maxY = std::max(box.maxY, data[i].y);
        box.any = true;
    }
}

#ifdef __x86_64__
// Four samples at a time: a skipped one takes part as the neutral element.
template <bool kFiltered>
__attribute__((target("avx2"))) void WidenByFours(StoredBox& box, const CPoint* data,
                                                  const unsigned short* status, long count,
                                                  unsigned short skipped) {
    [[maybe_unused]] const __m256i mask = _mm256_set1_epi64x(skipped);
    const __m256i highest = _mm256_set1_epi32(std::numeric_limits<std::int32_t>::max());
    const __m256i lowest = _mm256_set1_epi32(std::numeric_limits<std::int32_t>::min());
    __m256i low = highest;
    __m256i high = lowest;
    __m256i taken = _mm256_setzero_si256();
    for (long i = 0; i < count; i += 4) {
        const __m256i four = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data + i));
        if constexpr (kFiltered) {
            const __m256i words =
                _mm256_cvtepu16_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(status + i)));
            const __m256i takes = _mm256_cmpeq_epi64(_mm256_and_si256(words, mask), _mm256_setzero_si256());
            low = _mm256_min_epi32(low, _mm256_blendv_epi8(highest, four, takes));
            high = _mm256_max_epi32(high, _mm256_blendv_epi8(lowest, four, takes));
            taken = _mm256_or_si256(taken, takes);
        } else {
            low = _mm256_min_epi32(low, four);
            high = _mm256_max_epi32(high, four);
        }
    }
    if (kFiltered && _mm256_testz_si256(taken, taken)) return;
    CPoint lows[4];
    CPoint highs[4];
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(lows), low);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(highs), high);
    for (const CPoint& lane : lows) {
        box.minX = std::min(box.minX, lane.x);
        box.minY = std::min(box.minY, lane.y);
    }
    for (const CPoint& lane : highs) {
        box.maxX = std::max(box.maxX, lane.x);
        box.maxY = std::max(box.maxY, lane.y);
    }
    box.any = true;
}
#endif

}  // namespace

StoredBox FindStoredBox(const CPoint* data, const unsigned short* status, long count,
                        unsigned short skipped) {
    StoredBox box;
    long byFours = 0;
#ifdef __x86_64__
    if (HasAvx2()) byFours = count / 4 * 4;
    if (byFours > 0) (status ? WidenByFours<true> : WidenByFours<false>)(box, data, status, byFours, skipped);
#endif
    WidenByEach(box, data + byFours, status ? status + byFours : nullptr, count - byFours, skipped);
    return box;
}
