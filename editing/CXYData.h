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

class PointPyramids;
struct KeptLine;

enum class LineLook { Hairline, Smooth };

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

    // Lines may use and build pyramids there (null: none). They are the view's, which clears them before
    // points or status words that may have changed are drawn.
    void UsePyramids(PointPyramids* kept) { pyramids = kept; }
    // Smooth lines and dots are drawn as CDC::SmoothPolyline and CDC::DrawSmoothDots do, the lines
    // interrupted where `breaks` says for the series attached. Hairlines, the default, know no breaks.
    void UseLook(LineLook newLook, const LineBreaks& newBreaks = {}) {
        look = newLook;
        breaks = newBreaks;
    }

  protected:
    // The line through the points that the filter takes, in the look asked for.
    void DrawThrough(CDC& dc, const CPoint* points, int count, const StatusFilter& which, unsigned long color,
                     int penStyle);
    // Makes `brush` and `dotPen` solid ones of the colour.
    void PrepareDots(unsigned long color);

    long firstIndex = 0;  // first and last index drawn by DrawLine
    CBrush brush;
    CPen linePen;
    CPen dotPen;
    IPointSource* source = nullptr;
    long lastIndex = 0;
    PointPyramids* pyramids = nullptr;
    LineLook look = LineLook::Hairline;
    LineBreaks breaks;
};
