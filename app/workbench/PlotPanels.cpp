#include "app/workbench/PlotPanels.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

// The share of the value range that stays free above and below.
constexpr double kPadding = 0.04;
// Axes may take this share of a tile's width, no more.
constexpr double kMostForAxes = 0.6;

CString NameOf(const SeriesFile& file, std::size_t i) { return file.series[i].source->GetName(); }
CString UnitOf(const SeriesFile& file, std::size_t i) { return file.series[i].source->GetUnitY(); }

// The axis that this series fits on.
PlotAxis& AxisFor(PlotPanel& panel, const std::string& key) {
    for (PlotAxis& axis : panel.axes)
        if (axis.key == key) return axis;
    PlotAxis& axis = panel.axes.emplace_back();
    axis.key = key;
    axis.whole = Range::None();
    axis.atRight = panel.axes.size() > 1;
    return axis;
}

std::string KeyOf(const SeriesFile& file, std::size_t i, bool own) {
    return own ? "series " + std::to_string(i) : "unit " + std::string(UnitOf(file, i).GetString());
}

// The panel of this unit.
PlotPanel& PanelFor(std::vector<PlotPanel>& panels, const std::string& key) {
    for (PlotPanel& panel : panels)
        if (panel.axes.front().key == key) return panel;
    return panels.emplace_back();
}

void Finish(PlotPanel& panel, const SeriesFile& file) {
    for (PlotAxis& axis : panel.axes) {
        axis.whole = axis.shown = Padded(axis.whole);
        const std::size_t first = axis.series.front();
        axis.reader =
            NumberAxis(axis.series.size() == 1 ? NameOf(file, first) : CString(), UnitOf(file, first));
    }
}

struct Sizes {
    int line;    // height of a text
    int stroke;  // length of a tick
    int gap;
};

int WidthOf(const PlotAxis& axis, const AxisRoom& room, const Sizes& sizes) {
    return WidestOf(axis.ticks, room) + sizes.stroke + 2 * sizes.gap;
}

// Ticks of the y axes first, for their labels decide on the width that is left for x.
void MeasureAxes(PlotPanel& panel, AxisRoom room, const Sizes& sizes) {
    room.upright = true;
    room.pixels = panel.plot.Height();
    int taken = 0;
    const int most = static_cast<int>(panel.tile.Width() * kMostForAxes);
    for (PlotAxis& axis : panel.axes) {
        axis.ticks = axis.reader->Ticks(axis.shown, room);
        axis.width = WidthOf(axis, room, sizes);
        // What has no room keeps its scale and says no numbers.
        if (taken + axis.width > most && &axis != &panel.axes.front()) {
            axis.ticks.clear();
            axis.width = 0;
        }
        taken += axis.width;
        (axis.atRight ? panel.plot.right : panel.plot.left) += axis.atRight ? -axis.width : axis.width;
    }
}

void PlaceAxes(PlotPanel& panel) {
    panel.plot.right = std::max(panel.plot.right, panel.plot.left + 1);
    int column = panel.plot.right;
    for (PlotAxis& axis : panel.axes) {
        axis.column = axis.atRight ? column : panel.plot.left;
        if (axis.atRight) column += axis.width;
    }
}

// The tile of the i-th panel; below it, when it is the last one of its column, lies what x is labelled with.
CRect TileOf(int i, bool last, CSize grid, const CRect& area, int labels) {
    const int column = i % grid.cx;
    const int row = i / grid.cx;
    const int height = area.Height() - labels;
    return {area.left + area.Width() * column / grid.cx, area.top + height * row / grid.cy,
            area.left + area.Width() * (column + 1) / grid.cx,
            area.top + height * (row + 1) / grid.cy + (last ? labels : 0)};
}

}  // namespace

Range Padded(const Range& range) {
    if (range.IsNone()) return {0, 1};
    const double length = range.Length();
    const double least = std::max(std::fabs(range.from), std::fabs(range.to)) * 1e-12;
    if (length > least) return {range.from - length * kPadding, range.to + length * kPadding};
    const double half = range.from == 0 ? 1 : std::fabs(range.from) * 0.1;
    return {range.Middle() - half, range.Middle() + half};
}

std::vector<PlotPanel> MakePanels(const SeriesFile& file, const std::vector<SeriesFacts>& facts,
                                  const std::vector<std::size_t>& series, std::size_t perTile,
                                  Together together) {
    std::vector<PlotPanel> panels;
    const bool own = together == Together::Normalised || (together == Together::ByUnit && perTile == 1);
    for (std::size_t k = 0; k < series.size(); ++k) {
        const std::size_t i = series[k];
        const std::string key = KeyOf(file, i, own);
        const bool stacked = together == Together::Stacked;
        if (!stacked && k % std::max<std::size_t>(perTile, 1) == 0) panels.emplace_back();
        PlotAxis& axis = AxisFor(stacked ? PanelFor(panels, key) : panels.back(), key);
        axis.series.push_back(i);
        if (!facts[i].Y().IsNone()) axis.whole.Add(facts[i].Y());
    }
    for (PlotPanel& panel : panels) Finish(panel, file);
    return panels;
}

CSize GridFor(std::size_t tiles) {
    const int count = static_cast<int>(std::max<std::size_t>(tiles, 1));
    const int columns = count <= 3 ? 1 : count <= 8 ? 2 : 3;
    return {columns, (count + columns - 1) / columns};
}

CSize StackFor(std::size_t plots) {
    constexpr std::size_t kHighest = 6;
    return plots <= kHighest ? CSize(1, std::max(1, static_cast<int>(plots))) : GridFor(plots);
}

void LayOut(std::vector<PlotPanel>& panels, CSize grid, const CRect& area, const Range& x,
            const AxisReader& xReader, const std::function<CSize(const CString&)>& measure) {
    AxisRoom room{0, false, measure};
    const int line = measure("0").cy;
    const Sizes sizes{line, line / 4 + 1, line / 4 + 1};
    // What shows little else goes without the title of the x axis.
    constexpr int kLinesForTitle = 10;
    const int titles = area.Height() / std::max<int>(1, grid.cy) < kLinesForTitle * line ? 0 : 1;
    const int labels = (xReader.LabelLines() + titles) * line + sizes.stroke + sizes.gap;
    const int below = line / 2 + sizes.gap;  // of a plot, for half of its lowest label
    const auto columns = static_cast<std::size_t>(grid.cx);
    for (std::size_t i = 0; i < panels.size(); ++i) {
        PlotPanel& panel = panels[i];
        panel.labelled = i + columns >= panels.size();
        panel.tile = TileOf(static_cast<int>(i), panel.labelled, grid, area, labels - below);
        // The titles of the y axes stand above.
        const int top = panel.tile.top + line + 2 * sizes.gap;
        const int bottom = panel.tile.bottom - (panel.labelled ? labels : below);
        panel.plot = {panel.tile.left + sizes.gap, top, panel.tile.right - line, std::max(bottom, top + 1)};
        MeasureAxes(panel, room, sizes);
    }
    for (std::size_t column = 0; column < columns; ++column) {
        LONG left = area.left;
        LONG right = area.right;
        for (std::size_t i = column; i < panels.size(); i += columns) {
            left = std::max(left, panels[i].plot.left);
            right = std::min(right, panels[i].plot.right);
        }
        for (std::size_t i = column; i < panels.size(); i += columns) {
            panels[i].plot.left = left;
            panels[i].plot.right = right;
        }
    }
    for (PlotPanel& panel : panels) {
        PlaceAxes(panel);
        room.pixels = panel.plot.Width();
        panel.xTicks = xReader.Ticks(x, room);
    }
}

std::size_t PanelAt(const std::vector<PlotPanel>& panels, CPoint pixel) {
    for (std::size_t i = 0; i < panels.size(); ++i) {
        const CRect& tile = panels[i].tile;
        if (pixel.x >= tile.left && pixel.x < tile.right && pixel.y >= tile.top && pixel.y < tile.bottom)
            return i;
    }
    return panels.empty() ? 0 : panels.size() - 1;
}

}  // namespace app
