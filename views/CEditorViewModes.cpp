// What the mouse does in the editor view: choosing a point, dragging it, drawing an outline, dragging what is
// inside it.
#include "platform/gdi/Selected.h"
#include "platform/window/CClientDC.h"
#include "platform/window/CFrameWnd.h"
#include "views/CEditorView.h"
#include "views/PlotClip.h"

// What the gestures have in common: places in stored units, and rubber bands whose second drawing erases
// them.
class CEditorView::EditGesture : public GraphMouseMode {
  public:
    explicit EditGesture(CEditorView& view) : view_(view) {}

  protected:
    // Editing happens in the plot of the primary series, the first one of tiles.
    CPoint Stored(CPoint point) const {
        view_.gestureStart = {};
        CClientDC dc(&view_);
        view_.OnPrepareDC(&dc);
        dc.DPtoLP(&point);
        return point;
    }
    // draw(context) draws the same each time until the band is hidden. The gaps of the dotted pen are drawn
    // too, in the background colour: that is what shows under XOR.
    template <class Draw>
    void ShowBand(Draw draw) const {
        CClientDC dc(&view_);
        view_.OnPrepareDC(&dc);
        view_.gesture.Show(dc, view_.plotArea, [&view = view_, draw](CDC& target) {
            target.SetBkMode(OPAQUE);
            const Selected usePen(target, view.dottedPen);
            const SelectedStock noFill(target, NULL_BRUSH);
            const SelectedRop2 inXor(target, R2_XORPEN);
            draw(target);
        });
    }
    // How far something was dragged, and where to, in stored y.
    void TellDistance(const char* what, double distance, double place) const {
        CFrameWnd* const frame = view_.GetParentFrame();
        if (!frame) return;
        const char* const unit = view_.axes.UnitY;
        CString text;
        text.Format("Translating %s: %.3lf %s to: %.3lf %s", what, distance / view_.scaleY, unit,
                    (place + view_.offset.y) / view_.scaleY, unit);
        frame->SetMessageText(text);
    }

    CEditorView& view_;
};

class CEditorView::PointDrag : public EditGesture {
  public:
    using EditGesture::EditGesture;

    void Begin(CPoint point) {
        series_ = view_.PrimarySource();
        start_ = point_ = point;
        view_.EnterMode(PointDragging);
        ShowPoint();
    }
    void Move(UINT, CPoint point) override {
        point_.y = Stored(point).y;
        ShowPoint();
        TellDistance("point", double{1.0} * point_.y - start_.y, point_.y);
    }
    void Up(UINT, CPoint) override {
        view_.EnterMode(ShowPosition);
        CXYEditData* const data = view_.GetDataHandler();
        // The series may have gone meanwhile.
        if (!data || !series_ || view_.PrimarySource() != series_ || !view_.TakeSnapshot()) return;
        const long moved = long{point_.y} - start_.y;
        view_.DataChanged(data->TranslateSelected(0, moved, false));
        view_.SetCaption();
        view_.Redraw();
    }
    HCURSOR Cursor() const override { return IDC_SIZENS; }
    void Leave() override { view_.HideGesture(); }

  private:
    void ShowPoint() const {
        ShowBand([&view = view_, point = point_](CDC& target) {
            CPoint at = point;
            if (CXYEditData* const data = view.GetDataHandler()) data->DrawRubberBand(&target, at);
        });
    }

    const IPointSource* series_ = nullptr;  // only compared
    CPoint start_;
    CPoint point_;
};

class CEditorView::OutlinePen : public EditGesture {
  public:
    using EditGesture::EditGesture;

    void Begin() {
        view_.outline.Clear();
        view_.BuildRegion();
        view_.EnterMode(OutlineDrawing);
        view_.Redraw(TRUE);
    }
    void Down(UINT flags, CPoint point) override {
        const CPoint vertex = Stored(point);
        RegionOutline& outline = view_.outline;
        outline.FollowShift((flags & MK_SHIFT) != 0);
        view_.HideGesture();
        if (!outline.IsRectangle() && !outline.Add(vertex)) return Finish(flags, point);
        view_.Invalidate(FALSE);
    }
    void Move(UINT flags, CPoint point) override {
        RegionOutline& outline = view_.outline;
        if (!outline.IsEmpty()) {
            const CPoint corner = Stored(point);
            outline.FollowShift((flags & MK_SHIFT) != 0);
            outline.DragTo(corner);
            ShowBand([drawn = outline, corner](CDC& target) {
                target.MoveTo(drawn.Vertices()[0]);
                target.LineTo(corner);
                if (drawn.IsRectangle())
                    target.Polygon(drawn.Vertices(), drawn.VertexCount());
                else if (drawn.VertexCount() > 1)
                    target.LineTo(drawn.Vertices()[drawn.VertexCount() - 1]);
            });
        }
        view_.ShowPositionOf(point);
    }
    void Up(UINT flags, CPoint point) override {
        if (view_.outline.IsRectangle()) Finish(flags, point);
    }
    void Finish(UINT flags, CPoint point) {
        closing_ = true;
        view_.EnterMode(ShowPosition);
        closing_ = false;
        view_.EndCreateRegion(flags, point);
        view_.Invalidate(FALSE);
    }
    void DrawOverlay(CDC& dc) override {
        const RegionOutline& outline = view_.outline;
        if (outline.IsRectangle() || outline.VertexCount() < 2) return;
        const PlotClip inPlot(dc);
        const SelectedStock black(dc, BLACK_PEN);
        dc.Polyline(outline.Vertices(), outline.VertexCount());
    }
    void Leave() override {
        view_.HideGesture();
        if (!closing_) view_.outline.Clear();
    }

  private:
    bool closing_ = false;
};

class CEditorView::RegionDrag : public EditGesture {
  public:
    using EditGesture::EditGesture;

    void Begin(CPoint point) {
        series_ = view_.PrimarySource();
        start_ = point;
        moved_ = {};
        view_.sample.SetDataSet(view_.GetDataHandler());
        view_.sample.GetSampleInsideRegion();
        CClientDC dc(&view_);
        view_.OnPrepareDC(&dc);
        view_.sample.Simplify(dc);
        view_.EnterMode(RegionDragging);
        ShowRegion();
    }
    void Move(UINT flags, CPoint point) override {
        const CPoint to = Stored(point);
        const CPoint distance = to - start_;
        // The band on the window is erased as it was drawn, before the sample moves.
        view_.HideGesture();
        moved_ = MovesFreely(flags) ? distance : CPoint(0, distance.y);
        if (!MovesFreely(flags)) view_.sample.TranslateSample(moved_);
        ShowRegion();
        TellDistance("region", distance.y, to.y);
    }
    void Up(UINT flags, CPoint point) override {
        Move(flags, point);
        const CPoint moved = moved_;
        const long distance = long{Stored(point).y} - start_.y;
        view_.EnterMode(ShowPosition);
        CXYEditData* const data = view_.GetDataHandler();
        if (!data || !series_ || view_.PrimarySource() != series_) return;
        if (!MovesFreely(flags) && !view_.TakeSnapshot()) return;
        view_.MoveRegion(moved);
        if (view_.isoAspectAllowed || (flags & MK_CONTROL)) {
            data->SetSelected(view_.region, true);
            view_.Invalidate(FALSE);
            return;
        }
        view_.DataChanged(data->TranslateSelected(0, distance, false, true));
        view_.Redraw();
    }
    HCURSOR Cursor() const override { return IDC_SIZENS; }
    void Leave() override {
        view_.HideGesture();
        view_.sample.DeleteSample();
    }

  private:
    // The outline alone moves, in both directions; otherwise vertically, with the points.
    bool MovesFreely(UINT flags) const {
        return view_.isoAspectAllowed || ((flags & MK_CONTROL) && (flags & MK_SHIFT));
    }
    void ShowRegion() const {
        RegionOutline shifted = view_.outline;
        shifted.Move(moved_);
        ShowBand([&view = view_, shifted](CDC& target) {
            view.sample.DrawSample(&target);
            target.Polygon(shifted.Vertices(), shifted.VertexCount());
        });
    }

    const IPointSource* series_ = nullptr;  // only compared
    CPoint start_;
    CPoint moved_;
};

// In place of the graph view's own mode of showing the position.
class CEditorView::PointMode : public EditGesture {
  public:
    using EditGesture::EditGesture;

    void Down(UINT flags, CPoint point) override {
        if ((flags & MK_SHIFT) && !(flags & MK_CONTROL)) {
            view_.outlinePen->Begin();
            return view_.outlinePen->Down(flags, point);
        }
        CXYEditData* const data = view_.GetDataHandler();
        if (!data) return;
        const CPoint pressed = Stored(point);
        if (!view_.outline.IsEmpty() && view_.region.PtInRegion(pressed))
            return view_.regionDrag->Begin(pressed);
        CPoint found = pressed;
        const long hit = HitPoint(*data, found);
        if (hit < 0) {
            data->DeSelectPoint();
            view_.SetCaption();
            view_.RedrawMoved();
        } else if (hit == data->GetSelectedIndex()) {
            view_.pointDrag->Begin(data->SelectPoint(static_cast<int>(hit)));
        } else {
            data->SelectPoint(static_cast<int>(hit));
            view_.OnSelectionChanged();
        }
    }
    void Move(UINT, CPoint point) override { view_.ShowPositionOf(point); }
    HCURSOR Cursor() const override { return IDC_ARROW; }

  private:
    long HitPoint(CXYEditData& data, CPoint& place) const {
        CClientDC dc(&view_);
        view_.OnPrepareDC(&dc);
        return data.HitTest(&dc, place, view_.hitTolerance);
    }
};

void CEditorView::Init() {
    CEditorView::UpdateColors();
    settingsPages |= PageTranslate | PageScale | PageSmooth | PageFindSpikes | PageMedian;
    pointDrag = std::make_shared<PointDrag>(*this);
    outlinePen = std::make_shared<OutlinePen>(*this);
    regionDrag = std::make_shared<RegionDrag>(*this);
    AddMouseMode(ShowPosition, std::make_shared<PointMode>(*this));
    AddMouseMode(PointDragging, pointDrag);
    AddMouseMode(OutlineDrawing, outlinePen);
    AddMouseMode(RegionDragging, regionDrag);
}

void CEditorView::OnLButtonDblClk(UINT flags, CPoint point) {
    if (mouseMode == OutlineDrawing) outlinePen->Finish(flags, point);
    CXYGraphView::OnLButtonDblClk(flags, point);
}

void CEditorView::OnEditCreateRegion() {
    EndGesture();
    outlinePen->Begin();
}

void CEditorView::OnModeEscape() {
    if (mouseMode == OutlineDrawing) RemoveRegion();
    CXYGraphView::OnModeEscape();
}

void CEditorView::EndGesture() {
    if (mouseMode != PointDragging && mouseMode != OutlineDrawing && mouseMode != RegionDragging) return;
    EnterMode(ShowPosition);
    RedrawMoved();
}
