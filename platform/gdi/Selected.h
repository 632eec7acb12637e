// Keeps an object selected into a context for a scope: every way out selects the previous one again.
//
//   const Selected usePen(dc, pen);
//   const SelectedStock noFill(dc, NULL_BRUSH);
#pragma once

#include "platform/gdi/CDC.h"

template <class Object>
class [[nodiscard]] Selected {
  public:
    Selected(CDC& dc, Object& object) : dc_(dc), previous_(dc.SelectObject(&object)) {}
    ~Selected() { dc_.SelectObject(previous_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

  private:
    CDC& dc_;
    Object* previous_;
};

class [[nodiscard]] SelectedStock {
  public:
    SelectedStock(CDC& dc, int stockObject) : dc_(dc), previous_(dc.SelectStockObject(stockObject)) {}
    ~SelectedStock() { dc_.SelectObject(previous_); }
    SelectedStock(const SelectedStock&) = delete;
    SelectedStock& operator=(const SelectedStock&) = delete;

  private:
    CDC& dc_;
    CGdiObject* previous_;
};

// The same for the raster operation: const SelectedRop2 useXor(dc, R2_XORPEN);
class [[nodiscard]] SelectedRop2 {
  public:
    SelectedRop2(CDC& dc, int rasterOperation) : dc_(dc), previous_(dc.SetROP2(rasterOperation)) {}
    ~SelectedRop2() { dc_.SetROP2(previous_); }
    SelectedRop2(const SelectedRop2&) = delete;
    SelectedRop2& operator=(const SelectedRop2&) = delete;

  private:
    CDC& dc_;
    int previous_;
};
