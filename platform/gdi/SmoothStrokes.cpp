#include "platform/gdi/SmoothStrokes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/core/Cpu.h"

namespace {

#define TAVIN_INLINE inline __attribute__((always_inline))

constexpr int kAtOnce = SubpixelGrid::kAtOnce;
constexpr int kFine = 256;              // parts of a sub-row
constexpr int kUncovered = -(1 << 28);  // the half height of a column that a tip does not cover
constexpr double kFarthest = 1 << 27;   // from here on y in such parts is just far away

// Added to a y in parts of a sub-row before they are cut off, it gives the first sub-row whose middle is not
// above: for each sub-column of a pixel, and on for kAtOnce more.
constexpr int FirstBelow(int column) {
    constexpr int kTurns[kSubpixels] = {0, 4, 2, 6, 1, 5, 3, 7};
    const int stagger = kTurns[column % kSubpixels] * (kFine / kSubpixels) - 7 * kFine / 16;
    return kFine / 2 - 1 - stagger;
}
struct Staggers {
    int at[kSubpixels + kAtOnce];
    constexpr Staggers() : at{} {
        for (int i = 0; i < kSubpixels + kAtOnce; ++i) at[i] = FirstBelow(i);
    }
};
constexpr Staggers kStaggers;

typedef std::int32_t Eight __attribute__((vector_size(32)));
typedef long long Four __attribute__((vector_size(32)));
struct Sixteen {
    Eight half[2];
};

TAVIN_INLINE void Load(Eight& to, const int* from) { std::memcpy(&to, from, sizeof to); }

TAVIN_INLINE bool Any(const Eight& lanes) {
    const Four all = (Four)lanes;
    return (all[0] | all[1] | all[2] | all[3]) != 0;
}

// Both in parts of a sub-row; sub-rows counted from the grid's top.
TAVIN_INLINE void ToSubRows(Eight& from, Eight& to, int column, int top) {
    Eight below;
    Load(below, kStaggers.at + column % kSubpixels);
    from = ((from + below) >> 8) - top;
    to = ((to + below) >> 8) - top;
}

// A stroke under way: the grid as local values.
struct Board {
    SubpixelGrid& grid;
    int* coveredFrom;
    int* coveredTo;
    int left, top, columns, rows;

    explicit Board(SubpixelGrid& g)
        : grid(g),
          coveredFrom(g.CoveredFrom()),
          coveredTo(g.CoveredTo()),
          left(g.Left()),
          top(g.Top()),
          columns(g.Right() - g.Left()),
          rows(g.Bottom() - g.Top()) {}
};

// Widens the last spans of kAtOnce sub-columns by spans that touch them, and begins those that do not.
TAVIN_INLINE void Widen(const Board& board, int column, const Sixteen& from, const Sixteen& to) {
    for (int h = 0; h < 2; ++h) {
        int* const coveredFrom = board.coveredFrom + column + 8 * h;
        int* const coveredTo = board.coveredTo + column + 8 * h;
        const Eight &a = from.half[h], &b = to.half[h];
        Eight knownFrom, knownTo;
        Load(knownFrom, coveredFrom);
        Load(knownTo, coveredTo);
        const Eight news = ((a < knownFrom) | (b > knownTo)) & (a < b);
        const Eight apart = ((b < knownFrom) | (a > knownTo)) & news;
        const Eight touching = news & ~apart;
        knownFrom = touching & (a < knownFrom) ? a : knownFrom;
        knownTo = touching & (b > knownTo) ? b : knownTo;
        std::memcpy(coveredFrom, &knownFrom, sizeof knownFrom);
        std::memcpy(coveredTo, &knownTo, sizeof knownTo);
        if (!Any(apart)) continue;
        for (int i = 0; i < 8; ++i)
            if (apart[i]) board.grid.Begin(column + 8 * h + i, a[i], b[i]);
    }
}

// Spans of kAtOnce sub-columns. Most are covered already where a picture is dense: that costs one comparison
// of vectors.
TAVIN_INLINE void AddSpans(const Board& board, int column, Sixteen& from, Sixteen& to) {
    int* const coveredFrom = board.coveredFrom + column;
    int* const coveredTo = board.coveredTo + column;
    Eight news{};
    for (int h = 0; h < 2; ++h) {
        Eight &a = from.half[h], &b = to.half[h];
        Eight knownFrom, knownTo;
        Load(knownFrom, coveredFrom + 8 * h);
        Load(knownTo, coveredTo + 8 * h);
        a = a < 0 ? Eight{} : a;
        b = b > board.rows ? Eight{} + board.rows : b;
        news |= ((a < knownFrom) | (b > knownTo)) & (a < b);
    }
    if (Any(news)) Widen(board, column, from, to);
}

// An upright stroke on a line of the lattice; x in sub-pixels, y in parts of a sub-row.
TAVIN_INLINE void Upright(const Board& board, const RoundTip& tip, int x, int low, int high) {
    for (int k = 0; k < 2 * tip.Reach(); k += kAtOnce) {
        const int device = x - tip.Reach() + k, column = device - board.left;
        if (column <= -kAtOnce || column >= board.columns) continue;
        Sixteen from, to;
        for (int h = 0; h < 2; ++h) {
            Eight half;
            Load(half, tip.HalfHeights() + k + 8 * h);
            from.half[h] = low - half;
            to.half[h] = high + half;
            ToSubRows(from.half[h], to.half[h], (device & (kSubpixels - 1)) + 8 * h, board.top);
        }
        AddSpans(board, column, from, to);
    }
}

struct Segment {
    double x, y, length, rise;  // from (x, y) to (x + length, y + rise * length), length > 0
    double across, along;       // from the middle line to the upper edge: down the y axis and along x
};

// The strokes at either end of a segment are the tips there, so that only the rectangle between is left.
// Where the tip that reaches farthest down (up) is that of an end, the span has only to come to that end's
// middle.
template <class T>
TAVIN_INLINE void SegmentSpans(const Board& board, const Segment& segment, int device) {
    typedef T Lanes __attribute__((vector_size(8 * sizeof(T))));
    const Lanes zero{}, length = zero + T(segment.length);
    const T rise = T(segment.rise), y = T(segment.y), along = T(segment.along), across = T(segment.across);
    const T start = T(device + 0.5 - segment.x);
    const Lanes highest = zero + T(board.top - kSubpixels),
                lowest = zero + T(board.top + board.rows + kSubpixels);
    Sixteen from, to;
    for (int h = 0; h < 2; ++h) {
        const Lanes at = Lanes{0, 1, 2, 3, 4, 5, 6, 7} + (start + T(8 * h));
        const Lanes below = at + along, above = at - along;
        Lanes belowInside = below < 0 ? zero : below, aboveInside = above < 0 ? zero : above;
        belowInside = belowInside > length ? length : belowInside;
        aboveInside = aboveInside > length ? length : aboveInside;
        Lanes bottom = y + rise * belowInside + (belowInside == below ? zero + across : zero);
        Lanes top = y + rise * aboveInside - (aboveInside == above ? zero + across : zero);
        top = top < highest ? highest : top;
        top = top > lowest ? lowest : top;
        bottom = bottom < highest ? highest : bottom;
        bottom = bottom > lowest ? lowest : bottom;
        from.half[h] = __builtin_convertvector(top * T(kFine), Eight);
        to.half[h] = __builtin_convertvector(bottom * T(kFine), Eight);
        ToSubRows(from.half[h], to.half[h], (device & (kSubpixels - 1)) + 8 * h, board.top);
    }
    AddSpans(board, device - board.left, from, to);
}

TAVIN_INLINE void DrawSegment(const Board& board, double radius, double xa, double ya, double xb, double yb) {
    if (xb < xa) {
        std::swap(xa, xb);
        std::swap(ya, yb);
    }
    double from = std::max(xa - radius, double(board.left));
    double to = std::min(xb + radius, double(board.left + board.columns));
    const double high = board.top - radius - 1.0, low = board.top + board.rows + radius + 1.0;
    if (!(from < to) || !(xa < xb) || std::max(ya, yb) < high || std::min(ya, yb) > low) return;
    const double length = xb - xa, rise = (yb - ya) / length, slant = std::sqrt(1.0 + rise * rise);
    if (rise != 0.0) {  // above and below the grid there is nothing to draw
        const double atHigh = xa + (high - ya) / rise, atLow = xa + (low - ya) / rise;
        from = std::max(from, std::min(atHigh, atLow) - 2.0 * radius);
        to = std::min(to, std::max(atHigh, atLow) + 2.0 * radius);
        if (!(from < to)) return;
    }
    const Segment segment{xa, ya, length, rise, radius / slant, radius * rise / slant};
    // Up to here floats are as good as the parts of a sub-row. The same for every grid.
    constexpr double kNear = 30000;
    const bool near =
        std::abs(xa) < kNear && std::abs(xb) < kNear && std::abs(ya) < kNear && std::abs(yb) < kNear;
    const int end = static_cast<int>(std::ceil(to));
    for (int device = static_cast<int>(std::floor(from)); device < end; device += kAtOnce) {
        if (near)
            SegmentSpans<float>(board, segment, device);
        else
            SegmentSpans<double>(board, segment, device);
    }
}

TAVIN_INLINE int InParts(double y) { return static_cast<int>(std::clamp(y * kFine, -kFarthest, kFarthest)); }

TAVIN_INLINE void UprightAt(const Board& board, const StrokePlan& plan, const RoundTip& tip, double x,
                            std::int32_t low, std::int32_t high) {
    if (x <= board.left - tip.Reach() || x >= board.left + board.columns + tip.Reach()) return;
    const int a = InParts(plan.rows.At(low)), b = InParts(plan.rows.At(high));
    Upright(board, tip, static_cast<int>(x), std::min(a, b), std::max(a, b));
}

// Whether the uprights at either end of a segment cover all of it: both reach beyond its ends by more than
// what their tips lack in the few columns between them.
TAVIN_INLINE bool IsHidden(const LineRun& before, const LineRun& run, double columns, double rowsPerUnit) {
    constexpr double kFarthestApart = 4.0, kMargin = 1.0;
    if (before.single || run.single || std::abs(columns) > kFarthestApart) return false;
    const std::int32_t low = std::min(before.last.y, run.first.y),
                       high = std::max(before.last.y, run.first.y);
    const double below = double(low) - std::max(before.low, run.low);
    const double above = std::min(before.high, run.high) - double(high);
    return std::min(below, above) * rowsPerUnit >= kMargin;
}

TAVIN_INLINE void Runs(SubpixelGrid& grid, const StrokePlan& plan, std::span<const LineRun> runs, bool last) {
    const Board board(grid);
    const auto device = [&](std::int32_t x) { return plan.columns.Column(x) + plan.columns.Shift(); };
    const double rowsPerUnit = std::abs(plan.rows.At(1) - plan.rows.At(0));
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const LineRun& run = runs[i];
        const bool isLast = i + 1 == runs.size();
        if (run.joined && i > 0) {
            const LineRun& before = runs[i - 1];
            const double from = device(before.last.x), to = device(run.first.x);
            if (!IsHidden(before, run, to - from, rowsPerUnit))
                DrawSegment(board, plan.line.Radius(), from, plan.rows.At(before.last.y), to,
                            plan.rows.At(run.first.y));
        }
        if (isLast && !last) break;
        const bool alone = run.single && !run.joined && (isLast || !runs[i + 1].joined);
        UprightAt(board, plan, alone ? plan.lone : plan.line, device(run.first.x), run.low, run.high);
    }
}

TAVIN_INLINE void Tips(SubpixelGrid& grid, const StrokePlan& plan, const CPoint* points, std::size_t count,
                       const StatusFilter& which) {
    const Board board(grid);
    const double shift = plan.columns.Shift();
    for (std::size_t i = 0; i < count; ++i)
        if (which.Takes(i))
            UprightAt(board, plan, plan.lone, plan.columns.Column(points[i].x) + shift, points[i].y,
                      points[i].y);
}

#ifdef __x86_64__
__attribute__((target("avx2"))) void RunsAvx2(SubpixelGrid& grid, const StrokePlan& plan,
                                              std::span<const LineRun> runs, bool last) {
    Runs(grid, plan, runs, last);
}

__attribute__((target("avx2"))) void TipsAvx2(SubpixelGrid& grid, const StrokePlan& plan,
                                              const CPoint* points, std::size_t count,
                                              const StatusFilter& which) {
    Tips(grid, plan, points, count, which);
}
#endif

}  // namespace

RoundTip::RoundTip(double radius) : radius_(std::max(radius, kSubpixels / 2.0)) {
    reach_ = static_cast<int>(std::ceil(radius_));
    const int columns = 2 * reach_;
    for (int k = 0; k < (columns + kAtOnce - 1) / kAtOnce * kAtOnce; ++k) {
        const double aside = k + 0.5 - reach_;
        const double square = radius_ * radius_ - aside * aside;
        halfHeights_.push_back(k < columns && square > 0 ? static_cast<int>(kFine * std::sqrt(square))
                                                         : kUncovered);
    }
}

void DrawRuns(SubpixelGrid& grid, const StrokePlan& plan, std::span<const LineRun> runs, bool last) {
#ifdef __x86_64__
    if (HasAvx2()) return RunsAvx2(grid, plan, runs, last);
#endif
    Runs(grid, plan, runs, last);
}

void DrawTips(SubpixelGrid& grid, const StrokePlan& plan, const CPoint* points, std::size_t count,
              const StatusFilter& which) {
#ifdef __x86_64__
    if (HasAvx2()) return TipsAvx2(grid, plan, points, count, which);
#endif
    Tips(grid, plan, points, count, which);
}
