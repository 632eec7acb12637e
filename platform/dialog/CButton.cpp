#include "platform/dialog/CButton.h"

#include <QIcon>
#include <QPushButton>

#include "platform/dialog/DialogControls.h"
#include "platform/window/Controls.h"
#include "platform/window/Icons.h"
#include "platform/window/NativeWindow.h"

namespace {

QAbstractButton* ButtonOf(const CWnd& control) {
    return qobject_cast<QAbstractButton*>(control.GetSafeHwnd());
}

}  // namespace

BOOL CButton::Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    NativeWindow* const around = parent ? NativeWindow::Of(parent->GetSafeHwnd()) : nullptr;
    if (!around || GetSafeHwnd()) return FALSE;
    auto* const button = new QPushButton(QString::fromUtf8(caption), around->Client());
    MakeControl(*button, id);
    Attach(button);
    MoveWindow(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    if (style & WS_VISIBLE) button->show();
    return TRUE;
}

int CButton::GetCheck() const {
    const QAbstractButton* const button = ButtonOf(*this);
    return button && button->isChecked();
}

void CButton::SetCheck(int check) {
    if (QAbstractButton* const button = ButtonOf(*this)) button->setChecked(check != 0);
}

BOOL CButton::SetIcon(LPCSTR name, LPCSTR hint) {
    QAbstractButton* const button = ButtonOf(*this);
    const QIcon icon = IconOf(name);
    if (!button || icon.isNull()) return FALSE;
    const QKeySequence key = button->shortcut();
    button->setIcon(icon);
    button->setText(QString());
    button->setShortcut(key);
    button->setToolTip(QString::fromUtf8(hint));
    button->setAccessibleName(QString::fromUtf8(hint));
    return TRUE;
}

void CStatic::SetBitmap(UINT id) {
    if (GetSafeHwnd()) ShowPicture(*GetSafeHwnd(), id);
}
