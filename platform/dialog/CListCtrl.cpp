#include "platform/dialog/CListCtrl.h"

#include <QTreeWidget>

namespace {

QTreeWidget* ListOf(const CWnd& control) { return qobject_cast<QTreeWidget*>(control.GetSafeHwnd()); }

QTreeWidgetItem* RowOf(const CWnd& control, int row) {
    const QTreeWidget* const list = ListOf(control);
    return list ? list->topLevelItem(row) : nullptr;
}

}  // namespace

int CListCtrl::InsertColumn(int, LPCSTR heading) {
    QTreeWidget* const list = ListOf(*this);
    if (!list) return -1;
    // The toolkit begins with one column that has no name.
    QStringList headings;
    const bool isFirst = list->property("columnsInserted").toInt() == 0;
    for (int i = 0; !isFirst && i < list->columnCount(); ++i) headings << list->headerItem()->text(i);
    headings << QString::fromUtf8(heading);
    list->setColumnCount(static_cast<int>(headings.size()));
    list->setHeaderLabels(headings);
    list->setProperty("columnsInserted", headings.size());
    return static_cast<int>(headings.size()) - 1;
}

int CListCtrl::InsertItem(int, LPCSTR text) {
    QTreeWidget* const list = ListOf(*this);
    if (!list) return -1;
    list->addTopLevelItem(new QTreeWidgetItem({QString::fromUtf8(text)}));
    return list->topLevelItemCount() - 1;
}

BOOL CListCtrl::SetItemText(int row, int column, LPCSTR text) {
    QTreeWidgetItem* const item = RowOf(*this, row);
    if (!item) return FALSE;
    item->setText(column, QString::fromUtf8(text));
    return TRUE;
}

CString CListCtrl::GetItemText(int row, int column) const {
    const QTreeWidgetItem* const item = RowOf(*this, row);
    return item ? CString(item->text(column).toStdString()) : CString();
}

int CListCtrl::GetItemCount() const {
    const QTreeWidget* const list = ListOf(*this);
    return list ? list->topLevelItemCount() : 0;
}

void CListCtrl::FitColumns() {
    QTreeWidget* const list = ListOf(*this);
    for (int i = 0; list && i < list->columnCount(); ++i) list->resizeColumnToContents(i);
}
