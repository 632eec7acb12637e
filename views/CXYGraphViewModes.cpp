// The graph view's own mouse modes: position, zoom rectangle and ruler.
#include <algorithm>
#include <cstdlib>

#include "platform/gdi/Selected.h"
#include "platform/window/CClientDC.h"
#include "platform/window/CFrameWnd.h"
#include "views/CXYGraphView.h"
#include "views/PixelSpace.h"

class CXYGraphView::PositionMode : public GraphMouseMode {
  public:
    explicit PositionMode(CXYGraphView& view) : view_(view) {}

    void Move(UINT, CPoint point) override { view_.ShowPositionOf(point); }
    HCURSOR Cursor() const override { return IDC_ARROW; }

  private:
    CXYGraphView& view_;
};

class CXYGraphView::ZoomRectMode : public GraphMouseMode {
  public:
    explicit ZoomRectMode(CXYGraphView& view) : view_(view) {}

    void Down(UINT, CPoint point) override {
        if (view_.mouseMode != ZoomArmed) return;
        view_.zoomRect = {point.x, point.y, point.x, point.y};
        view_.gestureStart = point;
        view_.EnterMode(ZoomDragging);
    }
    void Move(UINT, CPoint point) override {
        if (!IsDragging()) return;
        view_.zoomRect.right = point.x;
        view_.zoomRect.bottom = point.y;
        view_.ShowZoomRect();
    }
    void Up(UINT, CPoint point) override {
        if (IsDragging()) view_.EndZoomRect(point);
    }
    bool IsDragging() const override { return view_.mouseMode == ZoomDragging; }
    void Leave() override { view_.HideGesture(); }

  private:
    CXYGraphView& view_;
};

class CXYGraphView::RulerMode : public GraphMouseMode {
  public:
    explicit RulerMode(CXYGraphView& view) : view_(view) {}

    void Move(UINT flags, CPoint point) override {
        if (!IsDragging()) return view_.ShowPositionOf(point);
        const RulerAlongAxis bent(view_.ruler, (flags & MK_CONTROL) != 0);
        CClientDC dc(&view_);
        view_.RulerTo(&dc, point);
        view_.ShowRulerText();
    }
    void Up(UINT flags, CPoint point) override {
        CClientDC dc(&view_);
        if (!IsDragging()) {
            view_.gestureStart = point;
            view_.EnterMode(view_.StartRuler(&dc, point) ? RulerDragging : ShowPosition);
            return;
        }
        const RulerAlongAxis bent(view_.ruler, (flags & MK_CONTROL) != 0);
        view_.rulerVisible = view_.EndRuler(&dc, point);
        view_.Invalidate(FALSE);
        view_.EnterMode(ShowPosition);
    }
    bool IsDragging() const override { return view_.mouseMode == RulerDragging; }
    void Leave() override { view_.HideGesture(); }

  private:
    CXYGraphView& view_;
};

void CXYGraphView::AddOwnModes() {
    AddMouseMode(ShowPosition, std::make_shared<PositionMode>(*this));
    const auto zoomRectangle = std::make_shared<ZoomRectMode>(*this);
    AddMouseMode(ZoomArmed, zoomRectangle);
    AddMouseMode(ZoomDragging, zoomRectangle);
    const auto measuring = std::make_shared<RulerMode>(*this);
    AddMouseMode(RulerArmed, measuring);
    AddMouseMode(RulerDragging, measuring);
}

void CXYGraphView::AddMouseMode(int number, std::shared_ptr<GraphMouseMode> mode) {
    if (mode) modes[number] = std::move(mode);
}

GraphMouseMode& CXYGraphView::Mode() const {
    const auto found = modes.find(mouseMode);
    return found != modes.end() ? *found->second : *modes.at(ShowPosition);
}

void CXYGraphView::EnterMode(int number) {
    // A mode that replaces itself while one of its operations runs lives until the operation is over.
    const std::shared_ptr<GraphMouseMode> before = modes.contains(mouseMode) ? modes[mouseMode] : nullptr;
    mouseMode = number;
    GraphMouseMode& now = Mode();
    if (before && before.get() != &now) before->Leave();
    if (CFrameWnd* const frame = GetParentFrame())
        if (const CString text = now.StatusText(); !text.IsEmpty()) frame->SetMessageText(text);
}

void CXYGraphView::ShowPositionOf(CPoint point) {
    CClientDC dc(this);
    OnPrepareDC(&dc);
    dc.DPtoLP(&point);
    point += offset;
    SetPositionText(point);
}

void CXYGraphView::ShowRulerText() {
    if (CFrameWnd* const frame = GetParentFrame()) frame->SetMessageText("Ruler: " + ruler.ToString());
}

void CXYGraphView::HideGesture() {
    CClientDC dc(this);
    gesture.Hide(dc);
}

// The gaps of the dotted pen are drawn too, in the background colour: that is what shows under XOR.
void CXYGraphView::ShowZoomRect() {
    CClientDC dc(this);
    OnPrepareDC(&dc);
    const CRect rect = zoomRect;
    gesture.Show(dc, plotArea, [this, rect](CDC& target) {
        const PixelSpace pixels(target);
        target.SetBkMode(OPAQUE);
        const Selected usePen(target, dottedPen);
        const SelectedStock noFill(target, NULL_BRUSH);
        const SelectedRop2 inXor(target, R2_XORPEN);
        target.Rectangle(rect);
    });
}

void CXYGraphView::EndZoomRect(CPoint point) {
    HideGesture();
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
    EnterMode(ZoomArmed);
    if (SendZoom()) RedrawMoved();
}

// Inverts what it draws, so that drawing a ruler again erases it.
void CXYGraphView::ShowRuler(CDC& dc) {
    gesture.Show(dc, plotArea, [this, drawn = ruler](CDC& target) mutable {
        const Selected usePen(target, rulerPen);
        const SelectedStock noFill(target, NULL_BRUSH);
        const SelectedRop2 inverting(target, R2_NOT);
        drawn.Draw(&target);
    });
}

bool CXYGraphView::StartRuler(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    dc->DPtoLP(&point);
    ruler.StartRuler(point);
    return true;
}

bool CXYGraphView::RulerTo(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    dc->DPtoLP(&point);
    ruler.RulerTo(dc, point);
    ShowRuler(*dc);
    return true;
}

bool CXYGraphView::EndRuler(CDC* dc, CPoint point) {
    OnPrepareDC(dc);
    dc->DPtoLP(&point);
    gesture.Hide(*dc);
    ruler.RulerTo(dc, point);
    return ruler.EndRuler(point);
}
