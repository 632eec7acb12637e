// What the editable data set draws.
#include <algorithm>

#include "editing/CXYEditData.h"
#include "editing/DrawSizes.h"
#include "editing/SeriesArrays.h"
#include "platform/gdi/Selected.h"

namespace {

constexpr std::int64_t kHandleRadius = 100;  // 0.01 mm
constexpr std::int64_t kSpikeRadius = 120;

// Moves what is drawn by an offset in logical units for a scope.
class Shifted {
  public:
    Shifted(CDC& dc, const CPoint& offset) : dc_(dc), origin_(dc.GetWindowOrg()) {
        const CPoint shifted = origin_ - offset;
        dc_.SetWindowOrg(shifted.x, shifted.y);
    }
    ~Shifted() { dc_.SetWindowOrg(origin_.x, origin_.y); }
    Shifted(const Shifted&) = delete;
    Shifted& operator=(const Shifted&) = delete;

  private:
    CDC& dc_;
    CPoint origin_;
};

StatusFilter Where(const SeriesArrays& series, unsigned short mask, unsigned short value) {
    return {series.status, mask, value};
}

// The nearest point that is not deleted from `i` on in the direction `step`; without one, `otherwise`.
int NextPresent(const SeriesArrays& series, int i, int step, int otherwise) {
    while (i >= 0 && i < series.count && series.status && (series.status[i] & PS_DELETED)) i += step;
    return i >= 0 && i < series.count ? i : otherwise;
}

}  // namespace

void CXYEditData::DrawDots(CDC* dc, unsigned long color, int dotSize, unsigned long editedColor) {
    const SeriesArrays series(source);
    if (!dc || series.count == 0) return;
    PrepareDots(color);
    editedPen.DeleteObject();
    editedPen.CreatePen(PS_SOLID, 0, static_cast<COLORREF>(editedColor));
    editedBrush.DeleteObject();
    editedBrush.CreateSolidBrush(static_cast<COLORREF>(editedColor));
    {
        const Selected usePen(*dc, dotPen);
        const Selected useBrush(*dc, brush);
        DrawDotsWhere(*dc, series, dotSize, Where(series, PS_DELETED | PS_EDITED, 0), color);
    }
    if (!series.status) return;
    const Selected usePen(*dc, editedPen);
    const Selected useBrush(*dc, editedBrush);
    DrawDotsWhere(*dc, series, dotSize, Where(series, PS_DELETED | PS_EDITED, PS_EDITED), editedColor);
}

void CXYEditData::DrawDotsWhere(CDC& dc, const SeriesArrays& series, int dotSize, const StatusFilter& which,
                                unsigned long color) {
    if (look == LineLook::Smooth)
        return dc.DrawSmoothDots(series.draw, series.count, DotDiameter(dotSize),
                                 static_cast<COLORREF>(color), which);
    if (dotSize < 1) {
        dc.DrawPixels(series.draw, series.count, static_cast<COLORREF>(color), which);
        return;
    }
    const CSize extent = DotExtent(dc, dotSize);
    dc.DrawRectangles(series.draw, series.count, {std::max(extent.cx, 1), std::max(extent.cy, 1)}, which);
}

// The series' own points are not moved for the draw offset: the origin of the context is.
void CXYEditData::DrawLine(CDC* dc, unsigned long color, int penStyle, CRect) {
    const SeriesArrays series(source);
    if (!dc || series.count == 0) return;
    lastIndex = series.count - 1;
    firstIndex = NextPresent(series, 0, 1, series.count - 1);
    const Shifted shift(*dc, drawOffset);
    dc->MoveTo(series.draw[firstIndex]);
    DrawThrough(*dc, series.draw, series.count, Where(series, PS_DELETED, 0), color, penStyle);
}

void CXYEditData::DrawSelection(CDC* dc, unsigned long color, int size) {
    const SeriesArrays series(source);
    if (!dc || currentIndex < 0 || currentIndex >= series.count) return;
    const CSize arms = LogicalSize(*dc, std::int64_t{size} * 100, std::int64_t{size} * 100);
    const CSize half(RoundHalfAway(arms.cx / 2.0), RoundHalfAway(arms.cy / 2.0));
    selectionPen.DeleteObject();
    selectionPen.CreatePen(PS_SOLID, 0, static_cast<COLORREF>(color));
    const Selected usePen(*dc, selectionPen);
    const SelectedStock noFill(*dc, NULL_BRUSH);
    const CRect cross = RectAround(series.draw[currentIndex], half);
    dc->MoveTo(cross.left, cross.bottom);
    dc->LineTo(cross.right, cross.top);
    dc->MoveTo(cross.right, cross.bottom);
    dc->LineTo(cross.left, cross.top);
}

void CXYEditData::DrawRubberBand(CDC* dc, CPoint& p) {
    const SeriesArrays series(source);
    if (!dc || currentIndex < 0 || currentIndex >= series.count) return;
    const int current = static_cast<int>(currentIndex);
    const int previous = NextPresent(series, std::max(current - 1, 0), -1, current);
    const int next = NextPresent(series, std::min(current + 1, series.count - 1), 1, current);
    dc->MoveTo(series.draw[previous]);
    dc->LineTo(p);
    dc->LineTo(series.draw[next]);
    dc->Ellipse(RectAround(p, LogicalSize(*dc, kHandleRadius, kHandleRadius)));
}

void CXYEditData::DrawSpikeMarkings(CDC* dc) {
    const SeriesArrays series(source);
    if (!dc || !series.status) return;
    const CSize extent = LogicalSize(*dc, kSpikeRadius, kSpikeRadius);
    const SelectedStock outline(*dc, BLACK_PEN);
    const SelectedStock noFill(*dc, NULL_BRUSH);
    dc->DrawEllipses(series.draw, series.count, extent, Where(series, PS_SPIKE | PS_DELETED, PS_SPIKE));
}

void CXYEditData::DrawSpikeWindow(CDC* dc) {
    if (!dc || !source || !spikeWindow || spikeWindowSource != source) return;
    const SelectedStock noOutline(*dc, NULL_PEN);
    const SelectedStock fill(*dc, GRAY_BRUSH);
    const SelectedRop2 inXor(*dc, R2_XORPEN);
    dc->Polygon(spikeWindow.get(), spikeWindowCount);
}
