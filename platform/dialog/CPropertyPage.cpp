#include "platform/dialog/CPropertyPage.h"

#include "platform/core/StringTable.h"
#include "platform/dialog/CPropertySheet.h"
#include "platform/dialog/DialogWidget.h"

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)

CPropertyPage::CPropertyPage() : CDialog(UINT{0}) {}

CPropertyPage::CPropertyPage(UINT templateId, UINT captionId) : CDialog(templateId), m_caption(captionId) {}

CPropertyPage::CPropertyPage(LPCSTR templateName, UINT captionId)
    : CDialog(templateName), m_caption(captionId) {}

CPropertyPage::~CPropertyPage() {
    if (m_sheet) m_sheet->RemovePage(this);
}

NativeWindow* CPropertyPage::NewNative() { return NewPageWidget(this); }

CString CPropertyPage::Caption() const {
    const char* const text = m_caption ? FindStringResource(m_caption) : nullptr;
    return text ? CString(text) : CDialog::Caption();
}

BOOL CPropertyPage::OnSetActive() { return UpdateData(FALSE); }

BOOL CPropertyPage::OnKillActive() { return UpdateData(TRUE); }

BOOL CPropertyPage::OnApply() {
    OnOK();
    return TRUE;
}

BOOL CPropertyPage::OnWizardFinish() { return TRUE; }

void CPropertyPage::OnOK() {}

void CPropertyPage::OnCancel() {}

void CPropertyPage::SetModified(BOOL modified) {
    m_modified = modified != FALSE;
    if (m_sheet) m_sheet->ShowWhetherModified();
}

bool CPropertyPage::OnControlMsg(UINT id, UINT code) {
    // The numbers of OK and Cancel mean the sheet's.
    return m_sheet && (id == IDOK || id == IDCANCEL) && m_sheet->OnControlMsg(id, code);
}
