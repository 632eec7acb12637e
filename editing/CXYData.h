// Draws one series: its points as dots and its line. A view keeps one such object and switches it from series
// to series.
//
// The series is not owned; with none attached every operation does nothing and returns its "nothing" value.
// Drawing needs a context whose logical coordinates are the series' draw points.
#pragma once

#include "platform/gdi/CBrush.h"
#include "platform/gdi/CDC.h"
#include "platform/gdi/CPen.h"
#include "sources/IPointSource.h"

class CXYData {
  public:
    CXYData() = default;
    CXYData(const CXYData&) = delete;
    CXYData& operator=(const CXYData&) = delete;

    // The series that operations on the whole series work on; a hook for derived data sets.
    virtual IPointSource* GetPointSourceForFilter() { return GetPointSource(); }
    virtual IPointSource* GetPointSource() { return source; }
    // Attaches the series (null: none) and returns the one before it.
    virtual IPointSource* SelectPointSource(IPointSource* newSource);
    // A filled circle at every draw point. `dotSize` counts from 0 in steps of 0.32 mm of diameter.
    virtual void DrawDots(CDC* dc, unsigned long color, int dotSize, unsigned long editedColor);
    // One line through all draw points, under the series' lock. The rectangle is not used.
    virtual void DrawLine(CDC* dc, unsigned long color, int penStyle, CRect rect);
    // Real units to draw coordinates: (int)(scale * value) - offset, truncated toward zero.
    virtual CPoint XYtoDP(double& x, double& y);
    virtual ~CXYData() = default;

  protected:
    // Makes `brush` and `dotPen` solid ones of the colour.
    void PrepareDots(unsigned long color);

    long firstIndex = 0;  // first and last index drawn by DrawLine
    CBrush brush;
    CPen linePen;
    CPen dotPen;
    IPointSource* source = nullptr;
    long lastIndex = 0;
};
