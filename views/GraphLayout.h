// Where things stand in a graph view: margins, tiles, the plot area and the legend. Numbers only, in pixels
// unless said otherwise; the view measures texts and paints.
#pragma once

#include <vector>

#include "platform/core/Geometry.h"

class CDC;

struct PlotMargins {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// The margins that leave room for y labels of this size: the width of the widest, the height of the highest.
PlotMargins MarginsFor(CSize yLabel, int yAxisPos);

// The plot area of the first tile; at least one pixel wide and high.
CRect PlotAreaOf(CRect tile, const PlotMargins& margins);

// How many series each tile, each page takes. Layouts below 1 count as 1.
struct TileGrid {
    TileGrid(int columnCount, int rowCount, int sourceCountPerTile);

    int PageCount(std::size_t sourceCount) const;
    // Of the tile's top left corner, seen from the first tile.
    CPoint TileOffset(int tile, CSize tileSize) const;
    int TileCount() const { return columns * rows; }
    int SourcesPerPage() const { return SaturateToInt32(std::int64_t{columns} * rows * sourcesPerTile); }

    int columns;
    int rows;
    int sourcesPerTile;
};

// The top left corner of a legend of `lines` lines: in the corner of the plot that is away from the axes.
// `corner` is the plot's top left, `legend` the widest line and the height of one.
CPoint LegendPosition(CPoint corner, CSize plot, CSize legend, int lines, int xAxisPos, int yAxisPos);

// A label that stands over or under the middle `centre`.
struct LabelSpan {
    int centre = 0;
    int width = 0;
};
// Moves the first and the last label in so far that the sides of the area do not cut them, where their
// neighbours leave that much room. Labels in the order of their places.
void KeepWhole(std::vector<LabelSpan>& labels, int left, int right);

// From logical coordinates to pixels without rounding in between, as the context's mapping is now.
class PlotMap {
  public:
    explicit PlotMap(const CDC& dc);

    int X(double logical) const;
    int Y(double logical) const;
    // The visible area, normalised.
    CRect Area() const;
    // A logical length for a length in pixels.
    CSize ToLogical(CSize pixels) const;

  private:
    CPoint windowOrg_;
    CSize windowExt_;
    CPoint viewportOrg_;
    CSize viewportExt_;
};
