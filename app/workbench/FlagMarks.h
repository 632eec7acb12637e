// How samples with flags look in a plot: a shape for each flag, told apart without its colour, too.
#pragma once

#include <vector>

#include "app/workbench/PlotTheme.h"

namespace app {

struct FlagMark {
    unsigned short flag;
    enum Shape { Cross, Ring, Triangle } shape;
    COLORREF color;
};
constexpr FlagMark kFlagMarks[] = {{PS_DELETED, FlagMark::Cross, RGB(204, 0, 51)},
                                   {PS_REJECTED, FlagMark::Ring, RGB(136, 0, 170)},
                                   {PS_SPIKE, FlagMark::Triangle, RGB(190, 95, 0)}};
constexpr unsigned short kMarkedFlags = PS_DELETED | PS_REJECTED | PS_SPIKE;

// Pixels inside an area, none of them so near to another that its mark could not be told from that one's.
class MarkPlaces {
  public:
    MarkPlaces(const CRect& area, int dotsPerInch);
    void Add(CPoint pixel);
    const std::vector<CPoint>& All() const { return places_; }

  private:
    CRect area_;
    int cell_;
    int columns_;
    std::vector<bool> taken_;
    std::vector<CPoint> places_;
};

// Of a mark, from its middle to its end.
int MarkRadius(const CDC& dc);
// Around pixels.
void PaintMarks(CDC& dc, const FlagMark& mark, const std::vector<CPoint>& places, const PlotTheme& theme);

}  // namespace app
