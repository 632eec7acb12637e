// The toolbar and the status bar, and the widgets behind them.
#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolBar>

#include "platform/window/CFrameWnd.h"
#include "platform/window/CStatusBar.h"
#include "platform/window/CToolBar.h"
#include "platform/window/CommandActions.h"
#include "platform/window/NativeWindow.h"

namespace {

template <class Base>
class BarWidget : public Base, public NativeWindow {
  public:
    explicit BarWidget(CWnd* owner) : NativeWindow(owner) {}
    ~BarWidget() override { Sever(); }
    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD) override {}
};

void AddPane(QStatusBar& bar, const QString& name, int stretch) {
    auto* label = new QLabel(&bar);
    label->setAccessibleName(name);
    label->setTextFormat(Qt::PlainText);
    // A long text must not widen the window.
    label->setSizePolicy(stretch ? QSizePolicy::Ignored : QSizePolicy::Fixed, QSizePolicy::Preferred);
    label->setMinimumWidth(stretch ? 0 : label->fontMetrics().horizontalAdvance(name) + 12);
    label->setObjectName(QStringLiteral("pane%1").arg(bar.findChildren<QLabel*>().size() - 1));
    stretch ? bar.addWidget(label, stretch) : bar.addPermanentWidget(label);
}

}  // namespace

IMPLEMENT_DYNAMIC(CToolBar, CWnd)
IMPLEMENT_DYNAMIC(CStatusBar, CWnd)

NativeWindow* CToolBar::NewNative() { return new BarWidget<QToolBar>(this); }
NativeWindow* CStatusBar::NewNative() { return new BarWidget<QStatusBar>(this); }

BOOL CToolBar::Create(CFrameWnd* frame, LPCSTR name) {
    if (!frame || !frame->GetSafeHwnd() || !Create(nullptr, name, WS_CHILD | WS_VISIBLE, CRect(), frame, 0))
        return FALSE;
    GetSafeHwnd()->setObjectName(QString::fromUtf8(name));
    return TRUE;
}

BOOL CToolBar::LoadToolBar(UINT resourceId) {
    const std::span<const UINT> commands = FindToolBarResource(resourceId);
    auto* bar = qobject_cast<QToolBar*>(GetSafeHwnd());
    if (!bar || commands.empty()) return FALSE;
    for (const UINT id : commands)
        id == 0 ? (void)bar->addSeparator() : bar->addAction(SharedAction(*GetNative(), id));
    return TRUE;
}

CStatusBar::~CStatusBar() { LeaveFrame(); }

BOOL CStatusBar::Create(CFrameWnd* frame) {
    if (!frame || !frame->GetSafeHwnd()) return FALSE;
    if (!Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), frame, 0)) return FALSE;
    AddPane(*qobject_cast<QStatusBar*>(GetSafeHwnd()), QStringLiteral("Message"), 1);
    m_frame = frame;
    frame->m_statusBar = this;
    return TRUE;
}

void CStatusBar::SetIndicators(std::span<const char* const> names) {
    auto* bar = qobject_cast<QStatusBar*>(GetSafeHwnd());
    if (!bar) return;
    for (const char* name : names) AddPane(*bar, QString::fromUtf8(name), 0);
}

QLabel* CStatusBar::Pane(int pane) const {
    return GetSafeHwnd() ? GetSafeHwnd()->findChild<QLabel*>(QStringLiteral("pane%1").arg(pane)) : nullptr;
}

BOOL CStatusBar::SetPaneText(int pane, LPCSTR text) {
    QLabel* label = Pane(pane);
    if (!label) return FALSE;
    label->setText(QString::fromUtf8(text));
    return TRUE;
}

CString CStatusBar::GetPaneText(int pane) const {
    const QLabel* label = Pane(pane);
    return label ? CString(label->text().toStdString()) : CString();
}

void CStatusBar::LeaveFrame() {
    if (m_frame && m_frame->m_statusBar == this) m_frame->m_statusBar = nullptr;
    m_frame = nullptr;
}

void CStatusBar::OnDestroy() {
    LeaveFrame();
    CWnd::OnDestroy();
}
