// What a handle of a drawing object points to.
#pragma once

#include "platform/core/Geometry.h"
#include "platform/gdi/GdiTypes.h"

enum class GdiKind { Pen, Brush, Font, Region };

constexpr int kNoHatch = -1;

struct GdiRecord {
    GdiKind kind;
    int style = 0;  // of a pen: PS_..., of a brush: HS_... or kNoHatch
    int width = 0;  // of a pen, logical units
    COLORREF color = 0;
    LOGFONT font{};
    CRect region{};  // device units
};
