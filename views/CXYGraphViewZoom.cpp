// How the graph view zooms, scrolls and follows its document.
#include <utility>

#include "platform/window/CClientDC.h"
#include "platform/window/CDocument.h"
#include "platform/window/KeyState.h"
#include "views/CXYGraphView.h"

namespace {

// The range of a scroll bar from where the visible area starts over what it can move.
struct ScrollRange {
    int min = 0;
    int max = 0;

    ScrollRange(double start, int amount) {
        if (amount < 1) return;
        min = RoundHalfAway(start);
        max = RoundHalfAway(start + amount);
    }
};

int Negated(int value) { return SubtractSaturated(0, value); }

}  // namespace

void CXYGraphView::OnZoom(unsigned int command) { HandleZoom(command, zoom.ViewCentre()); }

void CXYGraphView::HandleZoom(unsigned int command, CPoint about) {
    const unsigned int cookie = GetCookie();
    RunZoomCommand(command, about);
    if (command == CmdZoomAll) {
        if (!SendUpdate({cookie, CViewUpdate::ZoomAll})) return;
    } else if (command != CmdZoomMode) {
        if (!SendZoom()) return;
    }
    zoom.AlignTo(NewestSample());
    SetScrollSizes();
    // Both renew the statistics, as after a change of the data.
    if (command == CmdZoomAll || command == CmdZoomExtent)
        Redraw();
    else
        RedrawMoved();
    CatchUp();
}

void CXYGraphView::RunZoomCommand(unsigned int command, CPoint about) {
    const ZoomStep step = GetKeyState(VK_CONTROL) < 0 ? ZoomStep::Softened : ZoomStep::Full;
    switch (command) {
        case CmdZoomMode:
            if (mouseMode == ShowPosition)
                EnterMode(ZoomArmed);
            else if (mouseMode == ZoomArmed || mouseMode == ZoomDragging)
                EnterMode(ShowPosition);
            break;
        case CmdZoomIn:
            zoom.Step(ZoomWay::In, step, about);
            break;
        case CmdZoomOut:
            zoom.Step(ZoomWay::Out, step, about);
            break;
        case CmdZoomAll:
            ZoomAll();
            break;
        case CmdZoomExtent:
            ZoomExtent();
            break;
        case CmdZoomBack:
            zoom.Back();
            break;
        default:
            break;
    }
}

void CXYGraphView::ZoomAll() {
    for (IPointSource* const source : shownSources) source->UpdateStats();
    UpdateAxis();
    zoom.ShowAll(AxisRange());
}

void CXYGraphView::ZoomExtent() {
    IPointSource* const primary = PrimarySource();
    if (!primary) return;
    for (IPointSource* const source : shownSources) source->UpdateStats();
    UpdateAxis();
    const CPointEx low(primary->GetMinX(), primary->GetMinY());
    const CSizeEx extent = axes.GetExtent();
    const CPoint origin = CPointEx(low.x * scaleX - offset.x, low.y * scaleY - offset.y);
    // A series without extent asks for an infinite zoom, which is refused.
    AddZoom(CZoomInfo(static_cast<float>(extent.cx / (primary->GetMaxX() - low.x)),
                      static_cast<float>(extent.cy / (primary->GetMaxY() - low.y)), origin.x, origin.y, 0,
                      0));
}

void CXYGraphView::SetScrollSizes() {
    const StoredRange range = AxisRange();
    zoom.FitScrollSizes(range);
    if (!GetSafeHwnd()) return;
    // Scroll bars may resize the window, which must not zoom it.
    const int iso = std::exchange(zoom.isoAspect, 0);
    const ScrollRange x(range.org.x, zoom.scrollAmount.cx);
    const ScrollRange y(range.org.y, zoom.scrollAmount.cy);
    SetScrollRange(SB_HORZ, x.min, x.max);
    if (axes.PositiveUp)
        SetScrollRange(SB_VERT, Negated(y.max), Negated(y.min));
    else
        SetScrollRange(SB_VERT, y.min, y.max);
    SetScrollPage(SB_HORZ, zoom.viewExtent.cx);
    SetScrollPage(SB_VERT, zoom.viewExtent.cy);
    zoom.isoAspect = iso;
}

void CXYGraphView::ShowScrollPosition() {
    if (!GetSafeHwnd()) return;
    const CZoomInfo& shown = zoom.Current();
    SetScrollPos(SB_HORZ, shown.originX);
    SetScrollPos(SB_VERT, axes.PositiveUp ? Negated(shown.originY) : shown.originY);
}

std::optional<int> CXYGraphView::ScrollTarget(int bar, UINT code, UINT position) const {
    SCROLLINFO info;
    if (!GetScrollInfo(bar, &info)) return {};
    const int line = bar == SB_HORZ ? zoom.lineStep.cx : zoom.lineStep.cy;
    const int shown = bar == SB_HORZ ? zoom.viewExtent.cx : zoom.viewExtent.cy;
    switch (code) {
        case SB_LINELEFT:
            return SubtractSaturated(info.nPos, line);
        case SB_LINERIGHT:
            return AddSaturated(info.nPos, line);
        case SB_PAGELEFT:
        case SB_LEFT:
            return SubtractSaturated(info.nPos, shown);
        case SB_PAGERIGHT:
        case SB_RIGHT:
            return AddSaturated(info.nPos, shown);
        case SB_THUMBPOSITION:
            return static_cast<int>(position);
        case SB_THUMBTRACK:
            return info.nTrackPos;
        default:
            return {};
    }
}

void CXYGraphView::OnHScroll(UINT code, UINT position, CScrollBar*) {
    const std::optional<int> target = ScrollTarget(SB_HORZ, code, position);
    if (!target) return;
    zoom.Current().originX = *target;
    if (SendUpdate({GetCookie(), CViewUpdate::OriginXChanged, long{*target}})) RedrawMoved();
}

void CXYGraphView::OnVScroll(UINT code, UINT position, CScrollBar*) {
    const std::optional<int> target = ScrollTarget(SB_VERT, code, position);
    if (!target) return;
    zoom.Current().originY = axes.PositiveUp ? Negated(*target) : *target;
    RedrawMoved();
}

void CXYGraphView::OnSize(UINT type, int width, int height) {
    const bool resized = width != 0 && height != 0 && !(size == CSize(width, height));
    KViewEx::OnSize(type, width, height);
    if (resized && zoom.isoAspect) {
        CClientDC dc(this);
        OnPrepareDC(&dc);
        HandleZoom(CmdZoomAll, {});
        zoom.KeepCurrent();
    }
    if (width != 0 || height != 0) SetCaption();
}

bool CXYGraphView::SendUpdate(CViewUpdate hint) {
    const bool hadWindow = GetSafeHwnd() != nullptr;
    if (CDocument* const document = GetDocument()) document->UpdateAllViews(this, 0, &hint);
    return !hadWindow || GetSafeHwnd();
}

bool CXYGraphView::SendZoom() {
    return SendUpdate({GetCookie(), CViewUpdate::ZoomXChanged, double{zoom.Current().zoomX}}) &&
           SendUpdate({GetCookie(), CViewUpdate::OriginXChanged, long{zoom.Current().originX}});
}

void CXYGraphView::TakeUpdate(const CViewUpdate& hint) {
    const int type = hint.GetType();
    if (type != CViewUpdate::ShowSource && type != CViewUpdate::HideSource &&
        type != CViewUpdate::RemoveSource)
        return;
    IPointSource* const source = hint.GetSource();
    // Shown or hidden it stays the view's, with the lines that end in it.
    type == CViewUpdate::RemoveSource ? RemoveSource(source) : TakeOut(source);
    if (source && type == CViewUpdate::ShowSource) shownSources.push_back(source);
    if (source && type == CViewUpdate::HideSource) hiddenSources.push_back(source);
    if (type != CViewUpdate::HideSource) PrimaryDataChanged(PrimarySource());
    // A primary series brings its caption along.
    if (!PrimarySource()) SetCaption();
}

void CXYGraphView::OnUpdate(CView* sender, long hint, CObject* hintObject) {
    if (hintObject && hintObject->IsKindOf(RUNTIME_CLASS(CViewUpdate)))
        TakeUpdate(static_cast<const CViewUpdate&>(*hintObject));
    pyramids.Clear();
    // Nothing disturbs a drag; CatchUp follows it.
    updateMissed = Mode().IsDragging();
    if (updateMissed) return;
    if (IPointSource* const primary = PrimarySource()) {
        SetPrimaryData(primary);
        UpdateAxis();
        if (const std::optional<CPoint> newest = NewestSample()) zoom.Follow(*newest, AxisRange());
        SetScrollSizes();
    }
    stale = Changed;
    KViewEx::OnUpdate(sender, hint, hintObject);
}

void CXYGraphView::CatchUp() {
    if (updateMissed && GetSafeHwnd()) OnUpdate(nullptr, 0, nullptr);
}
