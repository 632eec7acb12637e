// What a gesture has inverted on a window: a zoom rectangle, a ruler, a rubber band. Remembers it, so that it
// can be taken away exactly as it was put there, and put again after a repaint has taken it away.
#pragma once

#include <functional>

#include "platform/core/Geometry.h"

class CDC;

class GestureOverlay {
  public:
    // Draws in an inverting raster operation that it chooses itself; the second time erases.
    using Shape = std::function<void(CDC&)>;

    // Replaces what is on the window. The shape is drawn in the context's mapping, inside `clip` (device
    // units).
    void Show(CDC& dc, const CRect& clip, Shape shape);
    void Hide(CDC& dc);
    // After everything was painted anew, perhaps in another mapping.
    void Repainted(CDC& dc, const CRect& clip);
    bool IsShown() const { return static_cast<bool>(shape_); }

  private:
    void TakeMapping(const CDC& dc, const CRect& clip);
    void Invert(CDC& dc) const;

    Shape shape_;
    // As it was drawn; erasing must find the same pixels.
    CRect clip_;
    int mapMode_ = 0;
    CPoint windowOrg_, viewportOrg_;
    CSize windowExt_, viewportExt_;
};
