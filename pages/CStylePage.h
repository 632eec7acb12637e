// The page of one series' style. Its owner fills the members before the page is shown and reads them after
// the user has agreed.
#pragma once

#include "pages/TavinPage.h"
#include "platform/dialog/CComboBox.h"

class CStyleProperties;

class CStylePage : public TavinPage {
    DECLARE_DYNCREATE(CStylePage)

  public:
    CStylePage() = default;
    // Without a set the page has nothing to load or save.
    CStylePage(CString regKey, CStyleProperties* set);

    const CBrush* OnCtlColor(CDC* dc, CWnd* control, UINT kind) override;
    bool OnControlMsg(UINT id, UINT code) override;

    int drawStyle = -1;  // 0 dots, 1 line and dots, 2 line; -1: none
    int dotSize = -1;    // as a draw property has it
    int lineStyle = 0;   // 0 solid, 1 dashed, 2 dotted, 3 dash-dot, 4 dash-dot-dot
    COLORREF lineColor = 0;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void OnBtnLineColor();

    CComboBox lineStyles;
};
