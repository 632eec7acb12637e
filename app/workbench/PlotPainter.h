// Paints what PlotPanels laid out: frame, grid, ticks, labels and titles; maps a context to a series; legend
// and read-out.
#pragma once

#include "app/workbench/FlagMarks.h"
#include "app/workbench/PlotPanels.h"

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

struct LegendLine {
    CString text;
    COLORREF color = 0;
    const FlagMark* mark = nullptr;  // instead of a stroke in that colour
};
enum class LegendCorner { TopRight = 0, TopLeft = 1, BottomLeft = 2, BottomRight = 3 };
constexpr std::size_t kFoldedLines = 10;

// Where the legend lies.
CRect PaintLegend(CDC& dc, const CRect& plot, std::vector<LegendLine> lines, LegendCorner corner, bool folded,
                  const PlotTheme& theme);
// The corner that a pixel is nearest to.
LegendCorner NearestCorner(const CRect& plot, CPoint pixel);

// Lines of text on a backing beside a point, inside the area.
void PaintNote(CDC& dc, const CRect& area, CPoint beside, const std::vector<CString>& lines,
               const PlotTheme& theme);

}  // namespace app
