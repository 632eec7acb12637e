// Filled and outlined shapes in device coordinates.
#pragma once

#include <cstddef>

#include "platform/gdi/Hairline.h"

// The pixels whose centres lie inside the polygon, crossings by the even-odd rule.
void FillPolygon(const Canvas& canvas, const CPoint* points, std::size_t count, Ink ink);

// A line `width` pixels wide through the points, with round joints and ends; every pixel is drawn once,
// however the line crosses itself. closed: back to the first point.
void DrawWideLine(const Canvas& canvas, const CPoint* points, std::size_t count, bool closed, int width,
                  Ink ink);

// The pixels of one row (0 on top) of an ellipse `width` by `height` pixels large, right included; empty
// (left > right) outside it.
struct EllipseSpan {
    std::int64_t left, right;
};
EllipseSpan EllipseRow(std::int64_t width, std::int64_t height, std::int64_t row);

// The ellipse in a box (right and bottom outside). With an outline: only the pixels inside it.
void FillEllipse(const Canvas& canvas, const CRect& box, bool insideOutline, Ink ink);
void OutlineEllipse(const Canvas& canvas, const CRect& box, const HairPen& pen);
