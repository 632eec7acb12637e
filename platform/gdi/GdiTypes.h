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
constexpr int SYSTEM_FONT = 13;

// Hatch styles of brushes.
constexpr int HS_HORIZONTAL = 0;  // -----
constexpr int HS_VERTICAL = 1;    // |||||
constexpr int HS_FDIAGONAL = 2;   // falling to the right
constexpr int HS_BDIAGONAL = 3;   // rising to the right
constexpr int HS_CROSS = 4;       // +++++
constexpr int HS_DIAGCROSS = 5;   // xxxxx

// Where the point given to TextOut lies on the text: one of each row.
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;

// Fonts.
constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr BYTE OUT_DEFAULT_PRECIS = 0;
constexpr BYTE OUT_TT_PRECIS = 4;
constexpr BYTE CLIP_DEFAULT_PRECIS = 0;
constexpr BYTE DEFAULT_QUALITY = 0;
constexpr BYTE PROOF_QUALITY = 2;
constexpr BYTE DEFAULT_PITCH = 0;
constexpr int LF_FACESIZE = 32;

// Height in logical units: positive for the whole cell (ascent and descent), negative for the em, 0 for a
// readable default. Weight 0 means normal. An empty face name means the default face, an unknown one the
// nearest that the system has. Character set, precisions, quality and pitch do not count: all text is UTF-8
// and all fonts are outlines. Text runs to the right with its natural width: width, escapement and
// orientation do not count either.
struct LOGFONT {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE];  // with a terminating zero
};

// Graphics modes.
constexpr int GM_COMPATIBLE = 1;
constexpr int GM_ADVANCED = 2;  // the only one that takes a world transform

// x' = eM11 x + eM21 y + eDx, y' = eM12 x + eM22 y + eDy.
struct XFORM {
    float eM11;
    float eM12;
    float eM21;
    float eM22;
    float eDx;
    float eDy;
};

// What BitBlt makes of the pixels: replaces them.
constexpr DWORD SRCCOPY = 0x00CC0020;

// What a region is.
constexpr int NULLREGION = 1;    // empty
constexpr int SIMPLEREGION = 2;  // one rectangle

// What GetDeviceCaps tells.
constexpr int HORZRES = 8;      // width in device units
constexpr int VERTRES = 10;     // height
constexpr int LOGPIXELSX = 88;  // device units per inch
constexpr int LOGPIXELSY = 90;

// What GetPixel answers outside the picture.
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
