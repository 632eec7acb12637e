// A page that knows whether the user has changed any of its controls.
#pragma once

#include "platform/dialog/CPropertyPage.h"

class KPropertyPage : public CPropertyPage {
    DECLARE_DYNAMIC(KPropertyPage)

  public:
    explicit KPropertyPage(UINT templateId, UINT captionId = 0) : CPropertyPage(templateId, captionId) {}
    explicit KPropertyPage(LPCSTR templateName, UINT captionId = 0)
        : CPropertyPage(templateName, captionId) {}

    // Commands that the page does not know are its sheet's.
    bool OnCmdMsg(UINT id, CCmdUI* update) override;
    virtual void SetPageTouched(bool isTouched) { touched = isTouched; }
    bool GetPageTouched() const { return touched; }

    void ControlChanged() override;

  protected:
    KPropertyPage() = default;

  private:
    bool touched = false;
};
