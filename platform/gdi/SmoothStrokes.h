// Strokes of a round tip on a grid of sub-pixels. A sub-pixel is covered when its middle lies inside; within
// a pixel the middles of neighbouring sub-columns are staggered by eighths of a sub-row, so that lines that
// are nearly level have 64 shades and not eight.
#pragma once

#include <span>
#include <vector>

#include "platform/gdi/LineRuns.h"
#include "platform/gdi/SubpixelGrid.h"

class RoundTip {
  public:
    // In sub-pixels, at least half a pixel.
    explicit RoundTip(double radius);

    double Radius() const { return radius_; }
    // The sub-columns that the tip covers at either side of its middle.
    int Reach() const { return reach_; }
    // Half the heights of those columns from the left, in 1/256 of a sub-row, filled up to a multiple of
    // SubpixelGrid::kAtOnce with columns that it does not cover.
    const int* HalfHeights() const { return halfHeights_.data(); }

  private:
    double radius_;
    int reach_;
    std::vector<int> halfHeights_;
};

struct StrokePlan {
    const SubpixelColumns& columns;
    const SubpixelRows& rows;
    RoundTip line;
    RoundTip lone;  // of points that no segment leads to or from
};

// Draws the runs and the segments between them. Unless `last`, the stroke of the last run is left for the
// next call, which begins with that run.
void DrawRuns(SubpixelGrid& grid, const StrokePlan& plan, std::span<const LineRun> runs, bool last);

// Draws the lone tip at each point that the filter takes.
void DrawTips(SubpixelGrid& grid, const StrokePlan& plan, const CPoint* points, std::size_t count,
              const StatusFilter& which);
