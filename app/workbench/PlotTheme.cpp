#include "app/workbench/PlotTheme.h"

#include <cmath>

namespace app {

namespace {

double Brightness(COLORREF color) {
    return (0.3 * GetRValue(color) + 0.59 * GetGValue(color) + 0.11 * GetBValue(color)) / 255.0;
}

COLORREF Mixed(COLORREF from, COLORREF to, double share) {
    const auto mix = [share](int a, int b) { return RoundHalfAway(a + (b - a) * share); };
    return RGB(mix(GetRValue(from), GetRValue(to)), mix(GetGValue(from), GetGValue(to)),
               mix(GetBValue(from), GetBValue(to)));
}

}  // namespace

PlotTheme PlotTheme::For(COLORREF background, COLORREF axis, COLORREF grid) {
    const CColorProperties plain;
    PlotTheme theme;
    theme.background = background;
    theme.dark = Brightness(background) < 0.45;
    const COLORREF ink = theme.dark ? RGB(220, 220, 220) : RGB(60, 60, 60);
    // A chosen colour counts where it can be seen.
    const bool usable = axis != plain.axis && std::fabs(Brightness(axis) - Brightness(background)) > 0.25;
    theme.axis = usable ? axis : ink;
    theme.grid = grid != plain.grid ? grid : Mixed(background, ink, 0.16);
    return theme;
}

COLORREF PlotTheme::OfSeries(unsigned long color) const {
    const auto own = static_cast<COLORREF>(color);
    return dark ? Mixed(own, RGB(255, 255, 255), 0.35) : own;
}

COLORREF PlotTheme::Pale(COLORREF color) const { return Mixed(color, background, 0.62); }

}  // namespace app
