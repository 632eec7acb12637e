#include "platform/window/CommandActions.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QStatusBar>
#include <QToolBar>

#include "platform/window/CMDIChildWnd.h"
#include "platform/window/CMDIFrameWnd.h"
#include "platform/window/CommandIds.h"
#include "platform/window/Icons.h"
#include "platform/window/NativeWindow.h"

namespace {

UINT CommandOf(const QAction& action) { return action.data().toUInt(); }

QString TextPart(const CommandResource& command, int part) {
    return QString::fromUtf8(command.text).section(QLatin1Char('\t'), part, part);
}

// Separators that would lead, trail or follow another are hidden by the toolkit; entries without a text by
// RefreshAction.
void OpenMenu(QMenu& menu, CWnd& target) {
    for (QAction* action : menu.actions())
        if (CommandOf(*action) != 0 && target.GetSafeHwnd()) RefreshAction(*action, target);
}

// Puts the child frames of `frame` in the place before `mark`.
void ListWindows(QMenu& menu, QAction* mark, NativeWindow& frame) {
    for (QAction* listed : mark->findChildren<QAction*>()) delete listed;
    auto* owner = dynamic_cast<CMDIFrameWnd*>(frame.Owner());
    if (!owner) return;
    int number = 0;
    for (CMDIChildWnd* child : owner->GetChildren()) {
        QString title = child->GetSafeHwnd()->windowTitle().replace('&', QLatin1String("&&"));
        title.prepend(++number < 10 ? QStringLiteral("&%1 ").arg(number) : QStringLiteral("%1 ").arg(number));
        auto* action = new QAction(title, mark);
        action->setCheckable(true);
        action->setChecked(child == owner->MDIGetActive());
        const QPointer<QWidget> window = child->GetSafeHwnd();
        QObject::connect(action, &QAction::triggered, &menu, [window] {
            if (NativeWindow* native = NativeWindow::Of(window))
                native->Tell([](CWnd* w) { static_cast<CMDIChildWnd*>(w)->MDIActivate(); });
        });
        menu.insertAction(mark, action);
    }
}

class MenuBuilder {
  public:
    MenuBuilder(NativeWindow& frame, std::span<const MenuResource> rows) : frame_(frame), rows_(rows) {}

    void FillBar(QMenuBar& bar) {
        for (; next_ < rows_.size(); ++next_)
            if (rows_[next_].kind == MenuResource::Kind::Popup) FillPopup(*bar.addMenu(Text()));
    }

  private:
    QString Text() const { return QString::fromUtf8(rows_[next_].text); }

    // From the row of the popup to the row that ends it.
    void FillPopup(QMenu& menu) {
        NativeWindow& frame = frame_;
        QObject::connect(&menu, &QMenu::aboutToShow, frame.Widget(),
                         [&menu, &frame] { frame.Tell([&menu](CWnd* w) { OpenMenu(menu, *w); }); });
        for (++next_; next_ < rows_.size(); ++next_) {
            const MenuResource& row = rows_[next_];
            if (row.kind == MenuResource::Kind::End) return;
            if (row.kind == MenuResource::Kind::Popup) FillPopup(*menu.addMenu(Text()));
            if (row.kind == MenuResource::Kind::Item) menu.addAction(SharedAction(frame, row.id));
            if (row.kind == MenuResource::Kind::Separator) menu.addSeparator();
            if (row.kind == MenuResource::Kind::WindowList) AddWindowList(menu);
        }
    }

    void AddWindowList(QMenu& menu) {
        NativeWindow& frame = frame_;
        QAction* mark = menu.addSeparator();
        QObject::connect(&menu, &QMenu::aboutToShow, frame.Widget(),
                         [&menu, mark, &frame] { ListWindows(menu, mark, frame); });
    }

    NativeWindow& frame_;
    std::span<const MenuResource> rows_;
    std::size_t next_ = 0;
};

template <class Action>
void ForEachBar(NativeWindow& frame, UINT id, Action action) {
    if (id == ID_VIEW_TOOLBAR)
        for (QToolBar* bar : frame.Body()->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
            action(*bar);
    if (id == ID_VIEW_STATUS_BAR)
        for (QStatusBar* bar : frame.Body()->findChildren<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly))
            action(*bar);
}

}  // namespace

void DescribeAction(QAction& action, UINT id) {
    action.setData(id);
    const CommandResource* command = FindCommandResource(id);
    if (!command) return;
    action.setText(TextPart(*command, 0));
    action.setShortcut(QKeySequence::fromString(TextPart(*command, 1), QKeySequence::PortableText));
    const QString hint =
        command->hint ? QString::fromUtf8(command->hint) : TextPart(*command, 0).remove(QLatin1Char('&'));
    action.setStatusTip(hint);
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    action.setToolTip(keys.isEmpty() ? hint : hint + QStringLiteral(" (%1)").arg(keys));
    if (command->icon) action.setIcon(IconOf(command->icon));
}

void RefreshAction(QAction& action, CCmdTarget& target) {
    const CCmdUI state = QueryCommand(target, CommandOf(action));
    action.setEnabled(state.IsEnabled());
    action.setCheckable(state.IsCheckable());
    action.setChecked(state.IsChecked());
    if (!state.HasText()) return;
    action.setText(QString::fromUtf8(state.GetText().GetString()));
    action.setVisible(!state.GetText().IsEmpty());
}

QAction* SharedAction(NativeWindow& window, UINT id) {
    QWidget* top = window.Widget()->window();
    NativeWindow* frame = NativeWindow::Of(top);
    for (QAction* known : top->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        if (CommandOf(*known) == id) return known;
    auto* action = new QAction(top);
    DescribeAction(*action, id);
    QObject::connect(action, &QAction::triggered, top, [frame, id] {
        if (!frame) return;
        frame->Tell([id](CWnd* w) { RunCommand(*w, id); });
        if (frame->Owner()) RefreshCommands(*frame);
    });
    // A command that has only a toolbar button keeps its shortcut.
    top->addAction(action);
    return action;
}

void BuildMenuBar(NativeWindow& frame, std::span<const MenuResource> rows) {
    if (rows.empty()) return;
    QMenuBar& bar = *frame.Body()->menuBar();
    bar.setNativeMenuBar(false);
    MenuBuilder(frame, rows).FillBar(bar);
    RefreshCommands(frame);
}

void RefreshCommands(NativeWindow& frame) {
    const QPointer<QWidget> widget = frame.Widget();
    for (QAction* action : widget->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        if (CommandOf(*action) != 0) frame.Tell([action](CWnd* w) { RefreshAction(*action, *w); });
}

bool HasBars(NativeWindow& frame, UINT id) {
    bool any = false;
    ForEachBar(frame, id, [&any](QWidget&) { any = true; });
    return any;
}

bool AreBarsShown(NativeWindow& frame, UINT id) {
    bool shown = false;
    ForEachBar(frame, id, [&shown](const QWidget& bar) { shown |= !bar.isHidden(); });
    return shown;
}

void ShowBars(NativeWindow& frame, UINT id, bool show) {
    ForEachBar(frame, id, [show](QWidget& bar) { bar.setVisible(show); });
}
