// The picture of the program's view.
#include <algorithm>
#include <cmath>

#include "app/table/StatusText.h"
#include "app/workbench/CSeriesView.h"

namespace app {

void CSeriesView::Arrange(const CDC& dc) {
    const CRect area = DrawingArea();
    const int dots = dc.GetDeviceCaps(LOGPIXELSX);
    if (arranged_ && area == arrangedArea_ && dots == arrangedDots_) return;
    CRect plots = area;
    if (!heading_.IsEmpty()) plots.top += dc.GetTextExtent("0").cy * 3 / 2;
    LayOut(panels_, grid_, plots, ShownX(), *xReader_,
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
        originalPyramids_.Clear();
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
    DrawHeading(dc);
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        DrawPanel(dc, panels_[i]);
        DrawLegendOf(dc, i);
    }
    dc.RestoreDC(saved);
}

void CSeriesView::DrawHeading(CDC& dc) {
    if (heading_.IsEmpty()) return;
    const PixelSpace pixels(dc);
    const CRect area = DrawingArea();
    dc.SetTextColor(Theme().axis);
    dc.SetTextAlign(TA_CENTER | TA_TOP);
    dc.TextOut((area.left + area.right) / 2, area.top + dc.GetTextExtent("0").cy / 4, heading_);
}

void CSeriesView::DrawPanel(CDC& dc, const PlotPanel& panel) {
    const Range x = ShownX();
    dc.SelectClipRgn(nullptr);
    PaintGrid(dc, panel, x, Theme(), {axes.DrawXLines != 0, axes.DrawYLines != 0});
    PaintAxes(dc, panel, x, *xReader_, Theme(), [this](const PlotAxis& axis) {
        return axis.series.size() == 1 ? ColorOf(axis.series.front()) : Theme().axis;
    });
    ClipTo(dc, panel.plot);
    for (const PlotAxis& axis : panel.axes)
        for (const std::size_t i : axis.series) DrawOriginal(dc, panel, axis, i);
    // The first series ends on top.
    for (auto axis = panel.axes.rbegin(); axis != panel.axes.rend(); ++axis)
        for (auto i = axis->series.rbegin(); i != axis->series.rend(); ++i) DrawSeries(dc, panel, *axis, *i);
    for (const PlotAxis& axis : panel.axes)
        for (const std::size_t i : axis.series) DrawMarks(dc, panel, axis, i);
    dc.SelectClipRgn(nullptr);
}

// The series, then what else is drawn that not every plot has.
std::vector<LegendLine> CSeriesView::LegendOf(const PlotPanel& panel) const {
    std::vector<LegendLine> lines;
    unsigned flags = 0;
    const std::size_t* withOriginal = nullptr;
    for (const PlotAxis& axis : panel.axes)
        for (const std::size_t& i : axis.series) {
            CString text = file_.series[i].source->GetName();
            const CString unit = file_.series[i].source->GetUnitY();
            if (panel.axes.size() > 1 && !unit.IsEmpty()) text += " [" + unit + "]";
            lines.push_back({text, ColorOf(i)});
            flags |= facts_[i].Flags();
            if (!withOriginal && HasOriginal(i)) withOriginal = &i;
        }
    // One series in a plot of its own is named above its axis.
    if (lines.size() == 1 && panels_.size() > 1) lines.clear();
    if (withOriginal) lines.push_back({"original", Theme().Pale(ColorOf(*withOriginal))});
    for (const FlagMark& mark : kFlagMarks)
        if (marks_ && (flags & mark.flag)) lines.push_back({CString(StatusText(mark.flag)), 0, &mark});
    return lines;
}

// The corner that it was in stays unless another one is much better: a legend that leaps about is worse than
// one that hides a little.
LegendCorner CSeriesView::EmptiestCorner(const Legend& legend, const PlotPanel& panel,
                                         LegendCorner before) const {
    constexpr LegendCorner kInOrder[] = {LegendCorner::TopRight, LegendCorner::TopLeft,
                                         LegendCorner::BottomRight, LegendCorner::BottomLeft};
    constexpr double kMuchBetter = 0.5;
    const auto hidden = [&](LegendCorner corner) {
        const CRect place = legend.PlaceIn(panel.plot, corner);
        double sum = 0;
        for (const PlotAxis& axis : panel.axes)
            for (const std::size_t i : axis.series)
                sum += facts_[i].PartThrough(ScaleX(panel, ShownX()), ScaleY(panel, axis), place);
        return sum;
    };
    LegendCorner best = before;
    double least = before == LegendCorner::Emptiest ? HUGE_VAL : hidden(before) * kMuchBetter;
    for (const LegendCorner corner : kInOrder) {
        const double sum = hidden(corner);
        if (sum >= least) continue;
        least = sum;
        best = corner;
    }
    return best;
}

void CSeriesView::DrawLegendOf(CDC& dc, std::size_t at) {
    const PlotPanel& panel = panels_[at];
    std::vector<LegendLine> lines = LegendOf(panel);
    if (!showLegend || lines.empty()) return;
    const Legend legend(dc, std::move(lines), legendFolded_);
    LegendCorner corner = legendCorner_;
    if (corner == LegendCorner::Emptiest) {
        emptiest_.resize(panels_.size(), LegendCorner::Emptiest);
        corner = EmptiestCorner(legend, panel, DrawsElsewhere() ? LegendCorner::Emptiest : emptiest_[at]);
        if (!DrawsElsewhere()) emptiest_[at] = corner;
    }
    const CRect place = legend.PlaceIn(panel.plot, corner);
    // Rather the data than their names.
    constexpr std::int64_t kMost = 3;  // parts of the plot
    const auto extent = [](const CRect& area) { return std::int64_t{area.Width()} * area.Height(); };
    if (extent(place) * kMost > extent(panel.plot)) return;
    legend.Paint(dc, place, Theme());
    if (!DrawsElsewhere()) legends_.push_back(place);
}

int CSeriesView::DrawAfterBitmap(CDC* dc) {
    DrawConnectionLines(*dc);
    if (rulerVisible) DrawRuler(*dc);
    if (DrawsElsewhere()) return 1;
    Mode().DrawOverlay(*dc);
    DrawHover(*dc);
    OnPrepareDC(dc);
    gesture.Repainted(*dc, plotArea);
    return 1;
}

// Each end where its own series stands in the plot.
void CSeriesView::DrawConnectionLines(CDC& dc) {
    if (connectionLines->lines.empty()) return;
    const int saved = dc.SaveDC();
    for (const PlotPanel& panel : panels_) {
        const auto place = [&](const IPointSource* source, CPoint& at) {
            for (const PlotAxis& axis : panel.axes)
                for (const std::size_t i : axis.series)
                    if (file_.series[i].source.get() == source) {
                        MapToPlot(dc, panel, axis, ShownX(), facts_[i]);
                        dc.LPtoDP(&at);
                        return true;
                    }
            return false;
        };
        ClipTo(dc, panel.plot);
        for (const auto& line : connectionLines->lines) {
            auto ends = line->GetEnds();
            if (!ends || !place(line->start, ends->start) || !place(line->end, ends->end)) continue;
            KConnectionLine seen(*line);
            seen.SetColor(Theme().OfSeries(line->color));
            const PixelSpace pixels(dc);
            seen.Draw(&dc, *ends);
        }
    }
    dc.RestoreDC(saved);
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
