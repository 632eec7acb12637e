// The page of a view's tiles.
#pragma once

#include "pages/TavinPage.h"

class CTiledLayoutProperties;

class CTiledLayoutPage : public TavinPage {
    DECLARE_DYNCREATE(CTiledLayoutPage)

  public:
    CTiledLayoutPage() = default;
    CTiledLayoutPage(CString regKey, CTiledLayoutProperties* set);

  protected:
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    CTiledLayoutProperties* layout = nullptr;
};
