#include "sources/KDataAcqSource.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/core/MessageBox.h"

IMPLEMENT_DYNCREATE(KDataAcqSource, COnlineSource)

namespace {

std::int32_t Corrected(double value, bool invert, double offset, double scale) {
    return RoundHalfAway(((invert ? -value : value) + offset) * scale);
}

// The stored y of the first sample at or past x, of the last one when there is none. Samples run up in x,
// down where the first lies above the last.
std::int32_t ReferenceY(IPointSource* source, std::int32_t x) {
    const long count = source ? source->GetCount() : 0;
    const CPoint* const samples = count > 0 ? source->GetData() : nullptr;
    if (!samples) return 0;
    const bool down = samples[0].x > samples[count - 1].x;
    const auto before = [down](const CPoint& sample, std::int32_t place) {
        return down ? sample.x > place : sample.x < place;
    };
    const CPoint* const found = std::lower_bound(samples, samples + count, x, before);
    return std::min(found, samples + (count - 1))->y;
}

// Without memory the series is not taken.
void Append(KDataAcqSource::Sources& list, IPointSource* source) try {
    list.push_back(source);
} catch (const std::bad_alloc&) {
}

}  // namespace

KDataAcqSource::KDataAcqSource(CString seriesName, double scaleX, double scaleY, long size, CString unitNameX,
                               CString unitNameY, int mode)
    : COnlineSource(std::move(seriesName), scaleX, scaleY, size, std::move(unitNameX), std::move(unitNameY),
                    mode) {}

KDataAcqSource::KDataAcqSource(CString seriesName, double scaleX, double scaleY, long size, int mode)
    : COnlineSource(std::move(seriesName), scaleX, scaleY, size, mode) {}

void KDataAcqSource::Add(IPointSource* source) { ::Append(addList, source); }

void KDataAcqSource::Subtract(IPointSource* source) { ::Append(subtractList, source); }

void KDataAcqSource::Remove(IPointSource* source) {
    addList.remove(source);
    subtractList.remove(source);
}

bool KDataAcqSource::AddData(POINT*, long) {
    AfxMessageBox("Ooops, not implemented yet!!", MB_OK);
    return false;
}

bool KDataAcqSource::AddData(double x, double y) {
    const std::int32_t storedX = Corrected(x, invertX, fixedOffsetX, GetXScale());
    std::int64_t storedY = Corrected(y, invertY, fixedOffsetY, GetYScale());
    for (IPointSource* const source : addList) storedY += ReferenceY(source, storedX);
    for (IPointSource* const source : subtractList) storedY -= ReferenceY(source, storedX);
    return COnlineSource::Append({storedX, SaturateToInt32(storedY)});
}
