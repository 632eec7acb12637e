#include "views/GestureOverlay.h"

#include <utility>

#include "platform/gdi/CDC.h"

void GestureOverlay::Show(CDC& dc, const CRect& clip, Shape shape) {
    Hide(dc);
    shape_ = std::move(shape);
    TakeMapping(dc, clip);
    Invert(dc);
}

void GestureOverlay::Hide(CDC& dc) {
    Invert(dc);
    shape_ = nullptr;
}

void GestureOverlay::Repainted(CDC& dc, const CRect& clip) {
    TakeMapping(dc, clip);
    Invert(dc);
}

void GestureOverlay::TakeMapping(const CDC& dc, const CRect& clip) {
    clip_ = clip;
    mapMode_ = dc.GetMapMode();
    windowOrg_ = dc.GetWindowOrg();
    viewportOrg_ = dc.GetViewportOrg();
    windowExt_ = dc.GetWindowExt();
    viewportExt_ = dc.GetViewportExt();
}

void GestureOverlay::Invert(CDC& dc) const {
    if (!shape_) return;
    const int saved = dc.SaveDC();
    dc.SetMapMode(mapMode_);
    dc.SetWindowExt(windowExt_.cx, windowExt_.cy);
    dc.SetViewportExt(viewportExt_.cx, viewportExt_.cy);
    dc.SetWindowOrg(windowOrg_.x, windowOrg_.y);
    dc.SetViewportOrg(viewportOrg_.x, viewportOrg_.y);
    CRgn region;
    region.CreateRectRgnIndirect(&clip_);
    dc.SelectClipRgn(&region);
    shape_(dc);
    dc.RestoreDC(saved);
}
