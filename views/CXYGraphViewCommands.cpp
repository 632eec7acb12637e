// The commands of the graph view.
#include "platform/window/CFrameWnd.h"
#include "views/CXYGraphView.h"

const CommandRow<CXYGraphView> CXYGraphView::kCommands[] = {
    {CmdZoomMode, CmdZoomBack, &CXYGraphView::OnZoom, &CXYGraphView::OnUpdateZoom},
    {CmdModeEscape, CmdModeEscape, &CXYGraphView::OnModeEscape},
    {CmdToggleLegend, CmdToggleLegend, &CXYGraphView::OnToggleLegend, &CXYGraphView::OnUpdateToggleLegend},
    {CmdCreateRuler, CmdCreateRuler, &CXYGraphView::OnCreateRuler, &CXYGraphView::OnUpdateCreateRuler},
    {CmdViewSettings, CmdViewSettings, &CXYGraphView::OnViewSettings},
    {CmdTitleBar, CmdTitleBar, &CXYGraphView::OnTitleBarOnOff, &CXYGraphView::OnUpdateTitleBarOnOff},
    {CmdIsoAspect, CmdIsoAspect, &CXYGraphView::OnToggleIsoAspect, &CXYGraphView::OnUpdateToggleIsoAspect},
};

bool CXYGraphView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || KViewEx::OnCmdMsg(id, update);
}

void CXYGraphView::OnUpdateZoom(CCmdUI* state) {
    if (state->m_nID == CmdZoomMode) state->SetCheck(mouseMode == ZoomArmed || mouseMode == ZoomDragging);
    if (state->m_nID == CmdZoomBack) state->Enable(zoom.Depth() > 1);
}

void CXYGraphView::OnModeEscape() {
    EnterMode(ShowPosition);
    Redraw();
    CatchUp();
}

void CXYGraphView::OnToggleLegend() {
    showLegend = !showLegend;
    Redraw(TRUE);
}

void CXYGraphView::OnUpdateToggleLegend(CCmdUI* state) { state->SetCheck(showLegend); }

void CXYGraphView::OnCreateRuler() {
    const bool inUse = rulerVisible || mouseMode == RulerArmed || mouseMode == RulerDragging;
    EnterMode(inUse ? ShowPosition : RulerArmed);
    rulerVisible = false;
    Invalidate(FALSE);
    CatchUp();
}

void CXYGraphView::OnUpdateCreateRuler(CCmdUI* state) {
    state->SetCheck(rulerVisible || mouseMode == RulerArmed || mouseMode == RulerDragging);
}

void CXYGraphView::OnTitleBarOnOff() {
    titleBarOff = !titleBarOff;
    CFrameWnd* const frame = GetParentFrame();
    if (!frame) return;
    constexpr DWORD kTitleBar = WS_CAPTION | WS_SYSMENU;
    frame->ModifyStyle(titleBarOff ? kTitleBar : 0, titleBarOff ? 0 : kTitleBar);
    // Another size and back again makes the frame lay itself out.
    WINDOWPLACEMENT placement;
    if (!frame->GetWindowPlacement(&placement)) return;
    WINDOWPLACEMENT taller = placement;
    taller.rcNormalPosition.bottom = AddSaturated(taller.rcNormalPosition.bottom, 1);
    frame->SetWindowPlacement(&taller);
    frame->SetWindowPlacement(&placement);
}

void CXYGraphView::OnUpdateTitleBarOnOff(CCmdUI* state) {
    state->Enable();
    state->SetCheck(titleBarOff);
}

void CXYGraphView::OnToggleIsoAspect() {
    zoom.isoAspect = !zoom.isoAspect;
    OnZoom(CmdZoomAll);
}

void CXYGraphView::OnUpdateToggleIsoAspect(CCmdUI* state) {
    state->Enable(isoAspectAllowed);
    state->SetCheck(zoom.isoAspect);
}
