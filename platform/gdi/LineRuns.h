// Smooth lines, reduced to what can be told apart: consecutive points in one column of sub-pixels make a run,
// which is an upright stroke from the least to the greatest y.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/gdi/ColumnScan.h"
#include "platform/gdi/LineBreaks.h"
#include "platform/gdi/StatusFilter.h"

class PointPyramid;

struct LineRun {
    CPoint first, last;      // logical
    std::int32_t low, high;  // of y
    std::uint32_t begin;     // index of the first point
    bool joined;             // a segment leads here from the run before
    bool single;             // of one point
};

// The points of a line and what they are drawn with.
struct LinePoints {
    const CPoint* points;
    std::size_t count;
    StatusFilter which;
    LineBreaks breaks;
    const PointPyramid* pyramid;  // of these points, or null

    std::size_t NextTaken(std::size_t i, std::size_t end) const {
        while (i < end && !which.Takes(i)) ++i;
        return i;
    }
    // The last point taken of those from `begin` to `end`; `end` when there is none.
    std::size_t LastTaken(std::size_t begin, std::size_t end) const {
        for (std::size_t i = end; i-- > begin;)
            if (which.Takes(i)) return i;
        return end;
    }
};

// Goes through the runs of a stretch of points in order.
class RunWalk {
  public:
    // Points whose x lies outside `window` at the same side count as one column. `joined`: a segment leads to
    // the first point.
    RunWalk(const LinePoints& line, const SubpixelColumns& columns, SubpixelColumns::Interval window,
            std::size_t begin, std::size_t end, bool joined);

    // False at the end.
    bool Next(LineRun& run);

  private:
    std::size_t PieceEnd();
    // Takes the points into a run that lie in the column of x.
    void Take(std::int32_t x, std::size_t end, RunScan& scan) const;

    const LinePoints& line_;
    ColumnWindow window_;
    std::size_t next_, end_;
    bool joined_;
    int break_;  // no break before it lies behind next_
};

// The runs of a line as it was drawn last, for a view that pans over unchanged points. Whoever keeps them
// forgets them when points, status words or breaks may have changed.
class KeptRuns {
  public:
    // The runs of the points from `begin` to `end` and of some more: out of sight the first one may lack
    // points at its beginning and the last one at its end. x must not turn back. The runs are true until the
    // next call. Throws when memory is short, with what was kept as before.
    std::span<const LineRun> Find(const LinePoints& line, const SubpixelColumns& columns, std::size_t begin,
                                  std::size_t end);
    void Forget() { runs_.clear(); }

  private:
    bool IsUseful(const LinePoints& line, const SubpixelColumns& columns, std::size_t begin,
                  std::size_t end) const;

    std::vector<LineRun> runs_;
    std::optional<SubpixelColumns> columns_;
    LinePoints line_{};
};
