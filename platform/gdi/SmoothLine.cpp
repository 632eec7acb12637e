#include "platform/gdi/SmoothLine.h"

#include <algorithm>

#include "platform/gdi/PixelAxis.h"
#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/SmoothStrokes.h"

namespace {

// Bytes of the largest grid. Larger pictures are drawn in strips.
constexpr int kLargestGrid = 1 << 24;
// Runs that are drawn together, where none are kept.
constexpr std::size_t kBatch = 1024;

// Fresh memory costs more than what is drawn on it.
SubpixelGrid& Grid() {
    thread_local SubpixelGrid grid;
    return grid;
}

// Draws with draw(grid), which must not throw, strip by strip.
template <class Draw>
void InStrips(const Canvas& canvas, std::uint32_t pixel, Draw&& draw) {
    const CRect& clip = canvas.clip;
    const int width = std::max(64, kLargestGrid / kSubpixels / (clip.Height() + 128));
    SubpixelGrid& grid = Grid();
    for (LONG left = clip.left; left < clip.right; left += width) {
        grid.Cover({left, clip.top, std::min(clip.right, left + width), clip.bottom});
        draw(grid);
        grid.Blend(canvas, pixel);
    }
}

StrokePlan PlanOf(const SubpixelColumns& columns, const SubpixelRows& rows, const SmoothPen& pen) {
    return {columns, rows, RoundTip(pen.width * kSubpixels / 2.0),
            RoundTip(pen.loneWidth * kSubpixels / 2.0)};
}

// The logical coordinates from which a stroke can reach the canvas.
SubpixelColumns::Interval WindowOf(const Canvas& canvas, const StrokePlan& plan) {
    const double reach = std::max(plan.line.Reach(), plan.lone.Reach()) + 1.0, shift = plan.columns.Shift();
    return plan.columns.LogicalOf(canvas.clip.left * double(kSubpixels) - reach - shift,
                                  canvas.clip.right * double(kSubpixels) + reach - shift);
}

// Draws the runs as they are found; those left at the end of a batch begin the next one.
void DrawWalk(SubpixelGrid& grid, const StrokePlan& plan, RunWalk walk, std::vector<LineRun>& batch) {
    batch.clear();
    for (LineRun run{}; walk.Next(run);) {
        batch.push_back(run);
        if (batch.size() < kBatch) continue;
        DrawRuns(grid, plan, batch, false);
        batch.assign(1, run);
    }
    DrawRuns(grid, plan, batch, true);
}

}  // namespace

bool CanDrawSmooth(const Canvas& canvas) {
    return std::max(canvas.clip.right, canvas.clip.bottom) <= PixelAxis::kLargestPicture;
}

void DrawSmoothLine(const Canvas& canvas, const Mapping& mapping, const LinePoints& line,
                    const SmoothPen& pen, KeptRuns* kept) {
    const SubpixelColumns columns(mapping.x);
    const SubpixelRows rows(mapping.y);
    const StrokePlan plan = PlanOf(columns, rows, pen);
    const SubpixelColumns::Interval window = WindowOf(canvas, plan);
    const bool ordered = line.pyramid && line.pyramid->XOrder() != PointPyramid::Order::None;
    if (ordered && kept) {
        const PointPyramid::Stretch seen = line.pyramid->Within(window.left, window.right);
        const std::span<const LineRun> runs = kept->Find(line, columns, seen.begin, seen.end);
        return InStrips(canvas, pen.pixel, [&](SubpixelGrid& grid) { DrawRuns(grid, plan, runs, true); });
    }
    std::vector<LineRun> batch;
    batch.reserve(kBatch);
    InStrips(canvas, pen.pixel, [&](SubpixelGrid& grid) {
        DrawWalk(grid, plan, RunWalk(line, columns, window, 0, line.count, false), batch);
    });
}

void DrawSmoothDots(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                    const StatusFilter& which, const SmoothPen& pen) {
    const SubpixelColumns columns(mapping.x);
    const SubpixelRows rows(mapping.y);
    const StrokePlan plan = PlanOf(columns, rows, pen);
    InStrips(canvas, pen.pixel, [&](SubpixelGrid& grid) { DrawTips(grid, plan, points, count, which); });
}
