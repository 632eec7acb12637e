// The commands of the program's view.
#include <algorithm>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

const CommandRow<CSeriesView> CSeriesView::kCommands[] = {
    {kSeriesFirst, kSeriesLast, &CSeriesView::OnSeries, &CSeriesView::OnUpdateSeries},
    {kNextSeries, kPreviousSeries, &CSeriesView::OnStepSeries, &CSeriesView::OnUpdateManySeries},
    {kAllSeries, kAllSeries, &CSeriesView::OnAllSeries, &CSeriesView::OnUpdateManySeries},
    {kTiles, kTiles, &CSeriesView::OnToggleTiles, &CSeriesView::OnUpdateToggleTiles},
    {kNextPage, kPreviousPage, &CSeriesView::OnPage, &CSeriesView::OnUpdatePage},
    {kGrid, kGrid, &CSeriesView::OnToggleGrid, &CSeriesView::OnUpdateToggleGrid},
    {kDrawDots, kDrawLine, &CSeriesView::OnDrawStyle, &CSeriesView::OnUpdateDrawStyle},
    {kRulerFree, kRulerCircle, &CSeriesView::OnRulerType, &CSeriesView::OnUpdateRulerType},
    {kBackground, kBackground, &CSeriesView::OnBackground},
    {kSeriesColor, kSeriesColor, &CSeriesView::OnSeriesColor},
};

bool CSeriesView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CXYGraphView::OnCmdMsg(id, update);
}

void CSeriesView::OnSeries(UINT id) { Show(id - kSeriesFirst, !IsShown(id - kSeriesFirst)); }

void CSeriesView::OnUpdateSeries(CCmdUI* state) {
    const std::size_t i = state->m_nID - kSeriesFirst;
    const bool known = i < file_.series.size();
    state->Enable(known);
    state->SetCheck(IsShown(i));
    std::string text = known ? std::string(file_.series[i].source->GetName()) : "";
    for (std::size_t at = 0; (at = text.find('&', at)) != std::string::npos; at += 2) text.insert(at, "&");
    state->SetText(text.c_str());
}

void CSeriesView::OnStepSeries(UINT id) {
    const std::size_t count = file_.series.size();
    const std::size_t step = id == kNextSeries ? 1 : count - 1;
    ShowOnly({(IndexOf(PrimarySource()) + step) % count});
}

void CSeriesView::OnAllSeries() {
    std::vector<std::size_t> all;
    for (std::size_t i = 0; i < file_.series.size(); ++i)
        if (file_.series[i].group == Primary().group) all.push_back(i);
    ShowOnly(all);
}

void CSeriesView::OnUpdateManySeries(CCmdUI* state) { state->Enable(file_.series.size() > 1); }

void CSeriesView::OnToggleTiles() {
    tiled = !tiled;
    page = 0;
    HandleZoom(CmdZoomAll, CPoint());
}

void CSeriesView::OnUpdateToggleTiles(CCmdUI* state) { state->SetCheck(tiled); }

void CSeriesView::OnPage(UINT id) { id == kNextPage ? OnViewNextPage() : OnViewPrevPage(); }

void CSeriesView::OnUpdatePage(CCmdUI* state) {
    state->Enable(state->m_nID == kNextPage ? page + 1 < GetNumPages() : page > 0);
}

void CSeriesView::OnRulerType(UINT id) {
    ruler.setType(KRuler::RulerType(id - kRulerFree));
    rulerVisible = false;
    EnterMode(RulerArmed);
    Invalidate(FALSE);
}

void CSeriesView::OnUpdateRulerType(CCmdUI* state) {
    state->SetCheck(static_cast<UINT>(ruler.getType()) == state->m_nID - kRulerFree);
}

void CSeriesView::OnToggleGrid() {
    axes.DrawXLines = axes.DrawYLines = !(axes.DrawXLines || axes.DrawYLines);
    Redraw();
}

void CSeriesView::OnUpdateToggleGrid(CCmdUI* state) { state->SetCheck(axes.DrawXLines || axes.DrawYLines); }

void CSeriesView::OnDrawStyle(UINT id) {
    for (IPointSource* const source : shownSources)
        KDrawPropertyManager::Instance()
            .GetProperty(source->GetKey())
            .setDrawStyle(static_cast<int>(id - kDrawDots));
    Redraw();
}

void CSeriesView::OnUpdateDrawStyle(CCmdUI* state) {
    state->SetCheck(GetDrawStyle(PrimarySource()) == static_cast<int>(state->m_nID - kDrawDots));
}

void CSeriesView::OnBackground() { ChangeBkColor(); }

void CSeriesView::OnSeriesColor() {
    unsigned long color = GetColor(PrimarySource());
    if (!EditColor(color)) return;
    SetColor(PrimarySource(), color);
    Redraw();
}

}  // namespace app
