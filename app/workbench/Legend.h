// The legend of a plot: which lines it has, where it lies, how it is painted.
#pragma once

#include "app/workbench/FlagMarks.h"

namespace app {

struct LegendLine {
    CString text;
    COLORREF color = 0;
    const FlagMark* mark = nullptr;  // instead of a stroke in that colour
};

// Emptiest: where the fewest data lie.
enum class LegendCorner { TopRight = 0, TopLeft = 1, BottomLeft = 2, BottomRight = 3, Emptiest = 4 };

class Legend {
  public:
    // Measured on the context. Folded it has no more lines than can be taken in at a glance.
    Legend(CDC& dc, std::vector<LegendLine> lines, bool folded);

    CRect PlaceIn(const CRect& plot, LegendCorner corner) const;
    void Paint(CDC& dc, const CRect& place, const PlotTheme& theme) const;

  private:
    std::vector<LegendLine> lines_;
    CSize text_;  // the widest, the highest
    int gap_;
};

// What letting the legend go there means: the nearest corner, or Emptiest in the middle of the plot.
LegendCorner CornerAt(const CRect& plot, CPoint pixel);

}  // namespace app
