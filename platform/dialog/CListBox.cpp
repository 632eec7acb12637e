#include "platform/dialog/CListBox.h"

#include <QListWidget>
#include <QSignalBlocker>

namespace {

QListWidget* ListOf(const CWnd& control) { return qobject_cast<QListWidget*>(control.GetSafeHwnd()); }

QListWidgetItem* ItemOf(const CWnd& control, int place) {
    const QListWidget* const list = ListOf(control);
    return list ? list->item(place) : nullptr;
}

}  // namespace

int CListBox::GetCount() const {
    const QListWidget* const list = ListOf(*this);
    return list ? list->count() : 0;
}

int CListBox::AddString(LPCSTR text) { return InsertString(-1, text); }

int CListBox::InsertString(int place, LPCSTR text) {
    QListWidget* const list = ListOf(*this);
    if (!list || place < -1 || place > list->count()) return LB_ERR;
    const QSignalBlocker quiet(list);
    auto* const item = new QListWidgetItem(QString::fromUtf8(text));
    list->insertItem(place < 0 ? list->count() : place, item);
    return list->row(item);
}

int CListBox::DeleteString(int place) {
    QListWidgetItem* const item = ItemOf(*this, place);
    if (!item) return LB_ERR;
    const QSignalBlocker quiet(item->listWidget());
    delete item;
    return GetCount();
}

void CListBox::ResetContent() {
    QListWidget* const list = ListOf(*this);
    if (!list) return;
    const QSignalBlocker quiet(list);
    list->clear();
}

void CListBox::GetText(int place, CString& text) const {
    if (const QListWidgetItem* const item = ItemOf(*this, place)) text = CString(item->text().toStdString());
}

int CListBox::FindString(int after, LPCSTR text) const {
    const int count = GetCount();
    const QString wanted = QString::fromUtf8(text);
    for (int i = 1; i <= count; ++i) {
        const int place = (std::max(after, -1) + i) % count;
        if (ItemOf(*this, place)->text().startsWith(wanted, Qt::CaseInsensitive)) return place;
    }
    return LB_ERR;
}

DWORD_PTR CListBox::GetItemData(int place) const {
    const QListWidgetItem* const item = ItemOf(*this, place);
    return item ? static_cast<DWORD_PTR>(item->data(Qt::UserRole).toULongLong()) : 0;
}

int CListBox::SetItemData(int place, DWORD_PTR data) {
    QListWidgetItem* const item = ItemOf(*this, place);
    if (!item) return LB_ERR;
    const QSignalBlocker quiet(item->listWidget());
    item->setData(Qt::UserRole, static_cast<qulonglong>(data));
    return 0;
}

int CListBox::GetCurSel() const {
    const QListWidget* const list = ListOf(*this);
    const auto selected = list ? list->selectedItems() : QList<QListWidgetItem*>();
    return selected.isEmpty() ? LB_ERR : list->row(selected.front());
}

int CListBox::SetCurSel(int place) {
    QListWidget* const list = ListOf(*this);
    if (!list || place >= list->count()) return LB_ERR;
    const QSignalBlocker quiet(list);
    list->clearSelection();
    list->setCurrentRow(place < 0 ? -1 : place);
    return place < 0 ? LB_ERR : place;
}

int CListBox::GetSelCount() const {
    const QListWidget* const list = ListOf(*this);
    return list ? static_cast<int>(list->selectedItems().size()) : 0;
}

int CListBox::GetSelItems(int most, int* places) const {
    int found = 0;
    for (int i = 0; i < GetCount() && found < most; ++i)
        if (ItemOf(*this, i)->isSelected()) places[found++] = i;
    return found;
}

int CListBox::GetSel(int place) const {
    const QListWidgetItem* const item = ItemOf(*this, place);
    return item ? item->isSelected() : LB_ERR;
}

int CListBox::SetSel(int place, BOOL select) {
    QListWidgetItem* const item = ItemOf(*this, place);
    if (!item) return LB_ERR;
    const QSignalBlocker quiet(item->listWidget());
    item->setSelected(select != FALSE);
    return 0;
}

void CListBox::DrawItem(DRAWITEMSTRUCT*) {}
