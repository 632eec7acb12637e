// A drop-down list, attached to its control. What the program does to it sends no notification.
#pragma once

#include "platform/dialog/CListBox.h"

constexpr int CB_ERR = -1;

class CComboBox : public CWnd {
  public:
    int GetCount() const;
    // The place of the new entry: the last, or in a sorted list where it belongs.
    int AddString(LPCSTR text);
    // At the end for a place of -1.
    int InsertString(int place, LPCSTR text);
    void ResetContent();
    void GetLBText(int place, CString& text) const;
    int FindStringExact(LPCSTR text) const;
    // 0 and CB_ERR where there is no such entry.
    DWORD_PTR GetItemData(int place) const;
    int SetItemData(int place, DWORD_PTR data);
    void* GetItemDataPtr(int place) const { return reinterpret_cast<void*>(GetItemData(place)); }
    int SetItemDataPtr(int place, void* data) {
        return SetItemData(place, reinterpret_cast<DWORD_PTR>(data));
    }
    // CB_ERR: nothing is selected.
    int GetCurSel() const;
    int SetCurSel(int place);
};
