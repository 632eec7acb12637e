// A list with columns, attached to its control.
#pragma once

#include "platform/window/CWnd.h"

class CListCtrl : public CWnd {
  public:
    // Columns and rows are added at the end, whatever `place` says, and numbered from 0; -1: no control.
    int InsertColumn(int place, LPCSTR heading);
    int InsertItem(int place, LPCSTR text);
    BOOL SetItemText(int row, int column, LPCSTR text);
    CString GetItemText(int row, int column) const;
    int GetItemCount() const;
    // Makes every column as wide as its texts.
    void FitColumns();
};
