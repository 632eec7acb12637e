// Sheets that hear of the changes in their pages.
#pragma once

#include "platform/dialog/CPropertySheet.h"

class KFPropertySheetEx : public CPropertySheet {
    DECLARE_DYNAMIC(KFPropertySheetEx)

  public:
    using CPropertySheet::CPropertySheet;
};

class KPropertySheet : public KFPropertySheetEx {
    DECLARE_DYNAMIC(KPropertySheet)

  public:
    using KFPropertySheetEx::KFPropertySheetEx;

    // The user has changed a control of the page: there is something to apply.
    virtual void ChangedPage(CPropertyPage* page);
};
