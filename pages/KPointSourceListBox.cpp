#include "pages/KPointSourceListBox.h"

#include <algorithm>

#include "platform/gdi/Selected.h"
#include "platform/window/SystemColors.h"
#include "settings/KDrawPropertyManager.h"
#include "sources/IPointSource.h"

namespace {

// Between the text and the left edge, in pixels of a screen of 96 dots per inch.
constexpr int kIndent = 4;

}  // namespace

void KPointSourceListBox::Fill(const std::list<IPointSource*>& series) {
    Clear();
    for (IPointSource* const one : series) {
        records.push_back({one, one->GetKey()});
        Insert(-1, one->GetName(), &records.back());
    }
}

void KPointSourceListBox::Clear() {
    ResetContent();
    records.clear();
}

void KPointSourceListBox::Insert(int place, const CString& text, const Record* record) {
    SetItemDataPtr(InsertString(place, text), const_cast<Record*>(record));
}

const KPointSourceListBox::Record* KPointSourceListBox::RecordAt(int place) const {
    return static_cast<const Record*>(GetItemDataPtr(place));
}

std::vector<IPointSource*> KPointSourceListBox::Series() const {
    std::vector<IPointSource*> series;
    for (int i = 0; i < GetCount(); ++i)
        if (const Record* const record = RecordAt(i)) series.push_back(record->series);
    return series;
}

std::vector<IPointSource*> KPointSourceListBox::SelectedSeries() const {
    std::vector<IPointSource*> series;
    for (const int place : SelectedPlaces())
        if (const Record* const record = RecordAt(place)) series.push_back(record->series);
    return series;
}

std::vector<int> KPointSourceListBox::SelectedPlaces() const {
    std::vector<int> places(static_cast<std::size_t>(GetSelCount()));
    const int found = places.empty() ? 0 : GetSelItems(static_cast<int>(places.size()), places.data());
    places.resize(static_cast<std::size_t>(std::max(found, 0)));
    return places;
}

void KPointSourceListBox::MoveSelected(KPointSourceListBox& to) {
    const std::vector<int> places = SelectedPlaces();
    if (places.empty()) return;
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        const Record* const record = RecordAt(*place);
        CString text;
        GetText(*place, text);
        const auto node = std::find_if(records.begin(), records.end(),
                                       [record](const Record& one) { return &one == record; });
        if (node != records.end()) to.records.splice(to.records.end(), records, node);
        to.Insert(-1, text, record);
        DeleteString(*place);
    }
    if (GetCount() > 0) SetSel(std::min(places.front(), GetCount() - 1));
}

void KPointSourceListBox::Shift(int place, int by) {
    const Record* const record = RecordAt(place);
    CString text;
    GetText(place, text);
    DeleteString(place);
    Insert(place + by, text, record);
    SetSel(place + by);
}

void KPointSourceListBox::MoveSelectedUp() {
    const std::vector<int> places = SelectedPlaces();
    if (places.empty() || places.front() == 0) return;
    for (const int place : places) Shift(place, -1);
}

void KPointSourceListBox::MoveSelectedDown() {
    const std::vector<int> places = SelectedPlaces();
    if (places.empty() || places.back() + 1 == GetCount()) return;
    for (auto place = places.rbegin(); place != places.rend(); ++place) Shift(*place, 1);
}

void KPointSourceListBox::DrawItem(DRAWITEMSTRUCT* item) {
    const CRect place = item->rcItem;
    CDC& dc = *item->hDC;
    if (item->itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) {
        const auto* const record = reinterpret_cast<const Record*>(item->itemData);
        const bool selected = (item->itemState & ODS_SELECTED) != 0;
        const COLORREF background = selected ? GetSysColor(COLOR_HIGHLIGHT) : dc.GetBkColor();
        COLORREF color = selected ? GetSysColor(COLOR_HIGHLIGHTTEXT) : dc.GetTextColor();
        if (!selected && record && manager) color = manager->GetProperty(record->key).getColor();
        CString text;
        GetText(static_cast<int>(item->itemID), text);
        const COLORREF colorBefore = dc.SetTextColor(color);
        const int modeBefore = dc.SetBkMode(TRANSPARENT);
        dc.FillSolidRect(place, background);
        const int height = dc.GetTextExtent(text).cy;
        const int indent = kIndent * dc.GetDeviceCaps(LOGPIXELSX) / 96;
        dc.TextOut(place.left + indent, place.top + (place.Height() - height) / 2, text);
        dc.SetBkMode(modeBefore);
        dc.SetTextColor(colorBefore);
    }
    if (item->itemAction & ODA_FOCUS) {
        CPen dotted(PS_DOT, 0, GetSysColor(COLOR_WINDOWTEXT));
        const Selected usePen(dc, dotted);
        const SelectedStock hollow(dc, NULL_BRUSH);
        const int modeBefore = dc.SetBkMode(TRANSPARENT);
        dc.Rectangle(place);
        dc.SetBkMode(modeBefore);
    }
}
