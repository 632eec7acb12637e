#include "views/KConnectionLineDlg.h"

#include "pages/LineStyles.h"
#include "platform/dialog/CDataExchange.h"
#include "platform/gdi/CDC.h"
#include "platform/window/CommonDialogs.h"
#include "sources/IPointSource.h"
#include "views/ConnectionLineResources.h"
#include "views/KConnectionLineManager.h"

KConnectionLineDlg::KConnectionLineDlg(const KConnectionLineManager::LineProperties& lines, CWnd* parent)
    : CDialog(kConnectionLineDialog, parent), set(lines) {}

BOOL KConnectionLineDlg::OnInitDialog() {
    fromBox.SubclassDlgItem(kFromSeries, this);
    toBox.SubclassDlgItem(kToSeries, this);
    typeBox.SubclassDlgItem(kLineTypes, this);
    styleBox.SubclassDlgItem(kLineStyles, this);
    for (const int known : {KConnectionLine::LastToLast, KConnectionLine::Projected})
        typeBox.AddString(KConnectionLine::GetTypeName(known));
    ListLineStyles(styleBox);
    for (CComboBox* const box : {&fromBox, &toBox}) box->EnableWindow(selectSeries);
    if (selectSeries) {
        FillSeries(fromBox, from);
        FillSeries(toBox, to);
    }
    return CDialog::OnInitDialog();
}

void KConnectionLineDlg::FillSeries(CComboBox& box, const IPointSource* chosen) const {
    for (const auto* const list : {set.hidden, set.shown})
        for (IPointSource* const series : *list) {
            const int place = box.AddString(series->GetName());
            box.SetItemDataPtr(place, series);
            if (series == chosen) box.SetCurSel(place);
        }
}

void KConnectionLineDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_CBIndex(exchange, kLineTypes, type);
    DDX_CBItemData(exchange, kLineStyles, style);
    if (!exchange->m_bSaveAndValidate || !selectSeries) return;
    TakeSeries(exchange, kFromSeries, fromBox, from, "Please Select \"From\"");
    TakeSeries(exchange, kToSeries, toBox, to, "Please Select \"To\"");
}

void KConnectionLineDlg::TakeSeries(CDataExchange* exchange, UINT id, const CComboBox& box,
                                    IPointSource*& series, const char* refusal) const {
    if (exchange->HasFailed()) return;
    exchange->PrepareCtrl(id);
    const int chosen = box.GetCurSel();
    if (chosen < 0) return exchange->Refuse(refusal);
    series = static_cast<IPointSource*>(box.GetItemDataPtr(chosen));
}

bool KConnectionLineDlg::OnControlMsg(UINT id, UINT code) {
    if (id != kLineColor || code != BN_CLICKED) return CDialog::OnControlMsg(id, code);
    CColorDialog dialog(color, this);
    if (dialog.DoModal() == IDOK) {
        color = dialog.GetColor();
        Invalidate();
    }
    return true;
}

const CBrush* KConnectionLineDlg::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    const CBrush* const brush = CDialog::OnCtlColor(dc, control, kind);
    if (kind == CTLCOLOR_STATIC && control && control->GetDlgCtrlID() == static_cast<int>(kLineSwatch)) {
        dc->SetBkMode(OPAQUE);
        dc->SetBkColor(color);
    }
    return brush;
}
