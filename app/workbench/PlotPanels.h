// The plots of the program's view: which series stand in which plot against which y axis, and where
// everything lies. Numbers only, in pixels and in the values of the file; PlotPainter paints.
#pragma once

#include <string>
#include <vector>

#include "app/workbench/AxisReader.h"
#include "app/workbench/SeriesFacts.h"
#include "app/workbench/ZoomStack.h"

namespace app {

// One y axis and the series that it is true for: they have one unit, or, normalised, each has its own axis.
struct PlotAxis {
    std::string key;  // in the zoom stack
    std::vector<std::size_t> series;
    std::shared_ptr<const AxisReader> reader;
    Range whole;
    Range shown;
    std::vector<AxisTick> ticks;  // none: there is no room for the axis
    bool atRight = false;
    int column = 0;  // of the axis line
    int width = 0;   // of labels and strokes
};

struct PlotPanel {
    std::vector<PlotAxis> axes;  // the first stands at the left
    std::vector<AxisTick> xTicks;
    bool labelled = true;  // below; else the panel below says what the ticks stand for
    CRect tile;
    CRect plot;
};

// A little longer at both ends; a lone value stands in the middle.
Range Padded(const Range& range);

enum class Together { ByUnit, Normalised, Stacked };

// All of `series` in one plot, or `perTile` in each; stacked, those of each unit. Axes come with their whole
// range.
std::vector<PlotPanel> MakePanels(const SeriesFile& file, const std::vector<SeriesFacts>& facts,
                                  const std::vector<std::size_t>& series, std::size_t perTile,
                                  Together together);

// How a page of so many tiles is divided.
CSize GridFor(std::size_t tiles);
// How one page of so many plots of units is.
CSize StackFor(std::size_t plots);

// Gives panels that know their shown ranges their places and ticks in the area. Panels below each other have
// one x axis: their sides are in line, and the last one says what its ticks stand for.
void LayOut(std::vector<PlotPanel>& panels, CSize grid, const CRect& area, const Range& x,
            const AxisReader& xReader, const std::function<CSize(const CString&)>& measure);

// Which panel a pixel belongs to; the last one where there is none.
std::size_t PanelAt(const std::vector<PlotPanel>& panels, CPoint pixel);

inline PixelScale ScaleX(const PlotPanel& panel, const Range& x) {
    return {x, double(panel.plot.left), double(panel.plot.right)};
}
inline PixelScale ScaleY(const PlotPanel& panel, const PlotAxis& axis) {
    return {axis.shown, double(panel.plot.bottom), double(panel.plot.top)};
}

}  // namespace app
