// The page of a view's colours.
#pragma once

#include "pages/TavinPage.h"

class CColorProperties;

class CColorPage : public TavinPage {
    DECLARE_DYNCREATE(CColorPage)

  public:
    CColorPage() = default;
    CColorPage(CString regKey, CColorProperties* set);

    // Asks for a colour: 1 and the new one when the user chose.
    int EditColor(unsigned long& color);

    const CBrush* OnCtlColor(CDC* dc, CWnd* control, UINT kind) override;
    bool OnControlMsg(UINT id, UINT code) override;

  private:
    CColorProperties* colors = nullptr;
};
