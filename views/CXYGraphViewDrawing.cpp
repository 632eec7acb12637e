// What the graph view draws: the series tile by tile, and the overlays.
#include <algorithm>
#include <vector>

#include "platform/gdi/Selected.h"
#include "settings/KDrawPropertyManager.h"
#include "views/CXYGraphView.h"
#include "views/KConnectionLineManager.h"
#include "views/PixelSpace.h"
#include "views/SourceLock.h"

namespace {

enum DrawStyle { kDots = 0, kLineAndDots = 1, kLine = 2 };

}  // namespace

int CXYGraphView::DrawBitmap(CDC* dc) {
    if (!dataHandler) AllocDataHandler(PrimarySource());
    if (redrawing != Moved) pyramids.Clear();
    dataHandler->UsePyramids(&pyramids);
    const std::size_t count = shownSources.size();
    const std::size_t perPage = tiled ? static_cast<std::size_t>(Tiles().SourcesPerPage()) : count;
    const std::size_t first = tiled ? static_cast<std::size_t>(page) * perPage : 0;
    if (first >= count) {
        dc->SelectClipRgn(nullptr);
        DrawCoordinateSystem(dc);
        return 1;
    }
    DrawPage(*dc, first, std::min(first + perPage, count));
    TellListeners(zoom.Current().originX, double{1.0} * zoom.Current().originX + zoom.viewExtent.cx);
    return 1;
}

// From the highest series down, so that the primary one ends on top.
void CXYGraphView::DrawPage(CDC& dc, std::size_t first, std::size_t end) {
    const std::vector<IPointSource*> sources(shownSources.begin(), shownSources.end());
    const auto perTile = static_cast<std::size_t>(Tiles().sourcesPerTile);
    const CPoint firstTile = dc.GetViewportOrg();
    IPointSource* const handled = dataHandler->GetPointSource();
    std::list<IPointSource*> drawn;
    for (std::size_t i = end; i-- > first;) {
        const std::size_t inTile = (i - first) % perTile;
        if (i + 1 == end || inTile + 1 == perTile) {
            drawn.clear();
            SetTiledViewportOrg(&dc, firstTile, static_cast<int>((i - first) / perTile));
            dc.SelectClipRgn(nullptr);
            DrawCoordinateSystem(&dc);
            SetTiledClipRgn(&dc);
        }
        DrawSource(dc, sources[i]);
        drawn.push_back(sources[i]);
        if (!showLegend || inTile != 0) continue;
        if (tiled)
            DrawLegend(&dc, drawn);
        else
            DrawLegend(&dc);
    }
    dc.SelectClipRgn(nullptr);
    dataHandler->SelectPointSource(handled);
    dc.SetViewportOrg(firstTile.x, firstTile.y);
}

void CXYGraphView::DrawSource(CDC& dc, IPointSource* source) {
    const SourceLock lock(source);
    const KDrawProperty& property = KDrawPropertyManager::Instance().GetProperty(source->GetKey());
    dataHandler->SelectPointSource(source);
    dataHandler->UseLook(lineLook);
    const int style = property.getDrawStyle();
    if (style == kLine || style == kLineAndDots)
        dataHandler->DrawLine(&dc, property.getColor(), property.getLineStyle(), CRect());
    if (style == kDots || style == kLineAndDots)
        dataHandler->DrawDots(&dc, colors.dots, property.getDotSize(), colors.modified);
}

void CXYGraphView::SetTiledViewportOrg(CDC* dc, CPoint firstTile, int tile) const {
    const CPoint origin = firstTile + Tiles().TileOffset(tile, tileSize);
    dc->SetViewportOrg(origin.x, origin.y);
}

void CXYGraphView::SetTiledClipRgn(CDC* dc) {
    tileClip = PlotMap(*dc).Area();
    CRgn region;
    region.CreateRectRgnIndirect(&tileClip);
    dc->SelectClipRgn(&region);
}

void CXYGraphView::TellListeners(double fromX, double toX) {
    // Columns of paper or of an exported picture mean nothing beside the window.
    if (DrawsElsewhere() && GetSafeHwnd()) return;
    axisChange.plotLeft = tileClip.left;
    axisChange.plotRight = tileClip.right;
    axisChange.fromX = fromX;
    axisChange.toX = toX;
    axisChange.unitX = axes.UnitX;
    // A listener may take itself, or another one, out of the list.
    const std::list<IAxisChangeListener*> told = listeners;
    for (IAxisChangeListener* const listener : told)
        if (std::find(listeners.begin(), listeners.end(), listener) != listeners.end())
            listener->OnAxisChanged(&axisChange);
}

int CXYGraphView::DrawAfterBitmap(CDC* dc) {
    const CPoint firstTile = dc->GetViewportOrg();
    const int tiles = Tiles().TileCount();
    for (int tile = 0; tile < tiles; ++tile) {
        SetTiledViewportOrg(dc, firstTile, tile);
        DrawConnectionLines(*dc);
        if (rulerVisible) DrawRulerOverlay(*dc);
    }
    dc->SetViewportOrg(firstTile.x, firstTile.y);
    if (DrawsElsewhere()) return 1;
    Mode().DrawOverlay(*dc);
    // The paint took away what a gesture had inverted: the next move will invert it again.
    gesture.Repainted(*dc, plotArea);
    return 1;
}

void CXYGraphView::DrawConnectionLines(CDC& dc) {
    if (connectionLines->lines.empty()) return;
    const int unclipped = dc.SaveDC();
    const CRect plot = PlotMap(dc).Area();
    CRgn region;
    region.CreateRectRgnIndirect(&plot);
    dc.SelectClipRgn(&region);
    connectionLines->Draw(&dc);
    dc.RestoreDC(unclipped);
}

void CXYGraphView::DrawRulerOverlay(CDC& dc) {
    const CPoint start = ruler.getStart();
    const CPoint end = ruler.getEnd();
    CPoint right = start.x > end.x ? start : end;
    dc.LPtoDP(&right);
    const CRect plot = PlotMap(dc).Area();
    // The text of a ruler that was scrolled away would stand alone.
    if (right.x >= plot.left && right.x <= plot.right && right.y >= plot.top && right.y <= plot.bottom) {
        const PixelSpace pixels(dc);
        const CString text = ruler.ToString();
        dc.TextOut(AddSaturated(right.x, dc.GetTextExtent(text).cy), right.y, text);
    }
    const int unclipped = dc.SaveDC();
    CRgn region;
    region.CreateRectRgnIndirect(&plot);
    dc.SelectClipRgn(&region);
    dc.SelectObject(&rulerPen);
    dc.SelectStockObject(NULL_BRUSH);
    ruler.Draw(&dc);
    dc.RestoreDC(unclipped);
}
