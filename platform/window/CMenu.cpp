#include "platform/window/CMenu.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

#include "platform/window/CommandActions.h"
#include "platform/window/NativeWindow.h"

namespace {

using Kind = MenuResource::Kind;

// How many rows the entry at the front takes: a popup reaches to its end.
std::size_t RowsOfFirst(std::span<const MenuResource> rows) {
    std::size_t open = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].kind == Kind::Popup) ++open;
        if (rows[i].kind == Kind::End && open > 0) --open;
        if (open == 0) return i + 1;
    }
    return rows.size();
}

void FillMenu(QMenu& menu, std::span<const MenuResource> rows, CCmdTarget& target) {
    while (!rows.empty()) {
        const MenuResource& row = rows.front();
        const std::size_t count = RowsOfFirst(rows);
        if (row.kind == Kind::Popup)
            FillMenu(*menu.addMenu(QString::fromUtf8(row.text)), rows.subspan(1, count - 1), target);
        if (row.kind == Kind::Separator) menu.addSeparator();
        if (row.kind == Kind::Item) {
            QAction* action = menu.addAction(QString());
            DescribeAction(*action, row.id);
            // The frame's own action has the shortcut; this one only shows it.
            action->setShortcutContext(Qt::WidgetShortcut);
            RefreshAction(*action, target);
        }
        rows = rows.subspan(count);
    }
}

}  // namespace

BOOL CMenu::LoadMenu(UINT resourceId) {
    rows_ = FindMenuResource(resourceId);
    popups_.clear();
    return !rows_.empty();
}

CMenu* CMenu::GetSubMenu(int position) {
    std::span<const MenuResource> rows = rows_;
    for (; position > 0 && !rows.empty(); --position) rows = rows.subspan(RowsOfFirst(rows));
    if (position < 0 || rows.empty() || rows.front().kind != Kind::Popup) return nullptr;
    auto popup = std::make_unique<CMenu>();
    popup->rows_ = rows.subspan(1, RowsOfFirst(rows) - 1);
    popups_.push_back(std::move(popup));
    return popups_.back().get();
}

BOOL CMenu::TrackPopupMenu(UINT, int x, int y, CWnd* target) {
    if (rows_.empty() || !target || !target->GetSafeHwnd()) return FALSE;
    const QPointer<QWidget> widget = target->GetSafeHwnd();
    NativeWindow* native = NativeWindow::Of(widget);
    QMenu menu;
    FillMenu(menu, rows_, *target);
    const double scale = native->Scale();
    const QAction* chosen = menu.exec(QPoint(RoundHalfAway(x / scale), RoundHalfAway(y / scale)));
    if (!chosen || !widget) return TRUE;
    native->Tell([id = chosen->data().toUInt()](CWnd* w) { RunCommand(*w, id); });
    return TRUE;
}
