// Sizes of what the data sets draw. They are fixed in 0.01 mm and become logical units of the context they
// are drawn on.
#pragma once

#include <cstdint>

#include "platform/gdi/CDC.h"

inline CSize LogicalSize(const CDC& dc, std::int64_t width, std::int64_t height) {
    CSize size(SaturateToInt32(width), SaturateToInt32(height));
    dc.HIMETRICtoLP(&size);
    return size;
}

// In 0.01 mm.
inline int DotDiameter(int dotSize) { return SaturateToInt32((std::int64_t{dotSize} + 1) * 32); }

// Half the width and height of a dot.
inline CSize DotExtent(const CDC& dc, int dotSize) {
    const std::int64_t extent = (std::int64_t{dotSize} + 1) * 16;
    return LogicalSize(dc, extent, extent);
}

inline CRect RectAround(const CPoint& center, CSize halfExtent) {
    return {SubtractSaturated(center.x, halfExtent.cx), SubtractSaturated(center.y, halfExtent.cy),
            AddSaturated(center.x, halfExtent.cx), AddSaturated(center.y, halfExtent.cy)};
}
