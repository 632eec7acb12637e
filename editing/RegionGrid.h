// A grid of cells over a polygon's bounding box that answers "is this point inside" exactly, for many points.
//
// A cell that no edge touches is inside or outside as a whole. Any other cell lists the edges that touch it,
// and a point in it is tested against these alone. The cells' sizes are powers of two, so that a point's cell
// is found by shifts. (The idea of cells with a known corner: "Point in polygon strategies", E. Haines,
// Graphics Gems IV, 1994; here the known parity is that of the cell's right lower corner, in integers.)
#pragma once

#include <cstdint>
#include <vector>

#include "platform/core/Geometry.h"

// An edge that is not horizontal, or one that is; `low` is the end with the smaller y.
struct RegionEdge {
    std::int64_t lowX;
    std::int64_t lowY;
    std::int64_t highX;
    std::int64_t highY;
};

// Whether the ray from (x, y) toward +x crosses the edge. Wide holds the product of two differences.
template <class Wide>
inline bool Crosses(const RegionEdge& e, std::int64_t x, std::int64_t y) {
    const bool level = (y >= e.lowY) & (y < e.highY);
    const Wide ofRise = static_cast<Wide>(e.highX - e.lowX) * (y - e.lowY);
    const Wide ofRun = static_cast<Wide>(x - e.lowX) * (e.highY - e.lowY);
    return level & ((ofRise > ofRun) | ((y == e.lowY) & (x == e.lowX)));
}

// Wide as above: std::int64_t where the box is less than 2^31 wide and high, else a 128-bit integer.
template <class Wide>
class RegionGrid {
  public:
    // The box encloses every edge. `points` is the number of points to come, which bounds the work put into
    // the cells. The edges must outlive the grid.
    RegionGrid(const std::vector<RegionEdge>& edges, const RegionEdge& box, long points);
    void Contain(const CPoint* points, long n, unsigned char* inside) const;

  private:
    void ChooseCells(long points);
    void ListTouchedCells();
    void TouchRow(std::uint32_t edge, std::int64_t row);
    void CountToTheRight();
    void ListEdges();
    bool Relative(const RegionEdge& e, std::int64_t x, std::int64_t y, std::int64_t right) const;
    std::int64_t RightOf(std::int64_t column) const { return box_.lowX + ((column + 1) << shiftX_) - 1; }
    std::int64_t BottomOf(std::int64_t row) const { return box_.lowY + (row << shiftY_); }
    bool InListedCell(std::int64_t x, std::int64_t y, std::uint32_t list) const;

    struct Touch {
        std::uint32_t cell;
        std::uint32_t edge;
    };

    const std::vector<RegionEdge>& edges_;
    RegionEdge box_;
    int shiftX_ = 0;
    int shiftY_ = 0;
    std::int64_t columns_ = 1;
    std::int64_t rows_ = 1;
    // Column by column, so that points in ascending x stay in the processor's caches. Bit 0: the parity of
    // the right lower corner or, for a listed cell, the parity less the listed edges'; the rest: 0 or the
    // number of the cell's list plus 1.
    std::vector<std::uint32_t> cells_;
    std::vector<std::uint32_t> listStart_;  // a list's first entry in listed_; one more at the end
    std::vector<std::uint32_t> listed_;
    std::vector<Touch> touches_;
};
