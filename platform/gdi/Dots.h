// Clouds of dots, drawn in bulk.
#pragma once

#include <cstddef>

#include "platform/gdi/Canvas.h"
#include "platform/gdi/Mapping.h"
#include "platform/gdi/StatusFilter.h"

// One pixel at every point that the filter takes.
void DrawPixelCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                    const StatusFilter& which, std::uint32_t pixel);

// A filled box round every point that the filter takes: from (x - cx, y - cy) to (x + cx, y + cy) in logical
// units, converted corner by corner, `shrink` pixels less at right and bottom, which are outside as always.
// Replaces the pixels.
void DrawBoxCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, CSize halfExtent, int shrink, std::uint32_t pixel);

// The same with ellipses in the boxes.
void DrawEllipseCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                      const StatusFilter& which, CSize halfExtent, int shrink, std::uint32_t pixel);
