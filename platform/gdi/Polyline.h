// Polylines of any length, reduced on the way to what can be told apart on the pixels.
#pragma once

#include <cstddef>

#include "platform/gdi/Hairline.h"
#include "platform/gdi/Mapping.h"
#include "platform/gdi/StatusFilter.h"

class PointPyramid;

// Draws the segments between the points that the filter takes, each without its last pixel; dashes run on
// from segment to segment. Does nothing for fewer than two such points.
// A pyramid of just these points changes no pixel; any other one, and null, does not count.
void DrawPolyline(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, const HairPen& pen, const PointPyramid* pyramid = nullptr);
