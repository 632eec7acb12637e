// One page of a sheet, made from its template; or a part of a window, made with Create.
//
// The sheet asks the page that is shown before it leaves it (OnKillActive), all of them when the user agrees
// (OnApply) or does not (OnCancel). A page that ends takes itself out of its sheet.
#pragma once

#include "platform/dialog/CDialog.h"

class CPropertySheet;

class CPropertyPage : public CDialog {
    DECLARE_DYNAMIC(CPropertyPage)

  public:
    // The caption is a string resource; 0: the template's.
    explicit CPropertyPage(UINT templateId, UINT captionId = 0);
    explicit CPropertyPage(LPCSTR templateName, UINT captionId = 0);
    ~CPropertyPage() override;

    // What the tab says.
    CString Caption() const override;

    // The page is about to be shown: shows the members. FALSE: it cannot be.
    virtual BOOL OnSetActive();
    // The page is about to be left: takes the members from the controls. FALSE: a value is refused.
    virtual BOOL OnKillActive();
    // The user agreed: OnOK. FALSE: not possible, the page is shown.
    virtual BOOL OnApply();
    // FALSE: the wizard stays.
    virtual BOOL OnWizardFinish();
    void OnOK() override;
    // The user does not want what was changed.
    void OnCancel() override;
    // Whether there is something to apply.
    void SetModified(BOOL modified = TRUE);

    bool OnControlMsg(UINT id, UINT code) override;
    // The user has changed a control, before a handler is told.
    virtual void ControlChanged() {}

  protected:
    CPropertyPage();

    CPropertySheet* Sheet() const { return m_sheet; }
    NativeWindow* NewNative() override;

  private:
    friend class CPropertySheet;

    UINT m_caption = 0;
    CPropertySheet* m_sheet = nullptr;
    bool m_modified = false;
};
