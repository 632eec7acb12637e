// The colours of the desktop, light or dark.
#pragma once

#include "platform/core/Types.h"

constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_HOTLIGHT = 26;  // of links

// Black on white without a windowed program; black for another number.
COLORREF GetSysColor(int index);
// Whether the window's text is lighter than its ground.
bool IsDarkPalette();
