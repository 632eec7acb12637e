#include "platform/window/CMessageBar.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "platform/window/CFrameWnd.h"
#include "platform/window/CommandActions.h"
#include "platform/window/NativeWindow.h"

IMPLEMENT_DYNAMIC(CMessageBar, CWnd)

namespace {

class MessageBarWidget : public QFrame, public NativeWindow {
  public:
    explicit MessageBarWidget(CWnd* owner)
        : NativeWindow(owner), text_(new QLabel), row_(new QHBoxLayout(this)) {
        setFrameShape(QFrame::StyledPanel);
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::ToolTipBase);
        setForegroundRole(QPalette::ToolTipText);
        text_->setForegroundRole(QPalette::ToolTipText);
        text_->setTextFormat(Qt::PlainText);
        text_->setWordWrap(true);
        row_->setContentsMargins(6, 2, 6, 2);
        row_->addWidget(text_, 1);
    }
    ~MessageBarWidget() override { Sever(); }

    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD) override {}
    QLabel& Text() { return *text_; }
    void AddButton(QAction* action) {
        auto* button = new QToolButton;
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setFocusPolicy(Qt::TabFocus);
        row_->addWidget(button);
    }

  private:
    QLabel* text_;
    QHBoxLayout* row_;
};

MessageBarWidget* BarOf(const CMessageBar& bar) { return dynamic_cast<MessageBarWidget*>(bar.GetSafeHwnd()); }

}  // namespace

NativeWindow* CMessageBar::NewNative() { return new MessageBarWidget(this); }

BOOL CMessageBar::Create(CFrameWnd* frame, std::span<const UINT> commands) {
    if (!frame || !frame->GetSafeHwnd()) return FALSE;
    if (!Create(nullptr, nullptr, WS_CHILD, CRect(), frame, AFX_IDW_MESSAGE_BAR)) return FALSE;
    for (const UINT id : commands) BarOf(*this)->AddButton(SharedAction(*GetNative(), id));
    Hide();
    return TRUE;
}

void CMessageBar::Tell(LPCSTR text) {
    MessageBarWidget* const bar = BarOf(*this);
    if (!bar) return;
    bar->Text().setText(QString::fromUtf8(text));
    bar->setAccessibleName(bar->Text().text());
    bar->show();
}

void CMessageBar::Hide() {
    if (MessageBarWidget* const bar = BarOf(*this)) bar->hide();
}

CString CMessageBar::GetText() const {
    MessageBarWidget* const bar = BarOf(*this);
    return bar && !bar->isHidden() ? CString(bar->Text().text().toStdString()) : CString();
}
