// A page that edits a property set kept in a section of the settings: the sheet's buttons Load and Save read
// and write the set there.
#pragma once

#include "platform/core/CString.h"
#include "platform/dialog/KPropertyPage.h"
#include "settings/TavinProp.h"

class TavinPage : public KPropertyPage {
    DECLARE_DYNCREATE(TavinPage)

  public:
    // The set is the caller's, may be null, and must outlive the page. `useOwnResources`: the page's template
    // is looked up among this library's first.
    TavinPage(CString regKey, TavinProp* properties, bool useOwnResources, unsigned int templateId,
              unsigned int captionId);
    TavinPage(CString regKey, TavinProp* properties, bool useOwnResources, const char* templateName,
              unsigned int captionId);

    const char* GetRegKey() const { return regKey; }
    void SetRegKey(const char* key) { regKey = key; }

    BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                CCreateContext* context = nullptr) override;
    // In a wizard the page's one button says Ok.
    BOOL OnSetActive() override;
    BOOL OnWizardFinish() override;

    // 0 without a set.
    virtual int OnLoadDefault();
    virtual int OnSaveDefault();

  protected:
    TavinPage() = default;

    // A derived page exchanges its own controls.
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    bool useOwnResources = true;
    CString regKey;
    TavinProp* properties = nullptr;
};
