#include "views/KConnectionLinePage.h"

#include <algorithm>

#include "platform/core/MessageBox.h"
#include "platform/core/StringTable.h"
#include "views/ConnectionLineResources.h"
#include "views/KConnectionLineDlg.h"
#include "views/KConnectionLineManager.h"

KConnectionLinePage::KConnectionLinePage(CString section, KConnectionLineManager::LineProperties* lines)
    : TavinPage(section, lines, true, kConnectionLinesDialog, 0), set(lines) {}

BOOL KConnectionLinePage::OnInitDialog() {
    Forget();
    const BOOL result = TavinPage::OnInitDialog();
    box.SubclassDlgItem(kLineList, this);
    return result;
}

// The lines that wait are nobody's any more.
void KConnectionLinePage::Forget() {
    removed.clear();
    added.clear();
}

BOOL KConnectionLinePage::OnSetActive() {
    const BOOL result = TavinPage::OnSetActive();
    box.ResetContent();
    for (const auto& line : set->lines) ShowLine(line.get());
    return result;
}

BOOL KConnectionLinePage::OnKillActive() {
    if (!TavinPage::OnKillActive()) return FALSE;
    box.ResetContent();
    set->lines.splice(set->lines.end(), added);
    set->lines.remove_if([this](const auto& line) {
        return std::find(removed.begin(), removed.end(), line.get()) != removed.end();
    });
    removed.clear();
    return TRUE;
}

void KConnectionLinePage::OnCancel() {
    Forget();
    TavinPage::OnCancel();
}

int KConnectionLinePage::OnLoadDefault() {
    Forget();
    box.ResetContent();
    if (auto stored = set->StoredLines(GetRegKey())) set->lines = std::move(*stored);
    return 1;
}

bool KConnectionLinePage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<KConnectionLinePage> kControls[] = {
        {BN_CLICKED, kAddLine, kAddLine, &KConnectionLinePage::OnAdd},
        {BN_CLICKED, kEditLine, kEditLine, &KConnectionLinePage::OnEdit},
        {LBN_DBLCLK, kLineList, kLineList, &KConnectionLinePage::OnEdit},
        {BN_CLICKED, kRemoveLine, kRemoveLine, &KConnectionLinePage::OnRemove},
    };
    return RouteControl(*this, kControls, id, code) || TavinPage::OnControlMsg(id, code);
}

void KConnectionLinePage::ShowLine(KConnectionLine* line, int place) {
    box.SetItemDataPtr(box.InsertString(place, line->GetDisplayName()), line);
}

KConnectionLine* KConnectionLinePage::LineAt(int place) const {
    return static_cast<KConnectionLine*>(box.GetItemDataPtr(place));
}

std::vector<int> KConnectionLinePage::SelectedPlaces() const {
    std::vector<int> places;
    for (int i = 0; i < box.GetCount(); ++i)
        if (box.GetSel(i) > 0) places.push_back(i);
    return places;
}

// A series may have left the view while the dialog was open.
bool KConnectionLinePage::HasSeries(const KConnectionLineDlg& dialog) const {
    return set->Has(dialog.from) && set->Has(dialog.to);
}

void KConnectionLinePage::OnAdd() {
    KConnectionLineDlg dialog(*set, this);
    if (dialog.DoModal() != IDOK || !HasSeries(dialog)) return;
    auto line =
        std::make_unique<KConnectionLine>(dialog.from, dialog.to, dialog.type, dialog.style, dialog.color);
    if (box.FindString(-1, line->GetDisplayName()) != LB_ERR) {
        CString text;
        text.LoadString(kLineExists);
        AfxMessageBox(text, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    ShowLine(line.get());
    added.push_back(std::move(line));
}

void KConnectionLinePage::OnEdit() {
    const std::vector<int> places = SelectedPlaces();
    if (places.empty()) return;
    KConnectionLineDlg dialog(*set, this);
    const KConnectionLine& first = *LineAt(places.front());
    dialog.type = first.type;
    dialog.style = first.style;
    dialog.color = first.color;
    dialog.selectSeries = places.size() == 1;
    if (dialog.selectSeries) {
        dialog.from = first.start;
        dialog.to = first.end;
    }
    if (dialog.DoModal() != IDOK || (dialog.selectSeries && !HasSeries(dialog))) return;
    // Those that are selected now: the line of a series that left is not among them.
    for (const int place : SelectedPlaces()) {
        KConnectionLine& line = *LineAt(place);
        line.SetColor(dialog.color);
        line.SetStyle(dialog.style);
        line.type = dialog.type;
        if (dialog.selectSeries) {
            line.start = dialog.from;
            line.end = dialog.to;
        }
        // By its new name.
        box.DeleteString(place);
        ShowLine(&line, place);
        box.SetSel(place);
    }
}

void KConnectionLinePage::OnRemove() {
    const std::vector<int> places = SelectedPlaces();
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        removed.push_back(LineAt(*place));
        box.DeleteString(*place);
    }
}

void KConnectionLinePage::RemoveSource(const IPointSource* source) {
    for (int i = box.GetCount(); i-- > 0;)
        if (LineAt(i)->Joins(source)) box.DeleteString(i);
    removed.remove_if([source](const KConnectionLine* line) { return line->Joins(source); });
    added.remove_if([source](const auto& line) { return line->Joins(source); });
}
