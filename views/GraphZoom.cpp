#include "views/GraphZoom.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kSmallestExtent = 100;  // both exclusive
constexpr int kLargestExtent = 500000000;

int NotZero(int extent) { return extent == 0 ? 1 : extent; }

bool IsZoomable(CSize extent) {
    return std::min(extent.cx, extent.cy) > kSmallestExtent &&
           std::max(extent.cx, extent.cy) < kLargestExtent;
}

// Half of what an axis shows once its zoom has become `zoom`.
double HalfShown(int extent, float zoom, float before) { return extent / (double{zoom / before} * 2.0); }

int ScrollAmount(double extent, float zoom) { return RoundHalfAway((double{zoom} - 1.0) / zoom * extent); }

int Quotient(int extent, float divisor) { return RoundHalfAway(static_cast<float>(extent) / divisor); }

}  // namespace

void GraphZoom::MakeIsoAspect(CZoomInfo& entry) const {
    if (!isoAspect || onlyX || onlyY) return;
    if (plotSize.cx < 1 || plotSize.cy < 1 || viewExtent.cx == 0 || viewExtent.cy == 0) return;
    const double ratio =
        (double{1.0} * plotSize.cx / plotSize.cy) / (double{1.0} * viewExtent.cx / viewExtent.cy);
    if (ratio < 1.0) {
        const double half = HalfShown(viewExtent.cy, entry.zoomY, Current().zoomY);
        entry.originY = TruncateToInt32(entry.originY + half * (1.0 - 1.0 / ratio));
        entry.zoomY = static_cast<float>(entry.zoomY * ratio);
    } else {
        const double half = HalfShown(viewExtent.cx, entry.zoomX, Current().zoomX);
        entry.originX = TruncateToInt32(entry.originX + half * (1.0 - ratio));
        entry.zoomX = static_cast<float>(entry.zoomX / ratio);
    }
}

bool GraphZoom::Add(CZoomInfo entry) {
    MakeIsoAspect(entry);
    viewExtent = {NotZero(Quotient(viewExtent.cx, entry.zoomX)),
                  NotZero(Quotient(viewExtent.cy, entry.zoomY))};
    if (!IsZoomable(viewExtent)) return false;
    entries.push_back(entry);
    return true;
}

bool GraphZoom::About(float factorX, float factorY, CPoint at) {
    CZoomInfo entry = Current();
    entry.originX = AddSaturated(entry.originX, std::int64_t{at.x} - Quotient(at.x, factorX));
    entry.originY = AddSaturated(entry.originY, std::int64_t{at.y} - Quotient(at.y, factorY));
    entry.zoomX *= factorX;
    entry.zoomY *= factorY;
    return Add(entry);
}

bool GraphZoom::Step(ZoomWay way, ZoomStep size, CPoint at) {
    float factor = way == ZoomWay::In ? zoomStep : 1.0f / zoomStep;
    if (size == ZoomStep::Softened) factor = (factor - 1.0f) * 0.2f + 1.0f;
    return About(onlyY ? 1.0f : factor, onlyX ? 1.0f : factor, at);
}

void GraphZoom::ShowAll(const StoredRange& range) {
    viewExtent = {NotZero(RoundHalfAway(range.ext.cx)), NotZero(RoundHalfAway(range.ext.cy))};
    Add(CZoomInfo());
    Current().originX = RoundHalfAway(range.org.x + range.ext.cx / 2.0 - viewExtent.cx / 2.0);
    Current().originY = RoundHalfAway(range.org.y + range.ext.cy / 2.0 - viewExtent.cy / 2.0);
}

bool GraphZoom::ShowRectangle(const CRect& rect, CSize sidePixels, const std::optional<CPoint>& newest) {
    const CSize side(NotZero(rect.Width()), NotZero(rect.Height()));
    const CSize shown(sidePixels.cx < 2 ? viewExtent.cx : rect.Width(),
                      sidePixels.cy < 2 ? viewExtent.cy : rect.Height());
    CZoomInfo entry = Current();
    if (sidePixels.cx >= 2)
        entry.zoomX = static_cast<float>((double{1.0} * viewExtent.cx + scrollAmount.cx) / side.cx);
    if (sidePixels.cy >= 2)
        entry.zoomY = static_cast<float>((double{1.0} * viewExtent.cy + scrollAmount.cy) / side.cy);
    if (newest && entry.zoomX > 1.0f) entry.followX = newest->x;
    if (newest && entry.zoomY > 1.0f) entry.followY = newest->y;
    viewExtent = side;
    if (!Add(entry)) return false;
    Current().originX = RoundHalfAway((double{1.0} * rect.left + rect.right) / 2.0 - shown.cx / 2.0);
    Current().originY = RoundHalfAway((double{1.0} * rect.top + rect.bottom) / 2.0 - shown.cy / 2.0);
    return true;
}

bool GraphZoom::Back() {
    if (entries.size() < 2) return false;
    entries.pop_back();
    return true;
}

void GraphZoom::KeepCurrent() { entries.erase(entries.begin(), std::prev(entries.end())); }

void GraphZoom::FitScrollSizes(const StoredRange& range) {
    const CZoomInfo& zoom = Current();
    viewExtent = {NotZero(RoundHalfAway(range.ext.cx / zoom.zoomX)),
                  NotZero(RoundHalfAway(range.ext.cy / zoom.zoomY))};
    scrollAmount = {ScrollAmount(range.ext.cx, zoom.zoomX), ScrollAmount(range.ext.cy, zoom.zoomY)};
    lineStep = {AddSaturated(viewExtent.cx, 10) / 20, AddSaturated(viewExtent.cy, 10) / 20};
}

void GraphZoom::AlignTo(const std::optional<CPoint>& newest) {
    CZoomInfo& zoom = Current();
    zoom.followX = newest && zoom.zoomX > 1.0f ? newest->x : 0;
    zoom.followY = newest && zoom.zoomY > 1.0f ? newest->y : 0;
}

void GraphZoom::Follow(CPoint newest, const StoredRange& range) {
    CZoomInfo& zoom = Current();
    const auto axis = [](float factor, int newestOnAxis, double rangeStart, int& follow, int& origin) {
        if (factor > 1.0f) {
            origin = AddSaturated(origin, std::int64_t{newestOnAxis} - follow);
            follow = newestOnAxis;
        } else {
            origin = TruncateToInt32(rangeStart);
        }
    };
    axis(zoom.zoomX, newest.x, range.org.x, zoom.followX, zoom.originX);
    axis(zoom.zoomY, newest.y, range.org.y, zoom.followY, zoom.originY);
}
