// The picture of the program's view.
#include <algorithm>

#include "app/workbench/CSeriesView.h"

namespace app {

namespace {

// Samples this many pixels apart show as dots on their line.
constexpr int kDotsFromPixels = 12;
constexpr int kSampleDot = 3;

enum DrawStyle { kDots = 0, kLineAndDots = 1, kLine = 2 };

}  // namespace

void CSeriesView::Arrange(const CDC& dc) {
    const CRect area = DrawingArea();
    const int dots = dc.GetDeviceCaps(LOGPIXELSX);
    if (arranged_ && area == arrangedArea_ && dots == arrangedDots_) return;
    LayOut(panels_, grid_, area, ShownX(), *xReader_,
           [&dc](const CString& text) { return dc.GetTextExtent(text); });
    arranged_ = true;
    arrangedArea_ = area;
    arrangedDots_ = dots;
}

// Prepares for the first series of the panel that the mouse works in.
void CSeriesView::OnPrepareDC(CDC* dc, CPrintInfo* info) {
    KViewEx::OnPrepareDC(dc, info);
    if (info) return;
    {
        const PixelSpace pixels(*dc);
        Arrange(*dc);
    }
    const PlotPanel* const panel = Panel(gesturePanel_);
    if (!panel || panel->axes.empty()) return;
    plotArea = panel->plot;
    const PlotAxis& axis = panel->axes.front();
    MapToPlot(*dc, *panel, axis, ShownX(), facts_[axis.series.front()]);
}

int CSeriesView::DrawBackground(CDC* dc, CBrush*, CSize area) {
    CBrush brush;
    brush.CreateSolidBrush(Theme().background);
    return CXYGraphView::DrawBackground(dc, &brush, area);
}

int CSeriesView::DrawBitmap(CDC* dc) {
    if (!dataHandler) AllocDataHandler(PrimarySource());
    if (redrawing != Moved) {
        pyramids.Clear();
        UpdatePanels();
        OnPrepareDC(dc);
    }
    dataHandler->UsePyramids(&pyramids);
    IPointSource* const handled = dataHandler->GetPointSource();
    Draw(*dc);
    dataHandler->SelectPointSource(handled);
    if (!DrawsElsewhere()) {
        ShowScrollBars();
        ShowZoomText();
        // What lies under the pointer may be something else now.
        if (pointer_) ShowPointer(*pointer_);
    }
    if (!panels_.empty() && !(DrawsElsewhere() && GetSafeHwnd())) {
        const PlotPanel& last = panels_.back();
        const SeriesFacts& facts = facts_[last.axes.front().series.front()];
        tileClip = last.plot;
        TellListeners(facts.StoredX(ShownX().from), facts.StoredX(ShownX().to));
    }
    return 1;
}

void CSeriesView::Draw(CDC& dc) {
    const int saved = dc.SaveDC();
    if (!DrawsElsewhere()) legends_.clear();
    for (PlotPanel& panel : panels_) {
        DrawPanel(dc, panel);
        DrawLegendOf(dc, panel);
    }
    dc.RestoreDC(saved);
}

void CSeriesView::DrawPanel(CDC& dc, const PlotPanel& panel) {
    const Range x = ShownX();
    dc.SelectClipRgn(nullptr);
    PaintGrid(dc, panel, x, Theme(), {axes.DrawXLines != 0, axes.DrawYLines != 0});
    PaintAxes(dc, panel, x, *xReader_, Theme(), [this](const PlotAxis& axis) {
        return axis.series.size() == 1 ? ColorOf(axis.series.front()) : Theme().axis;
    });
    ClipTo(dc, panel.plot);
    // The first series ends on top.
    for (auto axis = panel.axes.rbegin(); axis != panel.axes.rend(); ++axis)
        for (auto i = axis->series.rbegin(); i != axis->series.rend(); ++i) DrawSeries(dc, panel, *axis, *i);
    dc.SelectClipRgn(nullptr);
}

COLORREF CSeriesView::ColorOf(std::size_t i) const {
    return Theme().OfSeries(
        KDrawPropertyManager::Instance().GetProperty(file_.series[i].source->GetKey()).getColor());
}

void CSeriesView::DrawSeries(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i) {
    IPointSource& source = *file_.series[i].source;
    source.Lock();
    MapToPlot(dc, panel, axis, ShownX(), facts_[i]);
    const KDrawProperty& property = KDrawPropertyManager::Instance().GetProperty(source.GetKey());
    const COLORREF color = ColorOf(i);
    dataHandler->SelectPointSource(&source);
    const int style = property.getDrawStyle();
    const std::vector<int>& breaks = facts_[i].Breaks();
    dataHandler->UseLook(lineLook, {breaks.data(), static_cast<int>(breaks.size())});
    if (style != kDots) dataHandler->DrawLine(&dc, color, property.getLineStyle(), CRect());
    if (style != kLine) {
        dataHandler->DrawDots(&dc, color, property.getDotSize(), colors.modified);
    } else if (const auto [first, end] = facts_[i].Within(ShownX());
               std::int64_t{end - first} * kDotsFromPixels < panel.plot.Width()) {
        DrawSampleDots(dc, source, first, end, color);
    }
    source.UnLock();
}

// What the line joins: so few samples that each can be told.
void CSeriesView::DrawSampleDots(CDC& dc, IPointSource& source, int first, int end, COLORREF color) {
    CBrush brush;
    brush.CreateSolidBrush(color);
    CPen pen;
    pen.CreatePen(PS_SOLID, 0, color);
    const Selected fill(dc, brush);
    const Selected outline(dc, pen);
    const CPoint* const points = source.GetData();
    const unsigned short* const status = source.GetStatus();
    const int radius = RoundHalfAway(kSampleDot * dc.GetDeviceCaps(LOGPIXELSX) / 96.0);
    for (int i = first; i < end; ++i) {
        if (status && (status[i] & PS_DELETED)) continue;
        CPoint at = points[i];
        dc.LPtoDP(&at);
        const PixelSpace pixels(dc);
        dc.SelectObject(&brush);
        dc.SelectObject(&pen);
        dc.Ellipse(at.x - radius, at.y - radius, at.x + radius + 1, at.y + radius + 1);
    }
}

void CSeriesView::DrawLegendOf(CDC& dc, PlotPanel& panel) {
    std::vector<LegendLine> lines;
    for (const PlotAxis& axis : panel.axes)
        for (const std::size_t i : axis.series) {
            CString text = file_.series[i].source->GetName();
            const CString unit = file_.series[i].source->GetUnitY();
            if (panel.axes.size() > 1 && !unit.IsEmpty()) text += " [" + unit + "]";
            lines.push_back({text, ColorOf(i)});
        }
    // One series in a tile is named above its axis.
    if (!showLegend || (tiled && lines.size() < 2)) return;
    const CRect place = PaintLegend(dc, panel.plot, std::move(lines), legendCorner_, legendFolded_, Theme());
    if (!DrawsElsewhere()) legends_.push_back(place);
}

int CSeriesView::DrawAfterBitmap(CDC* dc) {
    if (rulerVisible) DrawRuler(*dc);
    if (DrawsElsewhere()) return 1;
    Mode().DrawOverlay(*dc);
    DrawHover(*dc);
    OnPrepareDC(dc);
    gesture.Repainted(*dc, plotArea);
    return 1;
}

void CSeriesView::DrawRuler(CDC& dc) {
    const PlotPanel* const panel = Panel(gesturePanel_);
    if (!panel) return;
    const int saved = dc.SaveDC();
    OnPrepareDC(&dc);
    ClipTo(dc, panel->plot);
    CPen pen;
    pen.CreatePen(PS_SOLID, 0, Theme().axis);
    dc.SelectObject(&pen);
    dc.SelectStockObject(NULL_BRUSH);
    ruler.Draw(&dc);
    CPoint ends[] = {ruler.getStart(), ruler.getEnd()};
    dc.LPtoDP(ends, 2);
    dc.RestoreDC(saved);
    const CPoint right = ends[0].x > ends[1].x ? ends[0] : ends[1];
    const CRect& plot = panel->plot;
    if (right.x >= plot.left && right.x < plot.right && right.y >= plot.top && right.y < plot.bottom)
        PaintNote(dc, plot, right, {MeasuredText()}, Theme());
}

void CSeriesView::DrawHover(CDC& dc) {
    if (!pointer_ || Mode().IsDragging() || panFrom_) return;
    const std::size_t at = PanelAt(panels_, *pointer_);
    const PlotPanel* const panel = Panel(at);
    if (!panel) return;
    const CRect& plot = panel->plot;
    const bool inside = pointer_->x >= plot.left && pointer_->x < plot.right && pointer_->y >= plot.top &&
                        pointer_->y < plot.bottom;
    if (!inside) return;
    const int saved = dc.SaveDC();
    ClipTo(dc, plot);
    const std::optional<Hovered> sample = readOut_ ? Hover() : std::nullopt;
    {
        const PixelSpace pixels(dc);
        CPen pen;
        pen.CreatePen(PS_SOLID, 0, Theme().axis);
        const Selected usePen(dc, pen);
        const SelectedStock noFill(dc, NULL_BRUSH);
        if (crosshair_) {
            dc.MoveTo(plot.left, pointer_->y);
            dc.LineTo(plot.right, pointer_->y);
            for (const PlotPanel& each : panels_) {
                // The x axis is the same in all of them.
                ClipTo(dc, each.plot);
                const int x = pointer_->x - plot.left + each.plot.left;
                dc.MoveTo(x, each.plot.top);
                dc.LineTo(x, each.plot.bottom);
            }
            ClipTo(dc, plot);
        }
        if (sample) {
            const int radius = dc.GetDeviceCaps(LOGPIXELSX) / 20;
            dc.Ellipse(sample->pixel.x - radius, sample->pixel.y - radius, sample->pixel.x + radius + 1,
                       sample->pixel.y + radius + 1);
        }
    }
    dc.SelectClipRgn(nullptr);
    if (sample) PaintNote(dc, plot, sample->pixel, SampleText(*sample), Theme());
    dc.RestoreDC(saved);
}

}  // namespace app
