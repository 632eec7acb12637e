// The legend of the graph view: one line for each series, in its colour.
#include <algorithm>
#include <vector>

#include "views/CXYGraphView.h"
#include "views/PixelSpace.h"
#include "views/SourceLock.h"

CPoint CXYGraphView::AdjustLegendPosToAxis(CPoint corner, CSize plot, CSize legend, int lines) const {
    return LegendPosition(corner, plot, legend, lines, axes.XAxisPos, axes.YAxisPos);
}

CString CXYGraphView::AddExtraLegend(int) { return {}; }

CString CXYGraphView::LegendText(IPointSource* source, int i) {
    if (!legendValues) return source->GetName() + AddExtraLegend(i);
    const SourceLock lock(source);
    if (source->empty()) return source->GetName();
    CString text;
    const CPoint newest = source->GetDrawPoints()[source->GetCount() - 1];
    text.Format("%s [%.2lf]", source->GetName().GetString(), newest.y / source->GetYScale());
    return text;
}

int CXYGraphView::DrawLegend(CDC* dc) { return DrawLegend(dc, shownSources); }

int CXYGraphView::DrawLegend(CDC* dc, std::list<IPointSource*>& sources) {
    if (sources.empty()) return 0;
    const CRect plot = PlotMap(*dc).Area();
    const PixelSpace pixels(*dc);
    std::vector<CString> texts;
    CSize legend;
    for (IPointSource* const source : sources) {
        texts.push_back(LegendText(source, static_cast<int>(texts.size())));
        const CSize line = dc->GetTextExtent(texts.back());
        legend = {std::max(legend.cx, line.cx), std::max(legend.cy, line.cy)};
    }
    CPoint at = AdjustLegendPosToAxis({plot.left, plot.top}, {plot.Width(), plot.Height()}, legend,
                                      static_cast<int>(texts.size()));
    auto text = texts.begin();
    for (IPointSource* const source : sources) {
        dc->SetTextColor(static_cast<COLORREF>(GetColor(source)));
        dc->TextOut(at.x, at.y, *text++);
        at.y = AddSaturated(at.y, legend.cy);
    }
    return 1;
}
