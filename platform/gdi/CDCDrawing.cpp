// The drawing operations of device contexts.
#include <cmath>
#include <numbers>
#include <utility>

#include "platform/gdi/CDCState.h"
#include "platform/gdi/Dots.h"
#include "platform/gdi/Polyline.h"
#include "platform/gdi/Shapes.h"

namespace {

// The outline of a rectangle's pixels, each pixel once.
void OutlineBox(const Canvas& canvas, const CRect& box, const HairPen& pen) {
    const LONG right = box.right - 1, bottom = box.bottom - 1;
    std::int64_t phase = 0;
    if (right == box.left) return DrawHairline(canvas, {right, box.top}, {right, box.bottom}, pen, phase);
    if (bottom == box.top) return DrawHairline(canvas, {box.left, bottom}, {box.right, bottom}, pen, phase);
    const CPoint corners[] = {
        {box.left, box.top}, {right, box.top}, {right, bottom}, {box.left, bottom}, {box.left, box.top}};
    for (int i = 0; i < 4; ++i) DrawHairline(canvas, corners[i], corners[i + 1], pen, phase);
}

// Points on the ellipse through the middles of a box's border pixels, close enough to look round.
std::vector<CPoint> EllipseCorners(const CRect& box) {
    const double rx = (double(box.right) - 1.0 - box.left) / 2.0,
                 ry = (double(box.bottom) - 1.0 - box.top) / 2.0;
    const int count = static_cast<int>(std::clamp(rx + ry, 16.0, 4096.0));
    std::vector<CPoint> corners;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        corners.emplace_back(RoundHalfAway(box.left + rx + rx * std::cos(angle)),
                             RoundHalfAway(box.top + ry + ry * std::sin(angle)));
    }
    return corners;
}

}  // namespace

void CDC::State::Stroke(const Canvas& canvas, const CPoint* points, std::size_t count, bool closed) const {
    if (!HasPen() || count == 0) return;
    if (!HasHairPen()) return DrawWideLine(canvas, points, count, closed, PenWidth(), PenInk());
    const HairPen hair = Hair();
    std::int64_t phase = 0;
    for (std::size_t i = 1; i < count; ++i) DrawHairline(canvas, points[i - 1], points[i], hair, phase);
    if (closed) DrawHairline(canvas, points[count - 1], points[0], hair, phase);
}

CPoint CDC::MoveTo(int x, int y) {
    state_->dashPhase = 0;
    return std::exchange(state_->at, CPoint(x, y));
}

BOOL CDC::LineTo(int x, int y) {
    const CPoint ends[] = {state_->mapping.ToDevice(state_->at), state_->mapping.ToDevice({x, y})};
    state_->at = CPoint(x, y);
    if (state_->Page()) return Guarded([&] { state_->LineOnPage(ends[0], ends[1]); });
    const auto canvas = state_->Target();
    if (!canvas || !state_->HasPen()) return TRUE;
    if (!state_->HasHairPen()) return Guarded([&] { state_->Stroke(*canvas, ends, 2, false); });
    DrawHairline(*canvas, ends[0], ends[1], state_->Hair(), state_->dashPhase);
    return TRUE;
}

BOOL CDC::Polyline(const CPoint* points, int count) { return Polyline(points, count, {}); }

BOOL CDC::Polyline(const CPoint* points, int count, const StatusFilter& which, const PointPyramid* pyramid) {
    if (!points || count < 2) return FALSE;
    const auto size = static_cast<std::size_t>(count);
    if (state_->Page()) return Guarded([&] { state_->PolylineOnPage(points, size, which); });
    const auto canvas = state_->Target();
    if (!canvas || !state_->HasPen()) return TRUE;
    if (state_->HasHairPen())
        return Guarded(
            [&] { DrawPolyline(*canvas, state_->mapping, points, size, which, state_->Hair(), pyramid); });
    return Guarded([&] {
        std::vector<CPoint> device;
        ForEachTaken(points, size, which, [&](CPoint p) { device.push_back(state_->mapping.ToDevice(p)); });
        state_->Stroke(*canvas, device.data(), device.size(), false);
    });
}

BOOL CDC::Polygon(const CPoint* points, int count) {
    if (!points || count < 2) return FALSE;
    if (state_->Page())
        return Guarded([&] { state_->PolygonOnPage(points, static_cast<std::size_t>(count)); });
    const auto canvas = state_->Target();
    if (!canvas) return TRUE;
    return Guarded([&] {
        std::vector<CPoint> device(points, points + count);
        LPtoDP(device.data(), count);
        if (state_->brushRecord) FillPolygon(*canvas, device.data(), device.size(), state_->BrushInk());
        state_->Stroke(*canvas, device.data(), device.size(), true);
    });
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom) {
    const CRect box = state_->ToDevice({left, top, right, bottom});
    if (state_->Page()) return Guarded([&] { state_->RectangleOnPage(box); });
    const auto canvas = state_->Target();
    if (!canvas || box.IsRectEmpty()) return TRUE;
    const std::int64_t inset = state_->HasHairPen() ? 1 : 0, cut = state_->HasPen() ? inset : 1;
    if (state_->brushRecord)
        FillBox(*canvas, box.left + inset, box.top + inset, box.right - cut, box.bottom - cut,
                state_->BrushInk());
    if (!state_->HasPen()) return TRUE;
    if (state_->HasHairPen()) {
        OutlineBox(*canvas, box, state_->Hair());
        return TRUE;
    }
    const CPoint corners[] = {{box.left, box.top},
                              {box.right - 1, box.top},
                              {box.right - 1, box.bottom - 1},
                              {box.left, box.bottom - 1}};
    return Guarded([&] { state_->Stroke(*canvas, corners, 4, true); });
}

BOOL CDC::Ellipse(int left, int top, int right, int bottom) {
    CRect box = state_->ToDevice({left, top, right, bottom});
    if (state_->Page()) return Guarded([&] { state_->EllipseOnPage(box); });
    const auto canvas = state_->Target();
    if (!state_->HasPen() && !box.IsRectEmpty())
        box = CRect(box.left, box.top, box.right - 1, box.bottom - 1);
    if (!canvas || box.IsRectEmpty()) return TRUE;
    const bool hair = state_->HasHairPen();
    if (state_->brushRecord) FillEllipse(*canvas, box, hair, state_->BrushInk());
    if (!state_->HasPen()) return TRUE;
    if (hair) {
        OutlineEllipse(*canvas, box, state_->Hair());
        return TRUE;
    }
    return Guarded([&] {
        const auto corners = EllipseCorners(box);
        state_->Stroke(*canvas, corners.data(), corners.size(), true);
    });
}

void CDC::FillSolidRect(const CRect& rect, COLORREF color) {
    const CRect box = state_->ToDevice(rect);
    if (Paper* page = state_->Page()) {
        Guarded([&] { page->Box(box, {kNoHatch, color, std::nullopt}); });
        return;
    }
    if (const auto canvas = state_->Target())
        FillBox(*canvas, box.left, box.top, box.right, box.bottom, {ToPixel(color), R2_COPYPEN});
}

BOOL CDC::SetPixelV(int x, int y, COLORREF color) {
    const CPoint p = state_->mapping.ToDevice({x, y});
    if (Paper* page = state_->Page()) return Guarded([&] { page->Dots({p}, color); });
    const auto canvas = state_->Target();
    if (!canvas || !canvas->clip.PtInRect(p)) return FALSE;
    canvas->Row(p.y)[p.x] = ToPixel(color);
    return TRUE;
}

COLORREF CDC::GetPixel(int x, int y) const {
    const auto canvas = state_->Target();
    const CPoint p = state_->mapping.ToDevice({x, y});
    if (!canvas || !canvas->clip.PtInRect(p)) return CLR_INVALID;
    return ToColor(canvas->Row(p.y)[p.x]);
}

void CDC::DrawPixels(const CPoint* points, int count, COLORREF color, const StatusFilter& which) {
    if (!points || count < 1) return;
    const auto size = static_cast<std::size_t>(count);
    if (state_->Page()) {
        Guarded([&] { state_->DotsOnPage(points, size, color, which); });
        return;
    }
    if (const auto canvas = state_->Target())
        DrawPixelCloud(*canvas, state_->mapping, points, size, which, ToPixel(color));
}

void CDC::DrawRectangles(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which) {
    if (!points || count < 1) return;
    const auto size = static_cast<std::size_t>(count);
    if (state_->Page()) {
        Guarded([&] { state_->RectanglesOnPage(points, size, halfExtent, which); });
        return;
    }
    const auto canvas = state_->Target();
    if (!canvas) return;
    if (state_->DrawsPlainShapes() && Guarded([&] {
            DrawBoxCloud(*canvas, state_->mapping, points, size, which, halfExtent, state_->HasPen() ? 0 : 1,
                         state_->BrushInk().pixel);
        }))
        return;
    ForEachTaken(points, size, which, [&](CPoint p) { Rectangle(BoxRound(p, halfExtent)); });
}

void CDC::DrawEllipses(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which) {
    if (!points || count < 1) return;
    const auto size = static_cast<std::size_t>(count);
    if (state_->Page()) {
        Guarded([&] { state_->EllipsesOnPage(points, size, halfExtent, which); });
        return;
    }
    const auto canvas = state_->Target();
    if (!canvas) return;
    if (state_->DrawsPlainShapes() && Guarded([&] {
            DrawEllipseCloud(*canvas, state_->mapping, points, size, which, halfExtent,
                             state_->HasPen() ? 0 : 1, state_->BrushInk().pixel);
        }))
        return;
    ForEachTaken(points, size, which, [&](CPoint p) { Ellipse(BoxRound(p, halfExtent)); });
}
