#include "views/GraphLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/gdi/CDC.h"

namespace {

constexpr int kMostTiles = 1000;

int ToPixel(double logical, int windowOrg, int windowExt, int viewportOrg, int viewportExt) {
    return AddSaturated(RoundHalfAway((logical - windowOrg) * viewportExt / windowExt), viewportOrg);
}

int LengthToLogical(int pixels, int windowExt, int viewportExt) {
    return RoundHalfAway(std::abs(double{1.0} * pixels * windowExt / viewportExt));
}

}  // namespace

PlotMargins MarginsFor(CSize yLabel, int yAxisPos) {
    const int width = TruncateToInt32(1.1 * yLabel.cx);
    const int axisSide = yLabel.cy / 2 + width;
    const int otherSide = 2 * yLabel.cy;
    PlotMargins margins{0, otherSide, 0, otherSide};
    if (yAxisPos == 0) {
        margins.left = axisSide;
        margins.right = otherSide;
    } else if (yAxisPos == 2) {
        margins.left = otherSide;
        margins.right = axisSide;
    }
    return margins;
}

CRect PlotAreaOf(CRect tile, const PlotMargins& margins) {
    const int left = AddSaturated(tile.left, margins.left);
    const int top = AddSaturated(tile.top, margins.top);
    return {left, top, std::max(SubtractSaturated(tile.right, margins.right), AddSaturated(left, 1)),
            std::max(SubtractSaturated(tile.bottom, margins.bottom), AddSaturated(top, 1))};
}

TileGrid::TileGrid(int columnCount, int rowCount, int sourceCountPerTile)
    : columns(std::clamp(columnCount, 1, kMostTiles)),
      rows(std::clamp(rowCount, 1, kMostTiles)),
      sourcesPerTile(std::max(sourceCountPerTile, 1)) {}

int TileGrid::PageCount(std::size_t sourceCount) const {
    if (sourceCount == 0) return 1;
    return static_cast<int>((sourceCount - 1) / static_cast<std::size_t>(SourcesPerPage())) + 1;
}

CPoint TileGrid::TileOffset(int tile, CSize tileSize) const {
    return {SaturateToInt32(std::int64_t{tile % columns} * tileSize.cx),
            SaturateToInt32(std::int64_t{tile / columns} * tileSize.cy)};
}

CPoint LegendPosition(CPoint corner, CSize plot, CSize legend, int lines, int xAxisPos, int yAxisPos) {
    const bool atRight = yAxisPos != 2;
    const bool atBottom = atRight ? xAxisPos == 0 : xAxisPos != 2;
    const auto right = std::int64_t{corner.x} + plot.cx - legend.cx;
    const auto lowest = std::int64_t{corner.y} + plot.cy - std::int64_t{lines} * legend.cy;
    return {atRight ? SaturateToInt32(right) : corner.x, atBottom ? SaturateToInt32(lowest) : corner.y};
}

void KeepWhole(std::vector<LabelSpan>& labels, int left, int right) {
    if (labels.empty()) return;
    const auto begin = [](const LabelSpan& label) { return label.centre - label.width / 2; };
    const auto end = [&](const LabelSpan& label) { return begin(label) + label.width; };
    const std::size_t count = labels.size();
    LabelSpan& first = labels.front();
    const int moveRight = left - begin(first);
    if (moveRight > 0 && (count < 2 || end(first) + moveRight < begin(labels[1]))) first.centre += moveRight;
    LabelSpan& last = labels.back();
    const int moveLeft = end(last) - right;
    if (moveLeft > 0 && (count < 2 || begin(last) - moveLeft > end(labels[count - 2])))
        last.centre -= moveLeft;
}

PlotMap::PlotMap(const CDC& dc)
    : windowOrg_(dc.GetWindowOrg()),
      windowExt_(dc.GetWindowExt()),
      viewportOrg_(dc.GetViewportOrg()),
      viewportExt_(dc.GetViewportExt()) {}

int PlotMap::X(double logical) const {
    return ToPixel(logical, windowOrg_.x, windowExt_.cx, viewportOrg_.x, viewportExt_.cx);
}

int PlotMap::Y(double logical) const {
    return ToPixel(logical, windowOrg_.y, windowExt_.cy, viewportOrg_.y, viewportExt_.cy);
}

CRect PlotMap::Area() const {
    const int right = AddSaturated(viewportOrg_.x, viewportExt_.cx);
    // A window extent below 0 turns the axis round: its origin lies at the plot's bottom.
    const int end = AddSaturated(viewportOrg_.y, windowExt_.cy < 0 ? -viewportExt_.cy : viewportExt_.cy);
    return {std::min(viewportOrg_.x, right), std::min(viewportOrg_.y, end), std::max(viewportOrg_.x, right),
            std::max(viewportOrg_.y, end)};
}

CSize PlotMap::ToLogical(CSize pixels) const {
    return {LengthToLogical(pixels.cx, windowExt_.cx, viewportExt_.cx),
            LengthToLogical(pixels.cy, windowExt_.cy, viewportExt_.cy)};
}
