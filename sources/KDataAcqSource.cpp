#include "sources/KDataAcqSource.h"

#include <new>
#include <utility>

#include "platform/core/MessageBox.h"
#include "sources/ReferenceSample.h"

IMPLEMENT_DYNCREATE(KDataAcqSource, COnlineSource)

namespace {

std::int32_t Corrected(double value, bool invert, double offset, double scale) {
    return RoundHalfAway(((invert ? -value : value) + offset) * scale);
}

// The stored y of the first sample at or past x, of the last one when there is none.
std::int32_t ReferenceY(IPointSource* source, std::int32_t x) {
    const CPoint* const newest = source ? NewestSample(*source) : nullptr;
    if (!newest) return 0;
    const CPoint* const found = FirstSampleFrom(*source, x);
    return (found ? found : newest)->y;
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
