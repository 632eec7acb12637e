// The commands of the program's view.
#include <algorithm>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

const CommandRow<CSeriesView> CSeriesView::kCommands[] = {
    {CmdZoomIn, CmdZoomBack, &CSeriesView::OnZoomCommand, &CSeriesView::OnUpdateZoomCommand},
    {CmdModeEscape, CmdModeEscape, &CSeriesView::OnEscape},
    {kFitValues, kFitValues, &CSeriesView::FitValues},
    {kSeriesFirst, kSeriesLast, &CSeriesView::OnSeries, &CSeriesView::OnUpdateSeries},
    {kNextSeries, kPreviousSeries, &CSeriesView::OnStepSeries, &CSeriesView::OnUpdateManySeries},
    {kAllSeries, kAllSeries, &CSeriesView::OnAllSeries, &CSeriesView::OnUpdateManySeries},
    {kStacked, kTiles, &CSeriesView::OnPlotFor, &CSeriesView::OnUpdatePlotFor},
    {kNormalised, kNormalised, &CSeriesView::OnNormalised, &CSeriesView::OnUpdateNormalised},
    {kFileOrder, kFileOrder, &CSeriesView::OnFileOrder, &CSeriesView::OnUpdateFileOrder},
    {kNextPage, kPreviousPage, &CSeriesView::OnPage, &CSeriesView::OnUpdatePage},
    {kGrid, kGrid, &CSeriesView::OnToggleGrid, &CSeriesView::OnUpdateToggleGrid},
    {kFirstFlag, kLastFlag, &CSeriesView::OnToggleFlag, &CSeriesView::OnUpdateFlag},
    {kDrawDots, kDrawLine, &CSeriesView::OnDrawStyle, &CSeriesView::OnUpdateDrawStyle},
    {kRulerFree, kRulerCircle, &CSeriesView::OnRulerType, &CSeriesView::OnUpdateRulerType},
    {kBackground, kBackground, &CSeriesView::OnBackground},
    {kSeriesColor, kSeriesColor, &CSeriesView::OnSeriesColor},
    {kLineProperties, kLineProperties, &CSeriesView::OnLineProperties},
};

bool CSeriesView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CXYGraphView::OnCmdMsg(id, update);
}

void CSeriesView::OnZoomCommand(UINT id) {
    constexpr double kStep = 1.4142135623730951;
    if (id == CmdZoomIn || id == CmdZoomOut) {
        ZoomAbout(id == CmdZoomIn ? kStep : 1 / kStep, {});
    } else if (id == CmdZoomAll) {
        ZoomAll();
        Redraw();
    } else if (id == CmdZoomExtent) {
        ShowExtent();
    } else if (stack_.Back()) {
        RangesChanged();
    }
}

void CSeriesView::OnUpdateZoomCommand(CCmdUI* state) {
    if (state->m_nID == CmdZoomBack) state->Enable(stack_.Depth() > 1);
}

// Ends the mode; without one it hides the ruler.
void CSeriesView::OnEscape() {
    if (mouseMode == ShowPosition) rulerVisible = false;
    EnterMode(ShowPosition);
    Invalidate(FALSE);
    CatchUp();
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
    std::vector<std::size_t> all(file_.series.size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
    ShowOnly(all);
}

void CSeriesView::OnUpdateManySeries(CCmdUI* state) { state->Enable(file_.series.size() > 1); }

// Once more: all in one plot again.
void CSeriesView::OnPlotFor(UINT id) {
    if (id == kTiles)
        SetPlotFor(tiled ? PlotFor::All : PlotFor::Series);
    else
        SetPlotFor(stacked_ ? PlotFor::All : PlotFor::Unit);
}

void CSeriesView::OnUpdatePlotFor(CCmdUI* state) {
    state->SetCheck(state->m_nID == kTiles ? tiled : stacked_);
}

void CSeriesView::OnNormalised() {
    normalised_ = !normalised_;
    rulerVisible = false;
    RangesChanged();
}

void CSeriesView::OnUpdateNormalised(CCmdUI* state) {
    state->Enable(!tiled && !stacked_ && shownSources.size() > 1);
    state->SetCheck(normalised_);
}

// The samples in the order of the rows, or of x again: the file is read once more.
void CSeriesView::OnFileOrder() {
    const CWaitCursor waiting;
    const bool byX = file_.order == PointOrder::OfFile;
    auto again = ReadSeriesFile(file_.options, {}, byX ? PointOrder::OfX : PointOrder::OfFile);
    if (!again) {
        AfxMessageBox(again.Error().message.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    TakeFile(std::move(*again));
    Say(byX ? "Samples in the order of x" : "Samples in the order of the file");
}

void CSeriesView::OnUpdateFileOrder(CCmdUI* state) {
    state->Enable(!file_.xRises);
    state->SetCheck(file_.order == PointOrder::OfFile);
}

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

bool& CSeriesView::FlagOf(UINT id) {
    bool* const flags[] = {&crosshair_, &readOut_, &linked_, &breakAtGaps_, &marks_, &original_};
    return *flags[id - kFirstFlag];
}

void CSeriesView::OnToggleFlag(UINT id) {
    FlagOf(id) = !FlagOf(id);
    TellLinked();
    Redraw();
}

void CSeriesView::OnUpdateFlag(CCmdUI* state) { state->SetCheck(FlagOf(state->m_nID)); }

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

// Axes and labels follow, so that they can be seen.
void CSeriesView::OnBackground() {
    ChangeBkColor();
    UpdateColors();
    Redraw(TRUE);
}

void CSeriesView::OnLineProperties() {
    if (GetDSProperties()->EditProperties(PrimarySource())) Redraw();
}

void CSeriesView::OnSeriesColor() {
    unsigned long color = GetColor(PrimarySource());
    if (!EditColor(color)) return;
    SetColor(PrimarySource(), color);
    Redraw();
}

}  // namespace app
