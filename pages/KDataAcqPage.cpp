#include "pages/KDataAcqPage.h"

#include "pages/DataPageResources.h"
#include "pages/PageControls.h"
#include "sources/IPointSource.h"

KDataAcqPage::KDataAcqPage() : CPropertyPage(kCalculationsDialog) {}

BOOL KDataAcqPage::OnInitDialog() {
    for (const auto* const list : {&candidates, &addSeries, &subtractSeries})
        for (IPointSource* const series : *list) names.try_emplace(series, series->GetName());
    const BOOL result = CPropertyPage::OnInitDialog();
    for (IPointSource* const series : candidates)
        candidateBox.SetItemDataPtr(candidateBox.AddString(names[series]), series);
    return result;
}

void KDataAcqPage::DoDataExchange(CDataExchange* exchange) {
    CPropertyPage::DoDataExchange(exchange);
    DDX_Control(exchange, kCandidates, candidateBox);
    DDX_Control(exchange, kSubtractList, subtractBox);
    DDX_Control(exchange, kAddList, addBox);
    using P = KDataAcqPage;
    static constexpr pages::Control<P> kControls[] = {
        pages::Check(kInvertInput, &P::invertInput),
        pages::Edit(kInputName, &P::inputName),
        pages::Edit(kOffset, &P::offset),
    };
    pages::ExchangeControls(*exchange, *this, kControls);
}

void KDataAcqPage::Fill(CListBox& box, const std::list<IPointSource*>& series) {
    box.ResetContent();
    for (IPointSource* const one : series) box.SetItemDataPtr(box.AddString(names[one]), one);
}

std::list<IPointSource*> KDataAcqPage::SeriesIn(const CListBox& box) {
    std::list<IPointSource*> series;
    for (int i = 0; i < box.GetCount(); ++i)
        series.push_back(static_cast<IPointSource*>(box.GetItemDataPtr(i)));
    return series;
}

BOOL KDataAcqPage::OnSetActive() {
    const BOOL result = CPropertyPage::OnSetActive();
    Fill(addBox, addSeries);
    Fill(subtractBox, subtractSeries);
    return result;
}

BOOL KDataAcqPage::OnKillActive() {
    if (!CPropertyPage::OnKillActive()) return FALSE;
    addSeries = SeriesIn(addBox);
    subtractSeries = SeriesIn(subtractBox);
    return TRUE;
}

bool KDataAcqPage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<KDataAcqPage> kControls[] = {
        {BN_CLICKED, kAddSeries, kSubtractSeries, &KDataAcqPage::OnAdd},
        {BN_CLICKED, kClearAdded, kClearSubtracted, &KDataAcqPage::OnClear},
    };
    return RouteControl(*this, kControls, id, code) || CPropertyPage::OnControlMsg(id, code);
}

void KDataAcqPage::OnClear(UINT button) { (button == kClearAdded ? addBox : subtractBox).ResetContent(); }

void KDataAcqPage::OnAdd(UINT button) {
    const int chosen = candidateBox.GetCurSel();
    if (chosen < 0) return;
    CString name;
    candidateBox.GetLBText(chosen, name);
    CListBox& box = button == kAddSeries ? addBox : subtractBox;
    box.SetItemDataPtr(box.AddString(name), candidateBox.GetItemDataPtr(chosen));
}
