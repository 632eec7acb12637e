// A scope in which a context counts device units from its top left corner and writes transparently in the
// font of the axes. Everything selected and set inside is undone at its end.
#pragma once

#include "editing/DrawSizes.h"
#include "platform/gdi/CDC.h"
#include "platform/gdi/CFont.h"

class [[nodiscard]] PixelSpace {
  public:
    explicit PixelSpace(CDC& dc) : dc_(dc), saved_(dc.SaveDC()) {
        dc.SetMapMode(MM_TEXT);
        dc.SetViewportOrg(0, 0);
        dc.SetWindowOrg(0, 0);
        dc.SetBkMode(TRANSPARENT);
        font_.CreateSimple(4 * Millimetre().cy);
        dc.SelectObject(&font_);
    }
    ~PixelSpace() { dc_.RestoreDC(saved_); }
    PixelSpace(const PixelSpace&) = delete;
    PixelSpace& operator=(const PixelSpace&) = delete;

    CSize Millimetre() const { return LogicalSize(dc_, 100, 100); }

  private:
    CDC& dc_;
    CFont font_;
    int saved_;
};
