#include "platform/gdi/Polyline.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/gdi/PixelAxis.h"
#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/PointRuns.h"

namespace {

// Below this many points finding the borders of the pixel columns costs more than it saves.
constexpr std::size_t kWorthReducing = 4096;
// This many points of a run are looked at one by one before whole blocks are.
constexpr std::size_t kProbe = 8;

void DrawEverySegment(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                      const StatusFilter& which, const HairPen& pen) {
    std::int64_t phase = 0;
    std::size_t i = 0;
    while (i < count && !which.Takes(i)) ++i;
    if (i == count) return;
    CPoint from = mapping.ToDevice(points[i]);
    for (++i; i < count; ++i) {
        if (!which.Takes(i)) continue;
        const CPoint to = mapping.ToDevice(points[i]);
        DrawHairline(canvas, from, to, pen, phase);
        from = to;
    }
}

// Segments of a solid line that replaces pixels may be drawn in any order and any number of times. So the
// consecutive points that lie in one pixel column come down to one vertical stroke from the least to the
// greatest y, and only the segments from column to column are drawn as they are. The strokes are found in
// logical coordinates: a pixel column is an interval of x, and the conversion of y never turns back.
class ReducedPolyline {
  public:
    ReducedPolyline(const Canvas& canvas, const Mapping& mapping, const CPoint* points,
                    const StatusFilter& which, const HairPen& pen, const PointPyramid* pyramid)
        : canvas_(canvas),
          mapping_(mapping),
          points_(points),
          which_(which),
          pen_(pen),
          pyramid_(pyramid),
          axis_(mapping.x, canvas.clip.left, canvas.clip.right - 1) {
        columns_.reserve(static_cast<std::size_t>(canvas.clip.Width()));
        for (LONG x = canvas.clip.left; x < canvas.clip.right; ++x) columns_.push_back(axis_.LogicalOf(x));
    }

    void Draw(std::size_t count) {
        const std::size_t last = LastTaken(count);
        if (last == count) return;
        // The line stops in front of its last pixel, so that pixel's points at the end are no part of a
        // stroke.
        const CPoint end = mapping_.ToDevice(points_[last]);
        std::size_t strokes = last;
        for (std::size_t before = LastTaken(strokes); before != strokes; before = LastTaken(strokes)) {
            if (!(mapping_.ToDevice(points_[before]) == end)) break;
            strokes = before;
        }
        for (std::size_t i = NextTaken(0, strokes); i < strokes;) i = DrawRun(i, strokes);
        SegmentTo(end);
    }

  private:
    std::size_t NextTaken(std::size_t i, std::size_t end) const {
        while (i < end && !which_.Takes(i)) ++i;
        return i;
    }
    // The last point taken before `end`; `end` when there is none.
    std::size_t LastTaken(std::size_t end) const {
        for (std::size_t i = end; i-- > 0;)
            if (which_.Takes(i)) return i;
        return end;
    }

    PixelAxis::Interval Column(std::int32_t x) const {
        if (x < axis_.FirstKnown()) return {std::numeric_limits<std::int32_t>::min(), axis_.FirstKnown() - 1};
        if (x > axis_.LastKnown()) return {axis_.LastKnown() + 1, std::numeric_limits<std::int32_t>::max()};
        return columns_[static_cast<std::size_t>(axis_.Pixel(x) - canvas_.clip.left)];
    }

    // Draws the run of points that begins with i, and the segment that leads to it. Returns the first point
    // behind.
    std::size_t DrawRun(std::size_t i, std::size_t end) {
        const CPoint first = points_[i];
        const PixelAxis::Interval column = Column(first.x);
        const auto left = static_cast<std::int32_t>(column.first),
                   right = static_cast<std::int32_t>(column.last);
        RunScan scan{i + 1, first.y, first.y};
        while (ProbeInside(end, left, right, scan)) ScanInside(end, left, right, scan);
        SegmentTo(mapping_.ToDevice(first));
        if (axis_.Knows(first.x)) Stroke(first.x, scan.low, scan.high);
        at_ = mapping_.ToDevice(points_[LastTaken(scan.next)]);
        started_ = true;
        return scan.next;
    }

    // Looks at a few points one by one. False when the run ends there.
    bool ProbeInside(std::size_t end, std::int32_t left, std::int32_t right, RunScan& scan) const {
        const std::size_t stop = std::min(BlockEnd(scan.next, end), scan.next + kProbe);
        for (; scan.next < stop; ++scan.next) {
            if (!which_.Takes(scan.next)) continue;
            const CPoint p = points_[scan.next];
            if (p.x < left || p.x > right) return false;
            scan.low = std::min(scan.low, p.y);
            scan.high = std::max(scan.high, p.y);
        }
        return scan.next < end;
    }

    // With a pyramid no scan crosses the border of a block, so that the pyramid can take over there.
    std::size_t BlockEnd(std::size_t i, std::size_t end) const {
        return pyramid_ ? std::min(end, PointPyramid::BlockEnd(i)) : end;
    }

    void ScanInside(std::size_t end, std::int32_t left, std::int32_t right, RunScan& scan) const {
        const auto inside = [=](std::int32_t least, std::int32_t greatest) {
            return least >= left && greatest <= right;
        };
        if (pyramid_ && PointPyramid::BeginsBlock(scan.next)) pyramid_->SkipWhile(inside, end, scan);
        ScanBlocksInside(points_, BlockEnd(scan.next, end), which_, left, right, scan);
    }

    void SegmentTo(CPoint to) {
        std::int64_t phase = 0;
        if (started_) DrawHairline(canvas_, at_, to, pen_, phase);
    }

    void Stroke(std::int32_t x, std::int32_t low, std::int32_t high) const {
        const std::int32_t a = mapping_.y.ToDevice(low), b = mapping_.y.ToDevice(high);
        const std::int32_t top = std::max(std::min(a, b), canvas_.clip.top);
        const std::int32_t bottom = std::min(std::max(a, b), canvas_.clip.bottom - 1);
        if (top > bottom) return;
        std::uint32_t* pixel = canvas_.Row(top) + axis_.Pixel(x);
        *pixel = pen_.pixel;
        for (std::int32_t y = top; y < bottom; ++y) *(pixel += canvas_.stride) = pen_.pixel;
    }

    const Canvas& canvas_;
    const Mapping& mapping_;
    const CPoint* points_;
    const StatusFilter& which_;
    const HairPen& pen_;
    const PointPyramid* pyramid_;
    PixelAxis axis_;
    std::vector<PixelAxis::Interval> columns_;  // by pixel column from clip.left
    CPoint at_;                                 // device; where the line has come to
    bool started_ = false;
};

}  // namespace

void DrawPolyline(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, const HairPen& pen, const PointPyramid* pyramid) {
    const bool anyOrder = pen.style == PS_SOLID && pen.operation == R2_COPYPEN;
    const bool exact = canvas.clip.right <= PixelAxis::kLargestPicture;
    if (!anyOrder || !exact || count < kWorthReducing)
        return DrawEverySegment(canvas, mapping, points, count, which, pen);
    if (pyramid && !pyramid->Describes(points, count, which)) pyramid = nullptr;
    ReducedPolyline(canvas, mapping, points, which, pen, pyramid).Draw(count);
}
