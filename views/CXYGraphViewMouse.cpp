// Mouse and keys of the graph view: its modes take the left button, the rest is the same in all of them.
#include <cstdlib>

#include "platform/window/CClientDC.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/CWindowApp.h"
#include "views/CXYGraphView.h"

namespace {

// Pixels to stored units, in whole units.
int ScaledDelta(int pixels, int windowExtent, int viewportExtent) {
    if (viewportExtent == 0) return 0;
    return SaturateToInt32(std::int64_t{pixels} * windowExtent / viewportExtent);
}

}  // namespace

void CXYGraphView::OnMouseMove(UINT flags, CPoint point) {
    lastMousePosition = point;
    Mode().Move(flags, point);
    if (flags & MK_MBUTTON) {
        CClientDC dc(this);
        OnPrepareDC(&dc);
        PanTo(dc, point);
    } else {
        lastMiddlePosition.reset();
    }
}

void CXYGraphView::SetPositionText(CPoint& point) {
    CFrameWnd* const frame = AfxGetMainWnd();
    if (!frame) return;
    CString text;
    text.Format("(%.3lf %s, %.3lf %s)", point.x / scaleX, axes.UnitX.GetString(), point.y / scaleY,
                axes.UnitY.GetString());
    frame->SetMessageText(text);
}

void CXYGraphView::PanTo(CDC& dc, CPoint point) {
    if (lastMiddlePosition) {
        const CPoint delta = point - *lastMiddlePosition;
        const CSize window = dc.GetWindowExt();
        const CSize viewport = dc.GetViewportExt();
        CZoomInfo& shown = zoom.Current();
        shown.originX = SubtractSaturated(shown.originX, ScaledDelta(delta.x, window.cx, viewport.cx));
        shown.originY = SubtractSaturated(shown.originY, ScaledDelta(delta.y, window.cy, viewport.cy));
        if (!SendUpdate({GetCookie(), CViewUpdate::OriginXChanged, long{shown.originX}})) return;
        RedrawMoved();
    }
    lastMiddlePosition = point;
}

void CXYGraphView::OnLButtonDown(UINT flags, CPoint point) {
    KViewEx::OnLButtonDown(flags, point);
    if ((flags & MK_CONTROL) && !(flags & MK_SHIFT) && mouseMode == ShowPosition) {
        EnterMode(RulerArmed);
        rulerVisible = false;
        Invalidate(FALSE);
    } else {
        Mode().Down(flags, point);
    }
}

void CXYGraphView::OnLButtonUp(UINT flags, CPoint point) {
    KViewEx::OnLButtonUp(flags, point);
    Mode().Up(flags, point);
    CatchUp();
}

BOOL CXYGraphView::OnMouseWheel(UINT, short delta, CPoint point) {
    ScreenToClient(&point);
    CClientDC dc(this);
    OnPrepareDC(&dc);
    dc.DPtoLP(&point);
    const CZoomInfo& shown = zoom.Current();
    HandleZoom(delta < 1 ? CmdZoomOut : CmdZoomIn, point - CPoint(shown.originX, shown.originY));
    return TRUE;
}

void CXYGraphView::OnMButtonDblClk(UINT, CPoint) { OnZoom(CmdZoomAll); }

void CXYGraphView::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    KViewEx::OnKeyDown(key, repeat, flags);
    if (key == 'X' || key == 'x') zoom.onlyX = 1;
    if (key == 'Y' || key == 'y') zoom.onlyY = 1;
}

void CXYGraphView::OnKeyUp(UINT key, UINT repeat, UINT flags) {
    KViewEx::OnKeyUp(key, repeat, flags);
    if (key == 'X' || key == 'x') zoom.onlyX = 0;
    if (key == 'Y' || key == 'y') zoom.onlyY = 0;
}

BOOL CXYGraphView::OnSetCursor(CWnd*, UINT, UINT) {
    ::SetCursor(Mode().Cursor());
    return TRUE;
}
