// The graph view's mapping: from its area over tiles and margins to the plot, whose logical units are stored
// units.
#include <algorithm>

#include "platform/window/CWnd.h"
#include "views/AxisTicks.h"
#include "views/CXYGraphView.h"
#include "views/PixelSpace.h"

namespace {

constexpr int kLayoutRounds = 4;

int NotZero(int extent) { return extent == 0 ? 100 : extent; }

CSize Larger(CSize a, CSize b) { return {std::max(a.cx, b.cx), std::max(a.cy, b.cy)}; }

// How many logical units this many pixels of a plot stand for, at least 1.
int LogicalLength(int pixels, int shown, int plot) {
    return std::max(1, RoundHalfAway(double{1.0} * pixels * shown / plot));
}

}  // namespace

StoredRange CXYGraphView::AxisRange() const {
    const CPointEx org = axes.GetOrg();
    const CSizeEx extent = axes.GetExtent();
    return {{org.x * scaleX - offset.x, org.y * scaleY - offset.y}, {extent.cx * scaleX, extent.cy * scaleY}};
}

void CXYGraphView::OnPrepareDC(CDC* dc, CPrintInfo* info) {
    KViewEx::OnPrepareDC(dc, info);
    // Header and footer of a page are laid out in the base view's units.
    if (info) return;
    const CRect area = DrawingArea();
    const TileGrid grid = Tiles();
    tileSize = {area.Width() / grid.columns, area.Height() / grid.rows};
    const CRect tile(area.left, area.top, AddSaturated(area.left, tileSize.cx),
                     AddSaturated(area.top, tileSize.cy));
    SetCoordinates();
    plotMargins = Margins(*dc, tile);
    const CRect plot = PlotAreaOf(tile, plotMargins);
    plotArea = PlotOfGesture(plot);
    SetStoredMapping(*dc, plot);
    ShowScrollPosition();
}

// In tiles: the plot of the one that the gesture began in.
CRect CXYGraphView::PlotOfGesture(const CRect& first) const {
    const TileGrid grid = Tiles();
    const auto place = [](int at, int length, int count) {
        return length > 0 ? std::clamp(at / length, 0, count - 1) : 0;
    };
    const int column = place(gestureStart.x, tileSize.cx, grid.columns);
    const int row = place(gestureStart.y, tileSize.cy, grid.rows);
    const CPoint tile = grid.TileOffset(row * grid.columns + column, tileSize);
    return {AddSaturated(first.left, tile.x), AddSaturated(first.top, tile.y),
            AddSaturated(first.right, tile.x), AddSaturated(first.bottom, tile.y)};
}

void CXYGraphView::SetCoordinates() {
    const StoredRange range = AxisRange();
    coordinates.SetWorldOrg(axes.GetOrg());
    coordinates.SetWorldExt(axes.GetExtent());
    const CPoint org = range.org;
    const CSize extent = range.ext;
    coordinates.SetDeviceOrg(org.x, org.y);
    coordinates.SetDeviceExt(extent.cx, extent.cy);
}

void CXYGraphView::SetStoredMapping(CDC& dc, const CRect& plot) {
    zoom.plotSize = {plot.Width(), plot.Height()};
    const CZoomInfo& shown = zoom.Current();
    const CSize extent(NotZero(zoom.viewExtent.cx), NotZero(zoom.viewExtent.cy));
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowOrg(shown.originX, shown.originY);
    dc.SetWindowExt(extent.cx, axes.PositiveUp ? SubtractSaturated(0, extent.cy) : extent.cy);
    dc.SetViewportOrg(plot.left, axes.PositiveUp ? plot.bottom : plot.top);
    dc.SetViewportExt(plot.Width(), plot.Height());
}

// The texts of the labels depend on the spacing of the ticks, which depends on the room that the texts leave:
// a few rounds find spacing and margins that fit each other. They start from the same state each time, so
// that a window's ticks do not depend on the sizes that it had before.
PlotMargins CXYGraphView::Margins(CDC& dc, const CRect& tile) {
    const PixelSpace pixels(dc);
    PlotMargins margins;
    tickSpacing = {};
    for (int round = 0; round < kLayoutRounds; ++round) {
        const CSize yLabel = LargestYLabel(dc);
        margins = MarginsFor(yLabel, axes.YAxisPos);
        const CRect plot = PlotAreaOf(tile, margins);
        const CSizeEx spacing = SpacingFor({plot.Width(), plot.Height()}, LargestXLabel(dc), yLabel);
        if (spacing.cx == tickSpacing.cx && spacing.cy == tickSpacing.cy) break;
        tickSpacing = spacing;
    }
    return margins;
}

CSize CXYGraphView::LargestXLabel(const CDC& dc) {
    CString low;
    CString high;
    return Larger(dc.GetTextExtent(FormatXLabel(low, axes.MinX)),
                  dc.GetTextExtent(FormatXLabel(high, axes.MaxX)));
}

CSize CXYGraphView::LargestYLabel(const CDC& dc) {
    CString low;
    CString high;
    return Larger(dc.GetTextExtent(FormatYLabel(low, axes.MinY)),
                  dc.GetTextExtent(FormatYLabel(high, axes.MaxY)));
}

CSizeEx CXYGraphView::SpacingFor(CSize plot, CSize xLabel, CSize yLabel) {
    const CSize shown(NotZero(zoom.viewExtent.cx), NotZero(zoom.viewExtent.cy));
    const CSize minimum(LogicalLength(xLabel.cx, shown.cx, plot.cx),
                        LogicalLength(std::max(xLabel.cy, yLabel.cy), shown.cy, plot.cy));
    return GetTickSpacing({shown.cx / scaleX, shown.cy / scaleY}, minimum);
}

CSizeEx CXYGraphView::GetTickSpacing(CSizeEx visible, CSize minimum) {
    const auto lengthX = [this](double distance) {
        return std::abs(coordinates.WorldToDeviceX(distance) - coordinates.WorldToDeviceX(0.0));
    };
    const auto lengthY = [this](double distance) {
        return std::abs(coordinates.WorldToDeviceY(distance) - coordinates.WorldToDeviceY(0.0));
    };
    return {TickSpacing(visible.cx, minimum.cx, lengthX), TickSpacing(visible.cy, 2.0 * minimum.cy, lengthY)};
}

CString& CXYGraphView::FormatXLabel(CString& text, double value) {
    text.Format("%.2f %s", value, axes.UnitX.GetString());
    return text;
}

CString& CXYGraphView::FormatYLabel(CString& text, double value) {
    text.Format("%.2f", value);
    return text;
}
