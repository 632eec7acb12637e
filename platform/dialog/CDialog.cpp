#include "platform/dialog/CDialog.h"

#include <QApplication>
#include <QDialog>

#include "platform/dialog/CDataExchange.h"
#include "platform/dialog/DialogResources.h"
#include "platform/dialog/DialogWidget.h"
#include "platform/window/NativeWindow.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

CDialog::CDialog(UINT templateId, CWnd* parent) : m_template(templateId), m_parent(parent) {}

NativeWindow* CDialog::NewNative() {
    QWidget* const over = m_parent && m_parent->GetSafeHwnd() ? m_parent->GetSafeHwnd()->window()
                                                              : QApplication::activeWindow();
    return NewDialogWidget(this, over);
}

int CDialog::DoModal() {
    if (const std::optional<int> answer = AnswerInsteadOfUser(*this)) return *answer;
    const DialogResource* const resource = FindDialogResource(m_template);
    if (!resource || GetSafeHwnd() || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return IDCANCEL;
    const HandlingScope scope;
    m_result = IDCANCEL;
    if (!Create(nullptr, resource->caption, WS_CAPTION | WS_SYSMENU, CRect(), nullptr, 0)) return IDCANCEL;
    BuildControls(*GetSafeHwnd(), *resource);
    const BOOL firstControl = OnInitDialog();
    if (auto* const window = qobject_cast<QDialog*>(GetSafeHwnd())) {
        // What OnInitDialog filled in counts for the size.
        FitControls(*window, *resource);
        if (firstControl) FocusFirst(*window, *resource);
        window->exec();
    }
    DestroyWindow();
    return m_result;
}

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return !exchange.HasFailed();
}

void CDialog::EndDialog(int result) {
    m_result = result;
    if (auto* const window = qobject_cast<QDialog*>(GetSafeHwnd())) window->done(QDialog::Accepted);
}

bool CDialog::OnControlMsg(UINT id, UINT code) {
    if (code != BN_CLICKED || (id != IDOK && id != IDCANCEL)) return false;
    id == IDOK ? OnOK() : OnCancel();
    return true;
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

void CDialog::OnDestroy() {
    // The window around it has ended: nobody waits for the answer.
    if (GetSafeHwnd()->isVisible()) EndDialog(IDCANCEL);
    CWnd::OnDestroy();
}
