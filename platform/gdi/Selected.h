// Keeps an object selected into a context for a scope: every way out selects the previous one again.
//
//   const Selected usePen(dc, pen);
//   const SelectedStock noFill(dc, NULL_BRUSH);
#pragma once

#include "platform/gdi/CDC.h"

template <class Object>
class [[nodiscard]] Selected {
  public:
    Selected(CDC& dc, Object& object) : m_dc(dc), m_previous(dc.SelectObject(&object)) {}
    ~Selected() { m_dc.SelectObject(m_previous); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

  private:
    CDC& m_dc;
    Object* m_previous;
};

class [[nodiscard]] SelectedStock {
  public:
    SelectedStock(CDC& dc, int stockObject) : m_dc(dc), m_previous(dc.SelectStockObject(stockObject)) {}
    ~SelectedStock() { m_dc.SelectObject(m_previous); }
    SelectedStock(const SelectedStock&) = delete;
    SelectedStock& operator=(const SelectedStock&) = delete;

  private:
    CDC& m_dc;
    CGdiObject* m_previous;
};

// The same for the raster operation: const SelectedRop2 useXor(dc, R2_XORPEN);
class [[nodiscard]] SelectedRop2 {
  public:
    SelectedRop2(CDC& dc, int rasterOperation) : m_dc(dc), m_previous(dc.SetROP2(rasterOperation)) {}
    ~SelectedRop2() { m_dc.SetROP2(m_previous); }
    SelectedRop2(const SelectedRop2&) = delete;
    SelectedRop2& operator=(const SelectedRop2&) = delete;

  private:
    CDC& m_dc;
    int m_previous;
};
