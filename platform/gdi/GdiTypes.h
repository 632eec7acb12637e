// The flag values of device contexts, with the framework's names and numbers.
#pragma once

#include "platform/core/Types.h"

// Pen styles.
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_DASHDOT = 3;
constexpr int PS_DASHDOTDOT = 4;
constexpr int PS_NULL = 5;

// Raster operations: what a drawn pixel makes of the pixel that is there.
constexpr int R2_NOT = 6;         // inverts it, whatever the pen
constexpr int R2_XORPEN = 7;      // exclusive or with the pen: drawn twice, everything is as before
constexpr int R2_NOTXORPEN = 10;  // the inverse of R2_XORPEN
constexpr int R2_COPYPEN = 13;    // replaces it

// Background modes: whether the gaps of a styled pen are drawn in the background colour.
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Mapping modes.
constexpr int MM_TEXT = 1;         // pixels, y downwards
constexpr int MM_HIMETRIC = 3;     // 0.01 mm, y upwards
constexpr int MM_TWIPS = 6;        // 1/1440 inch, y upwards
constexpr int MM_ISOTROPIC = 7;    // by the extents, a unit equally long on both axes
constexpr int MM_ANISOTROPIC = 8;  // by the extents

// Stock objects.
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;

// What GetPixel answers outside the picture.
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
