// A scope in which a context draws inside a plot only: that of its mapping, or one in device units.
#pragma once

#include "platform/gdi/CDC.h"
#include "views/GraphLayout.h"

class [[nodiscard]] PlotClip {
  public:
    explicit PlotClip(CDC& dc) : PlotClip(dc, PlotMap(dc).Area()) {}
    PlotClip(CDC& dc, const CRect& plot) : dc_(dc), saved_(dc.SaveDC()) {
        CRgn inside;
        inside.CreateRectRgnIndirect(&plot);
        dc.SelectClipRgn(&inside);
    }
    ~PlotClip() { dc_.RestoreDC(saved_); }
    PlotClip(const PlotClip&) = delete;
    PlotClip& operator=(const PlotClip&) = delete;

  private:
    CDC& dc_;
    int saved_;
};
