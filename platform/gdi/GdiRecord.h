// What a handle of a drawing object points to.
#pragma once

#include "platform/gdi/GdiTypes.h"

struct GdiRecord {
    bool isPen;
    int style;  // of a pen
    int width;  // of a pen, logical units
    COLORREF color;
};
