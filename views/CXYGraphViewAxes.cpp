// The axes of the graph view. Everything is placed in pixels, so that strokes and texts keep their size
// however far one zooms in.
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/gdi/Selected.h"
#include "views/AxisTicks.h"
#include "views/CXYGraphView.h"
#include "views/PixelSpace.h"

namespace {

enum AxisPosition { kStart = 0, kCentre = 1, kEnd = 2 };  // top or left, centre, bottom or right

// Where an axis lies between the two sides of the plot.
int Across(int position, int start, int end) {
    if (position == kStart) return start;
    return position == kEnd ? end : start + (end - start) / 2;
}

void Line(CDC& dc, int x1, int y1, int x2, int y2) {
    dc.MoveTo(x1, y1);
    dc.LineTo(x2, y2);
}

}  // namespace

int CXYGraphView::DrawCoordinateSystem(CDC* dc) {
    const PlotMap map(*dc);
    const PixelSpace pixels(*dc);
    dc->SelectObject(&axisPen);
    dc->SetTextColor(colors.axis);
    DrawTicks(*dc, map, map.Area());
    return 1;
}

void CXYGraphView::DrawTicks(CDC& dc, const PlotMap& map, const CRect& plot) {
    const CZoomInfo& shown = zoom.Current();
    const CSize extent = zoom.viewExtent;
    const double fromX = coordinates.DeviceToWorldX(shown.originX);
    const double toX = coordinates.DeviceToWorldX(double{1.0} * shown.originX + std::fabs(extent.cx));
    const auto xTicks = TickValues(fromX, toX, tickSpacing.cx, FirstTick::Rounded);
    const auto yTicks =
        TickValues(coordinates.DeviceToWorldY(shown.originY),
                   coordinates.DeviceToWorldY(double{1.0} * shown.originY + std::fabs(extent.cy)),
                   tickSpacing.cy, FirstTick::Truncated);
    DrawGrid(dc, map, plot, xTicks, yTicks);
    if (axes.ShowY && tickSpacing.cy != 0.0) DrawYAxis(dc, map, plot, yTicks);
    if (axes.ShowX) DrawXAxis(dc, map, plot, xTicks);
}

void CXYGraphView::DrawGrid(CDC& dc, const PlotMap& map, const CRect& plot, const std::vector<double>& xTicks,
                            const std::vector<double>& yTicks) {
    const Selected usePen(dc, gridPen);
    if (axes.DrawYLines) {
        for (const double value : yTicks) {
            const int y = map.Y(coordinates.WorldToDeviceY(value));
            Line(dc, plot.right, y, plot.left, y);
        }
    }
    if (axes.DrawXLines) {
        for (const double value : xTicks) {
            const int x = map.X(coordinates.WorldToDeviceX(value));
            Line(dc, x, plot.top, x, plot.bottom);
        }
    }
}

void CXYGraphView::DrawYAxis(CDC& dc, const PlotMap& map, const CRect& plot,
                             const std::vector<double>& ticks) {
    const CSize mm = LogicalSize(dc, 100, 100);
    const CSize largest = LargestYLabel(dc);
    const int x = Across(axes.YAxisPos, plot.left, plot.right);
    const int labelEnd = axes.YAxisPos == kEnd ? x + mm.cx + largest.cx : x - 2 * mm.cx;
    Line(dc, x, plot.top, x, plot.bottom);
    dc.SetTextAlign(TA_RIGHT | TA_TOP);
    CString label;
    for (const double value : ticks) {
        const int y = map.Y(coordinates.WorldToDeviceY(value));
        Line(dc, x - mm.cx, y, x + mm.cx, y);
        dc.TextOut(labelEnd, y - largest.cy / 2, FormatYLabel(label, value));
    }
    // At the end that the x axis leaves free.
    const bool atBottom = axes.XAxisPos == kStart;
    dc.SetTextAlign(TA_CENTER | (atBottom ? TA_TOP : TA_BOTTOM));
    dc.TextOut(x, atBottom ? plot.bottom : plot.top, axes.UnitY);
}

void CXYGraphView::DrawXAxis(CDC& dc, const PlotMap& map, const CRect& plot,
                             const std::vector<double>& ticks) {
    const CSize mm = LogicalSize(dc, 100, 100);
    const int y = Across(axes.XAxisPos, plot.top, plot.bottom);
    const bool labelsAbove = axes.XAxisPos == kStart;
    Line(dc, plot.left, y, plot.right, y);
    dc.SetTextAlign(TA_CENTER | (labelsAbove ? TA_BASELINE : TA_TOP));
    std::vector<CString> labels(ticks.size());
    std::vector<LabelSpan> spans;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const int x = map.X(coordinates.WorldToDeviceX(ticks[i]));
        Line(dc, x, y - mm.cy, x, y + mm.cy);
        FormatXLabel(labels[i], ticks[i]);
        spans.push_back({x, static_cast<int>(dc.GetTextExtent(labels[i]).cx)});
    }
    const CRect area = DrawingArea();
    KeepWhole(spans, std::max(area.left, SubtractSaturated(plot.left, plotMargins.left)),
              std::min(area.right, AddSaturated(plot.right, plotMargins.right)));
    for (std::size_t i = 0; i < ticks.size(); ++i)
        dc.TextOut(spans[i].centre, labelsAbove ? y - mm.cy : y + mm.cy, labels[i]);
}
