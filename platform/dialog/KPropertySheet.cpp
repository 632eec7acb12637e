#include "platform/dialog/KPropertySheet.h"

#include "platform/dialog/KPropertyPage.h"

IMPLEMENT_DYNAMIC(KFPropertySheetEx, CPropertySheet)
IMPLEMENT_DYNAMIC(KPropertySheet, KFPropertySheetEx)
IMPLEMENT_DYNAMIC(KPropertyPage, CPropertyPage)

void KPropertySheet::ChangedPage(CPropertyPage* page) {
    if (page) page->SetModified();
}

bool KPropertyPage::OnCmdMsg(UINT id, CCmdUI* update) {
    return CPropertyPage::OnCmdMsg(id, update) || (Sheet() && Sheet()->OnCmdMsg(id, update));
}

void KPropertyPage::ControlChanged() {
    SetPageTouched(true);
    if (auto* const sheet = dynamic_cast<KPropertySheet*>(Sheet())) sheet->ChangedPage(this);
}
