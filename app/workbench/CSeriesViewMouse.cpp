// Mouse and keys of the program's view.
#include <cstdlib>

#include "app/workbench/CSeriesView.h"

namespace app {

namespace {

constexpr double kWheelStep = 1.4142135623730951;
// What a notch of the horizontal wheel moves, as a share of the plot.
constexpr double kWheelPan = 0.1;
// A press that ends this near to its start is a click.
constexpr int kClickPixels = 4;

bool IsClick(CPoint from, CPoint to) {
    return std::abs(from.x - to.x) < kClickPixels && std::abs(from.y - to.y) < kClickPixels;
}

bool IsInside(const CRect& area, CPoint p) {
    return p.x >= area.left && p.x < area.right && p.y >= area.top && p.y < area.bottom;
}

}  // namespace

// Reads positions and moves the legend.
class CSeriesView::PointerMode : public GraphMouseMode {
  public:
    explicit PointerMode(CSeriesView& view) : view_(view) {}

    void Down(UINT, CPoint point) override {
        legendFrom_.reset();
        for (const CRect& legend : view_.legends_)
            if (IsInside(legend, point)) legendFrom_ = point;
    }
    void Move(UINT, CPoint point) override { view_.ShowPointer(point); }
    void Up(UINT, CPoint point) override {
        if (!legendFrom_) return;
        const PlotPanel* const panel = view_.Panel(PanelAt(view_.panels_, point));
        if (IsClick(*legendFrom_, point))
            view_.legendFolded_ = !view_.legendFolded_;
        else if (panel)
            view_.legendCorner_ = CornerAt(panel->plot, point);
        legendFrom_.reset();
        view_.Redraw();
    }
    HCURSOR Cursor() const override { return IDC_ARROW; }
    void Leave() override { legendFrom_.reset(); }

  private:
    CSeriesView& view_;
    std::optional<CPoint> legendFrom_;
};

class CSeriesView::RectangleMode : public GraphMouseMode {
  public:
    explicit RectangleMode(CSeriesView& view) : view_(view) {}

    void Down(UINT, CPoint point) override {
        view_.gesturePanel_ = PanelAt(view_.panels_, point);
        view_.zoomRect = {point.x, point.y, point.x, point.y};
        view_.EnterMode(ZoomDragging);
    }
    void Move(UINT, CPoint point) override {
        view_.ShowPointer(point);
        if (!IsDragging()) return;
        view_.zoomRect.right = point.x;
        view_.zoomRect.bottom = point.y;
        view_.ShowZoomRect();
    }
    void Up(UINT, CPoint point) override {
        if (!IsDragging()) return;
        view_.HideGesture();
        view_.zoomRect.right = point.x;
        view_.zoomRect.bottom = point.y;
        view_.EnterMode(ZoomArmed);
        if (const PlotPanel* const panel = view_.Panel(view_.gesturePanel_))
            view_.ZoomTo(*panel, view_.zoomRect);
    }
    bool IsDragging() const override { return view_.mouseMode == ZoomDragging; }
    CString StatusText() const override { return "Draw a rectangle to zoom to; Esc ends this"; }
    void Leave() override { view_.HideGesture(); }

  private:
    CSeriesView& view_;
};

// By press, drag and release, or from one click to another.
class CSeriesView::MeasuringMode : public GraphMouseMode {
  public:
    explicit MeasuringMode(CSeriesView& view) : view_(view) {}

    void Down(UINT, CPoint point) override {
        if (IsDragging()) return;
        view_.gesturePanel_ = PanelAt(view_.panels_, point);
        view_.gestureStart = point;
        clicked_ = false;
        CClientDC dc(&view_);
        view_.StartRuler(&dc, point);
        view_.EnterMode(RulerDragging);
    }
    void Move(UINT flags, CPoint point) override {
        view_.ShowPointer(point);
        if (!IsDragging()) return;
        const RulerAlongAxis bent(view_.ruler, (flags & MK_CONTROL) != 0);
        CClientDC dc(&view_);
        view_.RulerTo(&dc, point);
        view_.Say("Ruler: " + view_.MeasuredText());
    }
    void Up(UINT flags, CPoint point) override {
        if (!IsDragging()) return;
        if (!clicked_ && IsClick(view_.gestureStart, point)) {
            clicked_ = true;
            return;
        }
        const RulerAlongAxis bent(view_.ruler, (flags & MK_CONTROL) != 0);
        CClientDC dc(&view_);
        view_.rulerVisible = view_.EndRuler(&dc, point);
        view_.Invalidate(FALSE);
        view_.EnterMode(ShowPosition);
    }
    bool IsDragging() const override { return view_.mouseMode == RulerDragging; }
    CString StatusText() const override {
        return IsDragging() ? "" : "Drag, or click twice, to measure; Esc ends this";
    }
    void Leave() override { view_.HideGesture(); }

  private:
    CSeriesView& view_;
    bool clicked_ = false;  // the first of two clicks is done
};

void CSeriesView::AddSeriesModes() {
    AddMouseMode(ShowPosition, std::make_shared<PointerMode>(*this));
    const auto rectangle = std::make_shared<RectangleMode>(*this);
    AddMouseMode(ZoomArmed, rectangle);
    AddMouseMode(ZoomDragging, rectangle);
    const auto measuring = std::make_shared<MeasuringMode>(*this);
    AddMouseMode(RulerArmed, measuring);
    AddMouseMode(RulerDragging, measuring);
}

void CSeriesView::OnLButtonDown(UINT flags, CPoint point) {
    if (spaceHeld_) return;
    const bool armed = mouseMode == RulerArmed;
    CXYGraphView::OnLButtonDown(flags, point);
    // Ctrl begins a ruler where it was pressed.
    if (!armed && mouseMode == RulerArmed) Mode().Down(flags, point);
}

void CSeriesView::OnMouseMove(UINT flags, CPoint point) {
    lastMousePosition = point;
    if ((flags & MK_MBUTTON) || ((flags & MK_LBUTTON) && spaceHeld_)) {
        if (!panFrom_)
            panPanel_ = PanelAt(panels_, point);
        else if (!(*panFrom_ == point))
            PanBy({point.x - panFrom_->x, point.y - panFrom_->y}, panPanel_);
        panFrom_ = point;
        return;
    }
    panFrom_.reset();
    Mode().Move(flags, point);
}

void CSeriesView::OnMouseLeave() {
    pointer_.reset();
    hovered_.reset();
    Invalidate(FALSE);
}

void CSeriesView::OnMButtonDblClk(UINT, CPoint) { RunCommand(*this, CmdZoomAll); }

BOOL CSeriesView::OnMouseWheel(UINT flags, short delta, CPoint point) {
    if (flags & MK_SHIFT) {
        OnMouseHWheel(flags, static_cast<short>(-delta), point);
        return TRUE;
    }
    ScreenToClient(&point);
    ZoomAbout(delta < 1 ? 1 / kWheelStep : kWheelStep, point);
    return TRUE;
}

BOOL CSeriesView::OnMouseHWheel(UINT, short delta, CPoint point) {
    ScreenToClient(&point);
    const std::size_t at = PanelAt(panels_, point);
    if (const PlotPanel* const panel = Panel(at))
        PanBy({-RoundHalfAway(panel->plot.Width() * kWheelPan * delta / WHEEL_DELTA), 0}, at);
    return TRUE;
}

void CSeriesView::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_SPACE) spaceHeld_ = true;
    CXYGraphView::OnKeyDown(key, repeat, flags);
}

void CSeriesView::OnKeyUp(UINT key, UINT repeat, UINT flags) {
    if (key == VK_SPACE) spaceHeld_ = false;
    CXYGraphView::OnKeyUp(key, repeat, flags);
}

}  // namespace app
