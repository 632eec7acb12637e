// The page of a view's axes.
#pragma once

#include "pages/TavinPage.h"
#include "platform/dialog/CButton.h"

class CAxisProperties;

class CAxisPage : public TavinPage {
    DECLARE_DYNCREATE(CAxisPage)

  public:
    CAxisPage() = default;
    CAxisPage(CString regKey, CAxisProperties* set);

    BOOL OnSetActive() override;
    bool OnControlMsg(UINT id, UINT code) override;

  protected:
    // A range whose end is not above its start is refused, unless the axis finds its range by itself.
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    // The range of an axis that finds it by itself cannot be typed.
    void UpdateEnabled();

    CAxisProperties* axes = nullptr;
    CButton xAutoScale;
    CButton yAutoScale;
};
