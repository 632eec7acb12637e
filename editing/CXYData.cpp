#include "editing/CXYData.h"

#include <utility>

#include "editing/DrawSizes.h"
#include "editing/SeriesArrays.h"
#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/Selected.h"

IPointSource* CXYData::SelectPointSource(IPointSource* newSource) { return std::exchange(source, newSource); }

void CXYData::DrawThrough(CDC& dc, const CPoint* points, int count, const StatusFilter& which,
                          unsigned long color, int penStyle) {
    linePen.DeleteObject();
    linePen.CreatePen(penStyle, 0, static_cast<COLORREF>(color));
    const Selected usePen(dc, linePen);
    KeptLine* kept = nullptr;
    if (pyramids && penStyle == PS_SOLID && !dc.IsPrinting())
        kept = pyramids->Of(source, source->GetChangeCount(), points, static_cast<std::size_t>(count), which);
    if (look == LineLook::Smooth)
        dc.SmoothPolyline(points, count, which, breaks, kept);
    else
        dc.Polyline(points, count, which, kept ? &kept->pyramid : nullptr);
}

void CXYData::PrepareDots(unsigned long color) {
    dotPen.DeleteObject();
    dotPen.CreatePen(PS_SOLID, 0, static_cast<COLORREF>(color));
    brush.DeleteObject();
    brush.CreateSolidBrush(static_cast<COLORREF>(color));
}

void CXYData::DrawDots(CDC* dc, unsigned long color, int dotSize, unsigned long) {
    const SeriesArrays series(source);
    if (!dc || series.count == 0) return;
    if (look == LineLook::Smooth)
        return dc->DrawSmoothDots(series.draw, series.count, DotDiameter(dotSize),
                                  static_cast<COLORREF>(color));
    PrepareDots(color);
    const Selected usePen(*dc, dotPen);
    const Selected useBrush(*dc, brush);
    dc->DrawEllipses(series.draw, series.count, DotExtent(*dc, dotSize));
}

void CXYData::DrawLine(CDC* dc, unsigned long color, int penStyle, CRect) {
    if (!dc || !source) return;
    source->Lock();
    const SeriesArrays series(source);
    if (series.count > 0) {
        firstIndex = 0;
        lastIndex = series.count - 1;
        dc->MoveTo(series.draw[0]);
        DrawThrough(*dc, series.draw, series.count, {}, color, penStyle);
    }
    source->UnLock();
}

CPoint CXYData::XYtoDP(double& x, double& y) {
    if (!source) return {};
    const CPoint offset = source->GetOffset();
    return {SubtractSaturated(TruncateToInt32(source->GetXScale() * x), offset.x),
            SubtractSaturated(TruncateToInt32(source->GetYScale() * y), offset.y)};
}
