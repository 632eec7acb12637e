// Mouse and keys of the graph view: the zoom rectangle, the ruler, panning and the read-outs.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/gdi/Selected.h"
#include "platform/window/CClientDC.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/CWindowApp.h"
#include "platform/window/Cursor.h"
#include "views/CXYGraphView.h"

namespace {

// While Ctrl is held a ruler keeps to an axis.
class RulerAlongAxis {
  public:
    RulerAlongAxis(KRuler& ruler, UINT flags) : ruler_(ruler), type_(ruler.getType()) {
        if (flags & MK_CONTROL) ruler.setType(KRuler::AxisLine);
    }
    ~RulerAlongAxis() { ruler_.setType(type_); }
    RulerAlongAxis(const RulerAlongAxis&) = delete;
    RulerAlongAxis& operator=(const RulerAlongAxis&) = delete;

  private:
    KRuler& ruler_;
    KRuler::RulerType type_;
};

// Inverts what it draws, so that drawing a ruler again erases it.
struct RulerInk {
    RulerInk(CDC& dc, CPen& pen) : usePen(dc, pen), noFill(dc, NULL_BRUSH), inverting(dc, R2_NOT) {}

    const Selected<CPen> usePen;
    const SelectedStock noFill;
    const SelectedRop2 inverting;
};

// Pixels to stored units, in whole units.
int ScaledDelta(int pixels, int windowExtent, int viewportExtent) {
    if (viewportExtent == 0) return 0;
    return SaturateToInt32(std::int64_t{pixels} * windowExtent / viewportExtent);
}

}  // namespace

void CXYGraphView::OnMouseMove(UINT flags, CPoint point) {
    lastMousePosition = point;
    CClientDC dc(this);
    OnPrepareDC(&dc);
    switch (mouseMode) {
        case ShowPosition:
        case RulerArmed: {
            CPoint stored = point;
            dc.DPtoLP(&stored);
            stored += offset;
            SetPositionText(stored);
            break;
        }
        case ZoomDragging:
            MoveZoomRect(point);
            break;
        case RulerDragging: {
            const RulerAlongAxis bent(ruler, flags);
            RulerTo(&dc, point);
            ShowRulerText();
            break;
        }
        default:
            break;
    }
    if (flags & MK_MBUTTON)
        PanTo(dc, point);
    else
        lastMiddlePosition.reset();
}

void CXYGraphView::SetPositionText(CPoint& point) {
    CFrameWnd* const frame = AfxGetMainWnd();
    if (!frame) return;
    CString text;
    text.Format("(%.3lf %s, %.3lf %s)", point.x / scaleX, axes.UnitX.GetString(), point.y / scaleY,
                axes.UnitY.GetString());
    frame->SetMessageText(text);
}

CString CXYGraphView::RulerText() const { return rulerText ? rulerText(ruler) : ruler.ToString(); }

void CXYGraphView::ShowRulerText() {
    if (CFrameWnd* const frame = GetParentFrame()) frame->SetMessageText("Ruler: " + RulerText());
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
        mouseMode = RulerArmed;
        rulerVisible = false;
        Invalidate(FALSE);
    } else if (mouseMode == ZoomArmed) {
        zoomRect = {point.x, point.y, point.x, point.y};
        mouseMode = ZoomDragging;
    }
}

void CXYGraphView::OnLButtonUp(UINT flags, CPoint point) {
    KViewEx::OnLButtonUp(flags, point);
    CClientDC dc(this);
    if (mouseMode == ZoomDragging) {
        EndZoomRect(point);
    } else if (mouseMode == RulerArmed) {
        mouseMode = StartRuler(&dc, point) ? RulerDragging : ShowPosition;
    } else if (mouseMode == RulerDragging) {
        const RulerAlongAxis bent(ruler, flags);
        rulerVisible = EndRuler(&dc, point);
        Invalidate(FALSE);
        mouseMode = ShowPosition;
    }
    CatchUp();
}

// The gaps of the dotted pen are drawn too, in the background colour: that is what shows under XOR.
void CXYGraphView::DrawZoomRect() {
    // Where the drag began nothing was drawn yet.
    if (zoomRect.left == zoomRect.right && zoomRect.top == zoomRect.bottom) return;
    CClientDC dc(this);
    const Selected usePen(dc, dottedPen);
    const SelectedStock noFill(dc, NULL_BRUSH);
    const SelectedRop2 inXor(dc, R2_XORPEN);
    dc.Rectangle(zoomRect);
}

void CXYGraphView::MoveZoomRect(CPoint point) {
    DrawZoomRect();
    zoomRect.right = point.x;
    zoomRect.bottom = point.y;
    DrawZoomRect();
}

void CXYGraphView::EndZoomRect(CPoint point) {
    DrawZoomRect();
    zoomRect.right = point.x;
    zoomRect.bottom = point.y;
    CClientDC dc(this);
    OnPrepareDC(&dc);
    CPoint corners[] = {{zoomRect.left, zoomRect.top}, {zoomRect.right, zoomRect.bottom}};
    dc.DPtoLP(corners, 2);
    const auto [left, right] = std::minmax(corners[0].x, corners[1].x);
    const auto [top, bottom] = std::minmax(corners[0].y, corners[1].y);
    zoom.ShowRectangle({left, top, right, bottom}, {std::abs(zoomRect.Width()), std::abs(zoomRect.Height())},
                       NewestSample());
    SetScrollSizes();
    mouseMode = ZoomArmed;
    if (SendZoom()) RedrawMoved();
}

bool CXYGraphView::StartRuler(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    dc->DPtoLP(&point);
    ruler.StartRuler(point);
    rulerOnScreen = ruler;
    return true;
}

bool CXYGraphView::RulerTo(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    const RulerInk ink(*dc, rulerPen);
    dc->DPtoLP(&point);
    rulerOnScreen.Draw(dc);
    ruler.RulerTo(dc, point);
    ruler.Draw(dc);
    rulerOnScreen = ruler;
    return true;
}

bool CXYGraphView::EndRuler(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    const RulerInk ink(*dc, rulerPen);
    dc->DPtoLP(&point);
    rulerOnScreen.Draw(dc);
    ruler.RulerTo(dc, point);
    return ruler.EndRuler(point);
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
    ::SetCursor(mouseMode == ShowPosition ? IDC_ARROW : IDC_CROSS);
    return TRUE;
}
