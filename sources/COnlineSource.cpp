#include "sources/COnlineSource.h"

#include <algorithm>
#include <limits>
#include <utility>

IMPLEMENT_DYNCREATE(COnlineSource, IPointSource)

namespace {

constexpr double kShortestScroll = 100.0;  // stored units

std::uint32_t CapacityOf(long size) {
    return static_cast<std::uint32_t>(
        std::clamp(size, 0L, static_cast<long>(std::numeric_limits<std::int32_t>::max())));
}

// What counts as no range at all, in stored units.
double NarrowRange(double scale) { return scale / 20; }

}  // namespace

COnlineSource::COnlineSource(CString seriesName, double scaleX, double scaleY, long size, CString unitNameX,
                             CString unitNameY, int mode)
    : IPointSource(std::move(unitNameX), std::move(unitNameY)),
      xMode(mode),
      name(std::move(seriesName)),
      xScale(scaleX),
      yScale(scaleY),
      ring(0) {
    COnlineSource::ReSize(CapacityOf(size));
}

COnlineSource::COnlineSource(CString seriesName, double scaleX, double scaleY, long size, int mode)
    : COnlineSource(std::move(seriesName), scaleX, scaleY, size, CString(), CString(), mode) {}

COnlineSource::COnlineSource() : COnlineSource(CString(), 1.0, 1.0, 0, Scrolling) {}

COnlineSource::~COnlineSource() = default;

bool COnlineSource::AddData(double x, double y) {
    return Append({TruncateToInt32(x * GetXScale()), TruncateToInt32(y * GetYScale())});
}

// Block by block, so that each is scanned when it is full.
bool COnlineSource::AddData(POINT* points, long count) {
    const std::uint32_t size = ring.GetSize();
    if (count < 1) return true;
    if (!points || size == 0) return false;
    for (long done = 0; done < count;) {
        const std::uint32_t at = ring.GetNext();
        const std::uint32_t room = std::min(RingExtremes::kBlock - at % RingExtremes::kBlock, size - at);
        const auto n = static_cast<std::uint32_t>(std::min(count - done, long{room}));
        ring.PushRun(points + done, n);
        if (RingExtremes::FillsBlock(ring)) extremes.CloseBlock(ring);
        done += n;
    }
    appended += static_cast<std::uint64_t>(count);
    NoteChange();
    return true;
}

CPointEx COnlineSource::GetLatestPoint() {
    if (ring.GetCount() == 0) return {};
    const CPoint newest = ring.GetNewest();
    return {newest.x / xScale, newest.y / yScale};
}

void COnlineSource::Clear() {
    ring.Clear();
    extremes.Rescan(ring);
    appended = 0;
    NoteChange();
}

void COnlineSource::Reset() {
    Clear();
    UpdateStats();
}

bool COnlineSource::ReSize(unsigned int size) {
    RingExtremes resized;
    if (!resized.Resize(size) || !ring.Resize(size)) return false;
    extremes = std::move(resized);
    extremes.Rescan(ring);
    appended = ring.GetCount();
    NoteChange();
    return true;
}

bool COnlineSource::UpdateStats() {
    extremes.Restart(ring);
    return true;
}

// Of no samples (0, 0).
StoredBox COnlineSource::Extent() const {
    const StoredBox box = extremes.OfEverything(ring);
    return box.any ? box : StoredBox{0, 0, 0, 0, false};
}

CPoint COnlineSource::GetOffset() {
    return xMode == Scrolling ? CPoint(SubtractSaturated(0, Extent().maxX), 0) : CPoint();
}

double COnlineSource::GetMaxX() {
    if (xMode == Scrolling) return 0.0;
    if (xMode != Absolute) return 1.0;
    const StoredBox box = Extent();
    const double range = double(box.maxX) - box.minX;
    return box.maxX / xScale + (range < NarrowRange(xScale) ? 1.0 : 0.0);
}

double COnlineSource::GetMinX() {
    const StoredBox box = Extent();
    if (xMode == Scrolling) {
        const double age = ring.GetCount() > 1 ? double(box.maxX) - ring.GetOldest()->x : 0.0;
        const double oldest = -age / xScale;
        return oldest * xScale < -kShortestScroll ? oldest : -kShortestScroll / xScale;
    }
    if (xMode != Absolute) return -1.0;
    const double range = double(box.maxX) - box.minX;
    return box.minX / xScale - (range < NarrowRange(xScale) ? 1.0 : 0.0);
}

double COnlineSource::GetMaxY() {
    const StoredBox box = Extent();
    const double range = double(box.maxY) - box.minY;
    return box.maxY / yScale + (range <= NarrowRange(yScale) ? 0.5 : 0.0);
}

double COnlineSource::GetMinY() {
    const StoredBox box = Extent();
    const double range = double(box.maxY) - box.minY;
    return box.minY / yScale - (range <= NarrowRange(yScale) ? 0.5 : 0.0);
}
