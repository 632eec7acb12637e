#include "platform/gdi/Hairline.h"

#include <cstdlib>
#include <span>

namespace {

// Pixels in a dash and in the gap behind it, in turn.
constexpr int kSolid[] = {1};
constexpr int kDash[] = {18, 6};
constexpr int kDot[] = {3, 3};
constexpr int kDashDot[] = {9, 6, 3, 6};
constexpr int kDashDotDot[] = {9, 3, 3, 3, 3, 3};

constexpr std::span<const int> Pattern(int style) {
    switch (style) {
        case PS_DASH:
            return kDash;
        case PS_DOT:
            return kDot;
        case PS_DASHDOT:
            return kDashDot;
        case PS_DASHDOTDOT:
            return kDashDotDot;
        default:
            return kSolid;
    }
}

// A bit for each pixel of the pattern, set in a dash.
struct DashMask {
    std::uint64_t bits = 0;
    int length = 0;
};

constexpr DashMask MakeMask(int style) {
    DashMask mask;
    bool on = true;
    for (const int run : Pattern(style)) {
        for (int i = 0; i < run; ++i) mask.bits |= std::uint64_t{on} << mask.length++;
        on = !on;
    }
    return mask;
}

constexpr DashMask kMasks[] = {MakeMask(PS_SOLID), MakeMask(PS_DASH), MakeMask(PS_DOT), MakeMask(PS_DASHDOT),
                               MakeMask(PS_DASHDOTDOT)};

// A line seen along the axis on which it is longer: step i of `length` moves one pixel along the major axis
// and round(i * rise / length) pixels along the minor one.
struct Line {
    std::int64_t major, minor;                              // where it starts
    std::int64_t length, rise;                              // neither negative
    int majorStep, minorStep;                               // 1 or -1
    std::int64_t majorLow, majorHigh, minorLow, minorHigh;  // what is visible, high included
    std::int64_t first, last;                               // steps drawn
};

__extension__ using Wide = __int128;  // 2 * length * rise needs 66 bits

// The first step that has moved `distance` (at least 1) pixels along the minor axis.
std::int64_t StepReaching(const Line& line, std::int64_t distance) {
    const Wide doubled = (Wide{2} * distance - 1) * line.length;
    return static_cast<std::int64_t>((doubled + 2 * line.rise - 1) / (2 * line.rise));
}

// Narrows the steps to the visible ones. False when there are none.
bool Clip(Line& line) {
    const bool forward = line.majorStep > 0;
    line.first =
        std::max<std::int64_t>(0, forward ? line.majorLow - line.major : line.major - line.majorHigh);
    line.last = std::min(line.length - 1, forward ? line.majorHigh - line.major : line.major - line.majorLow);
    if (line.first > line.last) return false;
    const bool rising = line.minorStep > 0;
    const std::int64_t enter = rising ? line.minorLow - line.minor : line.minor - line.minorHigh;
    const std::int64_t leave = rising ? line.minorHigh + 1 - line.minor : line.minor - line.minorLow + 1;
    if (enter > line.rise || leave <= 0) return false;
    if (enter > 0) line.first = std::max(line.first, StepReaching(line, enter));
    if (leave <= line.rise) line.last = std::min(line.last, StepReaching(line, leave) - 1);
    return line.first <= line.last;
}

Line MakeLine(CPoint a, CPoint b, const CRect& clip) {
    const std::int64_t dx = std::int64_t{b.x} - a.x, dy = std::int64_t{b.y} - a.y;
    const int stepX = dx < 0 ? -1 : 1, stepY = dy < 0 ? -1 : 1;
    if (std::llabs(dx) >= std::llabs(dy))
        return {a.x,
                a.y,
                std::llabs(dx),
                std::llabs(dy),
                stepX,
                stepY,
                clip.left,
                clip.right - std::int64_t{1},
                clip.top,
                clip.bottom - std::int64_t{1},
                0,
                0};
    return {a.y,
            a.x,
            std::llabs(dy),
            std::llabs(dx),
            stepY,
            stepX,
            clip.top,
            clip.bottom - std::int64_t{1},
            clip.left,
            clip.right - std::int64_t{1},
            0,
            0};
}

// Walks the visible steps: visit(pixel) for each.
template <class Visit>
void Walk(const Line& line, std::uint32_t* start, std::ptrdiff_t majorDelta, std::ptrdiff_t minorDelta,
          std::int64_t error, Visit&& visit) {
    const std::int64_t full = 2 * line.length, rise = 2 * line.rise;
    std::uint32_t* pixel = start;
    for (std::int64_t i = line.first; i < line.last; ++i) {
        visit(*pixel);
        pixel += majorDelta;
        error += rise;
        if (error < full) continue;
        error -= full;
        pixel += minorDelta;
    }
    visit(*pixel);  // no step behind the last pixel: it could leave the picture
}

}  // namespace

bool IsDash(int style, std::int64_t phase) {
    const DashMask& mask = kMasks[style];
    return mask.bits >> (phase % mask.length) & 1;
}

void DrawHairline(const Canvas& canvas, CPoint a, CPoint b, const HairPen& pen, std::int64_t& phase) {
    Line line = MakeLine(a, b, canvas.clip);
    const std::int64_t phaseAtStart = phase;
    const DashMask mask = kMasks[pen.style];
    phase = (phase + line.length) % mask.length;
    if (line.length == 0 || !Clip(line)) return;

    const Wide travelled = Wide{2} * line.first * line.rise + line.length;
    std::int64_t minorMoved = 0, error = line.length;  // without division for lines that start inside
    if (line.first > 0) {
        minorMoved = static_cast<std::int64_t>(travelled / (2 * line.length));
        error = static_cast<std::int64_t>(travelled % (2 * line.length));
    }
    const bool alongX = std::llabs(std::int64_t{b.x} - a.x) >= std::llabs(std::int64_t{b.y} - a.y);
    const std::int64_t major = line.major + line.majorStep * line.first;
    const std::int64_t minor = line.minor + line.minorStep * minorMoved;
    std::uint32_t* const start = alongX ? canvas.Row(minor) + major : canvas.Row(major) + minor;
    const std::ptrdiff_t majorDelta = line.majorStep * (alongX ? 1 : canvas.stride);
    const std::ptrdiff_t minorDelta = line.minorStep * (alongX ? canvas.stride : 1);

    WithOperation(pen.operation, [&](auto put) {
        if (pen.style == PS_SOLID)
            return Walk(line, start, majorDelta, minorDelta, error,
                        [&](std::uint32_t& q) { put(q, pen.pixel); });
        int at = static_cast<int>((phaseAtStart + line.first) % mask.length);
        Walk(line, start, majorDelta, minorDelta, error, [&](std::uint32_t& q) {
            const bool on = mask.bits >> at & 1;
            if (++at == mask.length) at = 0;
            if (on || pen.drawGaps) put(q, on ? pen.pixel : pen.gapPixel);
        });
    });
}
