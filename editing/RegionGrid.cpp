#include "editing/RegionGrid.h"

#include <algorithm>
#include <cmath>

namespace {

// Cells per axis: enough that most of them are free of edges, and no more than the points are worth.
constexpr std::int64_t kFewestCells = 64;
constexpr std::int64_t kMostCells = 1024;
// What listing the edges may cost: so much for each point and edge, and never more entries than 32 bits
// count.
constexpr std::int64_t kTouchesPerItem = 16;
constexpr std::int64_t kMostTouches = std::int64_t{1} << 28;

int ShiftFor(std::int64_t extent, std::int64_t cells) {
    int shift = 0;
    while ((extent >> shift) >= cells) ++shift;
    return shift;
}

}  // namespace

template <class Wide>
RegionGrid<Wide>::RegionGrid(const std::vector<RegionEdge>& edges, const RegionEdge& box, long points)
    : edges_(edges), box_(box) {
    ChooseCells(points);
    cells_.assign(static_cast<std::size_t>(columns_ * rows_), 0);
    ListTouchedCells();
    CountToTheRight();
    ListEdges();
}

template <class Wide>
void RegionGrid<Wide>::ChooseCells(long points) {
    const auto edgeCount = static_cast<std::int64_t>(edges_.size());
    std::int64_t cells = std::clamp(2 * edgeCount, kFewestCells, kMostCells);
    while (cells > 1 && cells * cells > points) cells /= 2;
    const std::int64_t most = std::min(kTouchesPerItem * (points + edgeCount), kMostTouches);
    for (;; cells /= 2) {
        shiftX_ = ShiftFor(box_.highX - box_.lowX, cells);
        shiftY_ = ShiftFor(box_.highY - box_.lowY, cells);
        std::int64_t touches = 0;
        for (const RegionEdge& e : edges_)
            touches += (std::abs(e.highX - e.lowX) >> shiftX_) + ((e.highY - e.lowY) >> shiftY_) + 2;
        if (touches <= most || cells <= 1) break;
    }
    columns_ = ((box_.highX - box_.lowX) >> shiftX_) + 1;
    rows_ = ((box_.highY - box_.lowY) >> shiftY_) + 1;
}

// Adds the cells of a row that the edge touches, computed in doubles and widened by one unit either way, more
// than the error. A cell too many is listed without harm.
template <class Wide>
void RegionGrid<Wide>::TouchRow(std::uint32_t edge, std::int64_t row) {
    const RegionEdge& e = edges_[edge];
    const std::int64_t from = std::max(e.lowY, BottomOf(row));
    const std::int64_t to = std::min(e.highY, BottomOf(row + 1) - 1);
    double x0 = double(e.lowX);
    double x1 = double(e.highX);
    if (e.highY > e.lowY) {
        const double slope = (x1 - x0) / double(e.highY - e.lowY);
        x1 = x0 + slope * double(to - e.lowY);
        x0 = x0 + slope * double(from - e.lowY);
    }
    const auto left = static_cast<std::int64_t>(std::floor(std::min(x0, x1))) - 1;
    const auto right = static_cast<std::int64_t>(std::ceil(std::max(x0, x1))) + 1;
    const auto column = [this](std::int64_t x) {
        return std::clamp((x - box_.lowX) >> shiftX_, std::int64_t{0}, columns_ - 1);
    };
    const std::int64_t last = column(right);
    for (std::int64_t c = column(left); c <= last; ++c)
        touches_.push_back({static_cast<std::uint32_t>(c * rows_ + row), edge});
}

template <class Wide>
void RegionGrid<Wide>::ListTouchedCells() {
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        const RegionEdge& e = edges_[i];
        const std::int64_t last = (e.highY - box_.lowY) >> shiftY_;
        for (std::int64_t row = (e.lowY - box_.lowY) >> shiftY_; row <= last; ++row)
            TouchRow(static_cast<std::uint32_t>(i), row);
    }
}

// Sets every cell's bit to the parity at its right lower corner: an edge that is level with the row's bottom
// is crossed from all corners up to the last x that lies before it.
template <class Wide>
void RegionGrid<Wide>::CountToTheRight() {
    for (const RegionEdge& e : edges_) {
        const std::int64_t unit = (std::int64_t{1} << shiftY_) - 1;
        for (std::int64_t row = (e.lowY - box_.lowY + unit) >> shiftY_;
             row < rows_ && BottomOf(row) < e.highY; ++row) {
            const std::int64_t rise = BottomOf(row) - e.lowY;
            const std::int64_t height = e.highY - e.lowY;
            const Wide along = static_cast<Wide>(e.highX - e.lowX) * rise - 1;
            const Wide whole = along / height - (along % height < 0);
            const std::int64_t lastX = e.lowX + (rise > 0 ? static_cast<std::int64_t>(whole) : 0);
            const std::int64_t column = ((lastX + 1 - box_.lowX) >> shiftX_) - 1;
            if (column >= 0)
                cells_[static_cast<std::size_t>(std::min(column, columns_ - 1) * rows_ + row)] ^= 1;
        }
    }
    for (auto i = static_cast<std::int64_t>(cells_.size()) - rows_ - 1; i >= 0; --i)
        cells_[static_cast<std::size_t>(i)] ^= cells_[static_cast<std::size_t>(i + rows_)];
}

// What a listed edge says about a point of a cell whose last column is `right`. Going up inside the cell, the
// number of crossings with the edges that are not listed changes only where one of them ends to the right of
// the cell in a vertex shared with a listed one; all other ends there come in pairs. So each listed edge
// answers for its own ends to the right.
template <class Wide>
bool RegionGrid<Wide>::Relative(const RegionEdge& e, std::int64_t x, std::int64_t y,
                                std::int64_t right) const {
    return Crosses<Wide>(e, x, y) ^ ((e.lowX > right) & (y >= e.lowY)) ^ ((e.highX > right) & (y >= e.highY));
}

// Sorts the touches into a list per cell and takes the listed edges out of the cell's parity.
template <class Wide>
void RegionGrid<Wide>::ListEdges() {
    for (const Touch& touch : touches_) cells_[touch.cell] += 2;
    std::uint32_t lists = 0;
    listStart_.assign(1, 0);
    for (std::uint32_t& cell : cells_) {
        if (cell < 2) continue;
        listStart_.push_back(listStart_.back() + (cell >> 1));
        cell = (++lists << 1) | (cell & 1);
    }
    listed_.resize(touches_.size());
    std::vector<std::uint32_t> next(listStart_.begin(), listStart_.end() - 1);
    for (const Touch& touch : touches_) {
        std::uint32_t& cell = cells_[touch.cell];
        const std::int64_t right = RightOf(touch.cell / rows_);
        cell ^= static_cast<std::uint32_t>(
            Relative(edges_[touch.edge], right, BottomOf(touch.cell % rows_), right));
        listed_[next[(cell >> 1) - 1]++] = touch.edge;
    }
    touches_ = {};
}

template <class Wide>
bool RegionGrid<Wide>::InListedCell(std::int64_t x, std::int64_t y, std::uint32_t cell) const {
    const std::int64_t right = RightOf((x - box_.lowX) >> shiftX_);
    bool odd = cell & 1;
    for (std::uint32_t i = listStart_[(cell >> 1) - 1]; i < listStart_[cell >> 1]; ++i)
        odd ^= Relative(edges_[listed_[i]], x, y, right);
    return odd;
}

template <class Wide>
void RegionGrid<Wide>::Contain(const CPoint* points, long n, unsigned char* inside) const {
    const auto width = static_cast<std::uint64_t>(box_.highX - box_.lowX);
    const auto height = static_cast<std::uint64_t>(box_.highY - box_.lowY);
    for (long i = 0; i < n; ++i) {
        const auto x = static_cast<std::uint64_t>(points[i].x - box_.lowX);
        const auto y = static_cast<std::uint64_t>(points[i].y - box_.lowY);
        if ((x > width) | (y > height)) {
            inside[i] = 0;
            continue;
        }
        const std::uint32_t cell = cells_[static_cast<std::size_t>(
            (x >> shiftX_) * static_cast<std::uint64_t>(rows_) + (y >> shiftY_))];
        inside[i] =
            cell < 2 ? static_cast<unsigned char>(cell) : InListedCell(points[i].x, points[i].y, cell);
    }
}

template class RegionGrid<std::int64_t>;
__extension__ typedef __int128 Int128;
template class RegionGrid<Int128>;
