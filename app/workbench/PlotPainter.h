// Paints what PlotPanels laid out: frame, grid, ticks, labels and titles; maps a context to a series; the
// read-out.
#pragma once

#include "app/workbench/PlotPanels.h"
#include "app/workbench/PlotTheme.h"

namespace app {

struct GridLines {
    bool x = true;
    bool y = true;
};

void PaintGrid(CDC& dc, const PlotPanel& panel, const Range& x, const PlotTheme& theme, GridLines lines);
// `colorOf`: of the axis, when its series alone has it.
void PaintAxes(CDC& dc, const PlotPanel& panel, const Range& x, const AxisReader& xReader,
               const PlotTheme& theme, const std::function<COLORREF(const PlotAxis&)>& colorOf);

// The stored units of a series become the pixels of the plot.
void MapToPlot(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, const Range& x,
               const SeriesFacts& facts);
void ClipTo(CDC& dc, const CRect& area);

// Lines of text on a backing beside a point, inside the area.
void PaintNote(CDC& dc, const CRect& area, CPoint beside, const std::vector<CString>& lines,
               const PlotTheme& theme);

}  // namespace app
