#include "platform/dialog/CDialog.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>

#include "platform/dialog/CDataExchange.h"
#include "platform/dialog/DialogResources.h"
#include "platform/dialog/DialogWidget.h"
#include "platform/window/NativeWindow.h"

namespace {

// Ends a dialog when the window that asked is gone, though the frame around both stays.
class ParentWatch : public QObject {
  public:
    ParentWatch(const CWnd* parent, CDialog& dialog) : m_parent(parent), m_dialog(dialog) {
        if (parent && parent->GetSafeHwnd()) parent->GetSafeHwnd()->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        // A window that ends is hidden until nobody needs it.
        if (event->type() == QEvent::Hide && !m_parent->GetSafeHwnd()) m_dialog.EndDialog(IDCANCEL);
        return false;
    }

  private:
    const CWnd* const m_parent;
    CDialog& m_dialog;
};

}  // namespace

IMPLEMENT_DYNAMIC(CDialog, CWnd)

NativeWindow* CDialog::NewNative() {
    QWidget* const over = m_parent && m_parent->GetSafeHwnd() ? m_parent->GetSafeHwnd()->window()
                                                              : QApplication::activeWindow();
    return NewDialogWidget(this, over);
}

int CDialog::DoModal() {
    if (const std::optional<int> answer = AnswerInsteadOfUser(*this)) return *answer;
    if (GetSafeHwnd() || !qobject_cast<QApplication*>(QCoreApplication::instance())) return IDCANCEL;
    const HandlingScope scope;
    m_result = IDCANCEL;
    m_ended = false;
    if (!Create(nullptr, Caption(), WS_CAPTION | WS_SYSMENU, CRect(), nullptr, 0)) return m_result;
    auto* const window = qobject_cast<QDialog*>(GetSafeHwnd());
    if (m_firstControl) GiveFocus();
    const ParentWatch watch(m_parent, *this);
    if (!m_ended) window->exec();
    DestroyWindow();
    return m_result;
}

const DialogResource* CDialog::Template() const {
    return m_templateName.IsEmpty() ? FindDialogResource(m_template) : FindDialogResource(m_templateName);
}

CString CDialog::Caption() const {
    const DialogResource* const resource = Template();
    return resource ? resource->caption : "";
}

int CDialog::OnCreate(CREATESTRUCT* create) {
    const DialogResource* const resource = Template();
    if (!resource || CWnd::OnCreate(create) == -1) return -1;
    BuildControls(*GetSafeHwnd(), *resource);
    m_firstControl = OnInitDialog();
    // What OnInitDialog filled in counts for the size.
    if (GetSafeHwnd()) FitControls(*GetSafeHwnd(), *resource);
    return 0;
}

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return !exchange.HasFailed();
}

void CDialog::EndDialog(int result) {
    // It has ended with the window around it.
    if (m_ended && !GetSafeHwnd()) return;
    m_result = result;
    m_ended = true;
    if (auto* const window = qobject_cast<QDialog*>(GetSafeHwnd())) window->done(QDialog::Accepted);
}

bool CDialog::OnControlMsg(UINT id, UINT code) {
    if (code != BN_CLICKED || (id != IDOK && id != IDCANCEL)) return false;
    id == IDOK ? OnOK() : OnCancel();
    return true;
}

const CBrush* CDialog::OnCtlColor(CDC*, CWnd*, UINT) { return nullptr; }

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

void CDialog::GiveFocus() { FocusFirst(*GetSafeHwnd()); }

void CDialog::SetTabOrder(const CWnd& before, const CWnd& after) {
    if (before.GetSafeHwnd() && after.GetSafeHwnd())
        QWidget::setTabOrder(before.GetSafeHwnd(), after.GetSafeHwnd());
}

void CDialog::OnDestroy() {
    // The window around it has ended: nobody waits for the answer.
    if (GetSafeHwnd()->isVisible()) EndDialog(IDCANCEL);
    CWnd::OnDestroy();
}
