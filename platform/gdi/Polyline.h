// Polylines of any length, reduced on the way to what can be told apart on the pixels.
#pragma once

#include <cstddef>

#include "platform/gdi/Hairline.h"
#include "platform/gdi/Mapping.h"
#include "platform/gdi/StatusFilter.h"

// Draws the segments between the points that the filter takes, each without its last pixel; dashes run on
// from segment to segment. Does nothing for fewer than two such points.
void DrawPolyline(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, const HairPen& pen);
