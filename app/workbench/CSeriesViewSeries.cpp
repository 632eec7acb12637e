// How the program's view draws one series: what it was before it was cleaned, its line or dots, the marks of
// its flags.
#include <algorithm>
#include <cmath>

#include "app/workbench/CSeriesView.h"

namespace app {

namespace {

// Samples this many pixels apart show as dots on their line.
constexpr int kDotsFromPixels = 12;
constexpr int kSampleDot = 170;  // 0.01 mm

enum DrawStyle { kDots = 0, kLineAndDots = 1, kLine = 2 };

LineBreaks BreaksOf(const SeriesFacts& facts) {
    return {facts.Breaks().data(), static_cast<int>(facts.Breaks().size())};
}

}  // namespace

COLORREF CSeriesView::ColorOf(std::size_t i) const {
    return Theme().OfSeries(
        KDrawPropertyManager::Instance().GetProperty(file_.series[i].source->GetKey()).getColor());
}

void CSeriesView::DrawSeries(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i) {
    const SeriesFacts& facts = facts_[i];
    IPointSource& source = facts.Source();
    source.Lock();
    MapToPlot(dc, panel, axis, ShownX(), facts);
    const KDrawProperty& property = KDrawPropertyManager::Instance().GetProperty(source.GetKey());
    const COLORREF color = ColorOf(i);
    dataHandler->SelectPointSource(&source);
    const int style = property.getDrawStyle();
    dataHandler->UseLook(lineLook, BreaksOf(facts));
    if (style != kDots) dataHandler->DrawLine(&dc, color, property.getLineStyle(), CRect());
    if (style != kLine) {
        dataHandler->DrawDots(&dc, color, property.getDotSize(), colors.modified);
    } else if (const auto [first, end] = facts.Within(ShownX());
               std::int64_t{end - first} * kDotsFromPixels < panel.plot.Width()) {
        DrawSampleDots(dc, facts, color);
    }
    source.UnLock();
}

// What the line joins: so few samples that each can be told.
void CSeriesView::DrawSampleDots(CDC& dc, const SeriesFacts& facts, COLORREF color) {
    const auto [first, end] = facts.Within(ShownX());
    IPointSource& source = facts.Source();
    const StatusFilter present{source.GetStatus(), PS_DELETED, 0};
    dc.DrawSmoothDots(source.GetData() + first, end - first, kSampleDot, color,
                      present.From(static_cast<std::size_t>(first)));
}

// Deleted samples are still there; what else was changed is known from the file that it was changed in.
bool CSeriesView::HasOriginal(std::size_t i) const {
    return original_ && (file_.series[i].original >= 0 || (facts_[i].Flags() & PS_DELETED));
}

void CSeriesView::DrawOriginal(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i) {
    if (!HasOriginal(i)) return;
    const int from = file_.series[i].original;
    const SeriesFacts& facts = from >= 0 ? originals_[static_cast<std::size_t>(from)] : facts_[i];
    MapToPlot(dc, panel, axis, ShownX(), facts);
    originalData_.SelectPointSource(&facts.Source());
    originalData_.UsePyramids(&originalPyramids_);
    originalData_.UseLook(lineLook, BreaksOf(facts));
    originalData_.DrawLine(&dc, Theme().Pale(ColorOf(i)), PS_SOLID, CRect());
}

// A sample above or below the plot has its mark at the edge.
void CSeriesView::DrawMarks(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i) {
    const SeriesFacts& facts = facts_[i];
    if (!marks_ || !(facts.Flags() & kMarkedFlags)) return;
    IPointSource& source = facts.Source();
    source.Lock();
    const unsigned short* const status = source.GetStatus();
    const CPoint* const points = source.GetData();
    const PixelScale x = ScaleX(panel, ShownX());
    const PixelScale y = ScaleY(panel, axis);
    const int inset = std::min(MarkRadius(dc), panel.plot.Height() / 2);
    const auto [first, end] = facts.Within(ShownX());
    for (const FlagMark& mark : kFlagMarks) {
        if (!(facts.Flags() & mark.flag)) continue;
        MarkPlaces places(panel.plot, dc.GetDeviceCaps(LOGPIXELSX));
        for (int k = first; k < end; ++k) {
            if (!(status[k] & mark.flag)) continue;
            const double high = std::clamp(y.Pixel(facts.RealY(points[k].y)), double(panel.plot.top + inset),
                                           double(panel.plot.bottom - inset));
            places.Add({RoundHalfAway(x.Pixel(facts.RealX(points[k].x))), RoundHalfAway(high)});
        }
        PaintMarks(dc, mark, places.All(), Theme());
    }
    source.UnLock();
}

}  // namespace app
