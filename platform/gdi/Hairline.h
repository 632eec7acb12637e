// Lines one pixel wide. The pixels are those of the ideal line between the two pixel centres (Jack Bresenham,
// Algorithm for computer control of a digital plotter, 1965), halves going with the direction of travel. A
// line is clipped exactly: what is visible does not depend on the clip rectangle or on how far the ends lie
// outside.
#pragma once

#include "platform/gdi/Canvas.h"

struct HairPen {
    int style;  // PS_SOLID to PS_DASHDOTDOT
    std::uint32_t pixel;
    std::uint32_t gapPixel;
    bool drawGaps;
    int operation;
};

// Draws from a to b without the pixel b. phase: how many pixels the line has run so far, for the dashes;
// advanced by the length, also where nothing is visible.
void DrawHairline(const Canvas& canvas, CPoint a, CPoint b, const HairPen& pen, std::int64_t& phase);

// Where in its dashes a pen is after `phase` pixels: true in a dash, false in a gap.
bool IsDash(int style, std::int64_t phase);
