#include "pages/TavinPage.h"

#include <utility>

#include "pages/PageResources.h"
#include "platform/dialog/CPropertySheet.h"
#include "platform/dialog/DialogResources.h"

namespace {

// This library's resources are the current ones while it lives.
class OwnResources {
  public:
    OwnResources() : m_before(AfxGetResourceHandle()) { AfxSetResourceHandle(TavinModule()); }
    ~OwnResources() { AfxSetResourceHandle(m_before); }
    OwnResources(const OwnResources&) = delete;
    OwnResources& operator=(const OwnResources&) = delete;

  private:
    const HINSTANCE m_before;
};

}  // namespace

IMPLEMENT_DYNCREATE(TavinPage, KPropertyPage)

TavinPage::TavinPage(CString key, TavinProp* set, bool own, unsigned int templateId, unsigned int captionId)
    : KPropertyPage(templateId, captionId), useOwnResources(own), regKey(std::move(key)), properties(set) {}

TavinPage::TavinPage(CString key, TavinProp* set, bool own, const char* templateName, unsigned int captionId)
    : KPropertyPage(templateName, captionId), useOwnResources(own), regKey(std::move(key)), properties(set) {}

BOOL TavinPage::Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                       UINT id, CCreateContext* context) {
    if (!useOwnResources) return CWnd::Create(className, windowName, style, rect, parent, id, context);
    const OwnResources current;
    return CWnd::Create(className, windowName, style, rect, parent, id, context);
}

void TavinPage::DoDataExchange(CDataExchange*) {}

BOOL TavinPage::OnSetActive() {
    if (auto* const sheet = dynamic_cast<CPropertySheet*>(GetParent()); sheet && sheet->IsWizard()) {
        sheet->SetWizardButtons(PSWIZB_FINISH);
        sheet->SetFinishText("Ok");
    }
    return KPropertyPage::OnSetActive();
}

BOOL TavinPage::OnWizardFinish() { return OnKillActive() && KPropertyPage::OnWizardFinish(); }

int TavinPage::OnLoadDefault() {
    if (!properties) return 0;
    properties->LoadFromRegistry(regKey);
    return 1;
}

int TavinPage::OnSaveDefault() {
    if (!properties) return 0;
    properties->SaveToRegistry(regKey);
    return 1;
}
