// What part of the axis range a graph view shows: the zoom stack and the sizes that follow from it. Numbers
// only; the graph view feeds it and scrolls its window. Everything is in stored units unless said otherwise,
// and origins are those of the visible area's lower corner.
#pragma once

#include <list>
#include <numbers>
#include <optional>

#include "platform/core/CPointEx.h"
#include "platform/core/Geometry.h"
#include "views/CZoomInfo.h"

// The axis range in stored units, not yet rounded.
struct StoredRange {
    CPointEx org;
    CSizeEx ext;
};

enum class ZoomWay { In, Out };
// Softened: a fifth of the way, for fine adjustment.
enum class ZoomStep { Full, Softened };

class GraphZoom {
  public:
    // The stack is never empty; the current entry is the last one.
    GraphZoom() : entries(1) {}

    const CZoomInfo& Current() const { return entries.back(); }
    CZoomInfo& Current() { return entries.back(); }
    std::size_t Depth() const { return entries.size(); }

    // Makes the entry current unless what it shows would be 100 or less or 500000000 or more on either axis;
    // false then. Divides the view extent by the entry's zoom in either case: call FitScrollSizes afterwards.
    // With iso-aspect set the entry is changed first so that a pixel covers the same distance on both axes.
    bool Add(CZoomInfo entry);
    // Keeps the stored point `at`, counted from the origin, in its place.
    bool About(float factorX, float factorY, CPoint at);
    // By the zoom step, on the axes that the X-only and Y-only flags leave.
    bool Step(ZoomWay way, ZoomStep size, CPoint at);
    // The whole range, centred.
    void ShowAll(const StoredRange& range);
    // The rectangle, normalised; on an axis whose side is below 2 pixels the zoom stays and the rectangle's
    // centre becomes the view's. `newest` is the newest sample, if there is one. False: refused, nothing
    // shown changes.
    bool ShowRectangle(const CRect& rect, CSize sidePixels, const std::optional<CPoint>& newest);
    // False when the current entry is the only one.
    bool Back();
    // Forgets every entry but the current one.
    void KeepCurrent();

    // View extent, scroll amount and line step for the current entry.
    void FitScrollSizes(const StoredRange& range);
    CPoint ViewCentre() const {
        return {RoundHalfAway(viewExtent.cx / 2.0), RoundHalfAway(viewExtent.cy / 2.0)};
    }

    // Aligns the current entry to the newest sample, on the axes that are zoomed in; 0 on the others.
    void AlignTo(const std::optional<CPoint>& newest);
    // Scrolls along with data that arrived since; an axis that shows everything returns to the range's start.
    void Follow(CPoint newest, const StoredRange& range);

    CSize viewExtent;    // of the visible area
    CSize plotSize;      // pixels
    CSize scrollAmount;  // how far the visible area can move
    CSize lineStep;      // what an arrow of a scroll bar moves
    float zoomStep = std::numbers::sqrt2_v<float>;
    int onlyX = 0;  // flags: zoom steps leave the other axis alone
    int onlyY = 0;
    int isoAspect = 0;

  private:
    void MakeIsoAspect(CZoomInfo& entry) const;

    std::list<CZoomInfo> entries;
};
