#include "platform/dialog/CComboBox.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace {

QComboBox* ComboOf(const CWnd& control) { return qobject_cast<QComboBox*>(control.GetSafeHwnd()); }

bool Has(const CComboBox& combo, int place) { return place >= 0 && place < combo.GetCount(); }

// Where a text belongs among sorted ones.
int PlaceOf(const QComboBox& combo, const QString& text) {
    int place = 0;
    while (place < combo.count() && combo.itemText(place).localeAwareCompare(text) <= 0) ++place;
    return place;
}

}  // namespace

int CComboBox::GetCount() const {
    const QComboBox* const combo = ComboOf(*this);
    return combo ? combo->count() : 0;
}

int CComboBox::AddString(LPCSTR text) {
    const QComboBox* const combo = ComboOf(*this);
    const bool isSorted = combo && combo->insertPolicy() == QComboBox::InsertAlphabetically;
    return InsertString(isSorted ? PlaceOf(*combo, QString::fromUtf8(text)) : -1, text);
}

int CComboBox::InsertString(int place, LPCSTR text) {
    QComboBox* const combo = ComboOf(*this);
    if (!combo || place < -1 || place > combo->count()) return CB_ERR;
    const QSignalBlocker quiet(combo);
    // The toolkit selects the first entry of its own accord.
    const int selected = combo->currentIndex();
    const int added = place < 0 ? combo->count() : place;
    combo->insertItem(added, QString::fromUtf8(text));
    if (selected < 0) combo->setCurrentIndex(-1);
    return added;
}

void CComboBox::ResetContent() {
    QComboBox* const combo = ComboOf(*this);
    if (!combo) return;
    const QSignalBlocker quiet(combo);
    combo->clear();
}

void CComboBox::GetLBText(int place, CString& text) const {
    if (Has(*this, place)) text = CString(ComboOf(*this)->itemText(place).toStdString());
}

int CComboBox::FindStringExact(LPCSTR text) const {
    const QComboBox* const combo = ComboOf(*this);
    return combo ? combo->findText(QString::fromUtf8(text), Qt::MatchFixedString) : CB_ERR;
}

DWORD_PTR CComboBox::GetItemData(int place) const {
    return Has(*this, place) ? static_cast<DWORD_PTR>(ComboOf(*this)->itemData(place).toULongLong()) : 0;
}

int CComboBox::SetItemData(int place, DWORD_PTR data) {
    if (!Has(*this, place)) return CB_ERR;
    ComboOf(*this)->setItemData(place, static_cast<qulonglong>(data));
    return 0;
}

int CComboBox::GetCurSel() const {
    const QComboBox* const combo = ComboOf(*this);
    return combo ? combo->currentIndex() : CB_ERR;
}

int CComboBox::SetCurSel(int place) {
    QComboBox* const combo = ComboOf(*this);
    if (!combo || place >= combo->count()) return CB_ERR;
    const QSignalBlocker quiet(combo);
    combo->setCurrentIndex(place < 0 ? -1 : place);
    // Without its signals the control does not paint itself.
    combo->update();
    return place < 0 ? CB_ERR : place;
}
