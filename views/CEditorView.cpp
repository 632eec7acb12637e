#include "views/CEditorView.h"

#include <istream>
#include <ostream>

#include "platform/core/MessageBox.h"
#include "platform/registry/RegistryTransaction.h"
#include "platform/window/CDocument.h"

IMPLEMENT_DYNCREATE(CEditorView, CXYGraphView)

CEditorView::CEditorView() : regionPopupId(-1) { Init(); }

CEditorView::CEditorView(CString name, bool independent, int menuId, unsigned long backgroundColor,
                         IPointSource* source)
    : CXYGraphView(std::move(name), independent, menuId, backgroundColor, 0, source), regionPopupId(menuId) {
    Init();
}

CEditorView::~CEditorView() = default;

void CEditorView::OnInitialUpdate() {
    if (CXYEditData* const data = GetDataHandler()) data->DeSelectPoint();
    CXYGraphView::OnInitialUpdate();
}

void CEditorView::AllocDataHandler(IPointSource* source) {
    dataHandler = std::make_unique<CXYEditData>();
    if (source) dataHandler->SelectPointSource(source);
}

CXYEditData* CEditorView::GetDataHandler() {
    if (!dataHandler) AllocDataHandler(PrimarySource());
    auto* const data = dynamic_cast<CXYEditData*>(dataHandler.get());
    if (data) data->SelectPointSource(PrimarySource());
    return data;
}

void CEditorView::PrimaryDataChanged(IPointSource* source) {
    RemoveRegion();
    CXYGraphView::PrimaryDataChanged(source);
}

int CEditorView::GetRegionPopupID() { return regionPopupId; }

int CEditorView::DataChanged(int changed) {
    IPointSource* const series = PrimarySource();
    if (!series) return changed;
    if (changed) series->SetModified(1);
    CDocument* const document = GetDocument();
    if (document && series->IsModified()) document->SetModifiedFlag(TRUE);
    return changed;
}

void CEditorView::SaveForUndo() {
    IPointSource* const series = PrimarySource();
    if (!series) return;
    std::ostream& stream = series->SaveForUndo(true);
    if (stream.good() && SaveStatus(stream).good()) return;
    snapshotFailed = true;
    // A snapshot without its region would bring back another state than there was.
    if (!stream.good()) series->WithdrawSnapshot();
}

bool CEditorView::TakeSnapshot() {
    snapshotFailed = false;
    SaveForUndo();
    if (snapshotFailed)
        AfxMessageBox(
            "Not enough memory to undo this edit: nothing was changed.\nClose other files and try again.");
    return !snapshotFailed;
}

std::ostream& CEditorView::SaveStatus(std::ostream& stream) {
    outline.Save(stream);
    return stream;
}

std::istream& CEditorView::RestoreStatus(std::istream& stream) {
    outline.Restore(stream);
    BuildRegion();
    CXYEditData* const data = GetDataHandler();
    if (data && outline.IsEmpty()) data->ClearSelection();
    if (data && !outline.IsEmpty()) data->SetSelected(region, true);
    return stream;
}

CString& CEditorView::FormatCaptionStr(CString& text) {
    CXYGraphView::FormatCaptionStr(text);
    IPointSource* const series = PrimarySource();
    CXYEditData* const data = series ? GetDataHandler() : nullptr;
    const long current = data ? data->GetSelectedIndex() : -1;
    if (current < 0 || !series->GetDrawPoints()) return text;
    const CPoint point = data->GetPoint(current);
    CString x;
    CString y;
    FormatXLabel(x, point.x / scaleX);
    FormatYLabel(y, point.y / scaleY);
    text += " (" + x + ", " + y + ") ";
    return text;
}

void CEditorView::OnSelectionChanged() {
    SetCaption();
    Invalidate(FALSE);
    CXYEditData* const data = GetDataHandler();
    if (!data) return;
    const CPoint current = data->GetPoint(data->GetSelectedIndex());
    SendUpdate({GetCookie(), CViewUpdate::SelectionChanged, long{current.x}});
}

bool CEditorView::LoadStdProperties() {
    for (TavinProp* const set : std::initializer_list<TavinProp*>{
             &translateProperties, &scaleProperties, &smoothProperties, &spikeProperties, &medianProperties})
        set->LoadFromRegistry(GetKeyName());
    return CXYGraphView::LoadStdProperties();
}

bool CEditorView::SaveStdProperties() {
    const RegistryTransaction together;
    for (TavinProp* const set : std::initializer_list<TavinProp*>{
             &translateProperties, &scaleProperties, &smoothProperties, &spikeProperties, &medianProperties})
        set->SaveToRegistry(GetKeyName());
    return CXYGraphView::SaveStdProperties();
}
