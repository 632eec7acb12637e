// The colours of a plot.
#pragma once

#include "tavin/tavin.h"

namespace app {

// 0x00BBGGRR.
struct PlotTheme {
    COLORREF background = RGB(255, 255, 255);
    COLORREF axis = RGB(60, 60, 60);
    COLORREF grid = RGB(228, 228, 228);
    bool dark = false;

    // For a background; `grid` is taken unless it is the colour of new views.
    static PlotTheme For(COLORREF background, COLORREF axis, COLORREF grid);
    // A series' colour so that it can be seen on the background.
    COLORREF OfSeries(unsigned long color) const;
    // A colour of OfSeries for what lies under the line.
    COLORREF Pale(COLORREF color) const;
};

}  // namespace app
