// Smooth lines and dots. A pixel takes the colour in the share of its 64 sub-pixels that lie inside the union
// of all strokes, so that segments which cross or run over each other darken nothing. The picture is that of
// every segment drawn by itself, whatever is reduced on the way.
#pragma once

#include "platform/gdi/Canvas.h"
#include "platform/gdi/LineRuns.h"
#include "platform/gdi/Mapping.h"

struct SmoothPen {
    std::uint32_t pixel;
    double width;      // pixels
    double loneWidth;  // of the dot at a point that has no neighbour
};

// Whether a canvas is small enough.
bool CanDrawSmooth(const Canvas& canvas);

// Through the points that the filter takes, with round ends and joints. `kept` (may be null): the runs that
// this line was drawn with last, and is now.
void DrawSmoothLine(const Canvas& canvas, const Mapping& mapping, const LinePoints& line,
                    const SmoothPen& pen, KeptRuns* kept);

// A round dot at every point that the filter takes, as wide as the pen's lone one.
void DrawSmoothDots(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                    const StatusFilter& which, const SmoothPen& pen);
