// The sheet of a view's settings: no button Apply, unless its owner takes PSH_NOAPPLYNOW away, but Load and
// Save, which read and write the sets of all its pages in the settings.
#pragma once

#include "platform/dialog/CButton.h"
#include "platform/dialog/KPropertySheet.h"

class TavinPage;

class TavinSheet : public KPropertySheet {
    DECLARE_DYNAMIC(TavinSheet)

  public:
    explicit TavinSheet(unsigned int captionId, CWnd* parent = nullptr, unsigned int selectPage = 0);
    explicit TavinSheet(const char* caption, CWnd* parent = nullptr, unsigned int selectPage = 0);

    bool OnControlMsg(UINT id, UINT code) override;

  protected:
    BOOL OnInitDialog() override;
    // Pages that were never shown take part; pages of other kinds do not.
    void OnButtonLoadDefault();
    void OnButtonSaveDefault();

  private:
    // What the page shows reaches its set first, and what is in the set then is shown.
    void ForEachPage(int (TavinPage::*act)());

    CButton loadButton;
    CButton saveButton;
};
