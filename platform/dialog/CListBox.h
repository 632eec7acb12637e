// A list of texts, attached to its control. What the program does to it sends no notification.
#pragma once

#include <cstdint>

#include "platform/core/CString.h"
#include "platform/core/Geometry.h"
#include "platform/window/CWnd.h"

// What is kept with an entry: a number or a pointer of the owner's.
using DWORD_PTR = std::uintptr_t;

constexpr int LB_ERR = -1;

constexpr UINT ODA_DRAWENTIRE = 1;
constexpr UINT ODA_SELECT = 2;
constexpr UINT ODA_FOCUS = 4;
constexpr UINT ODS_SELECTED = 0x01;
constexpr UINT ODS_FOCUS = 0x10;

// One entry to be drawn, in pixels. The context has the list's font and colours.
struct DRAWITEMSTRUCT {
    UINT CtlID = 0;
    UINT itemID = 0;
    UINT itemAction = 0;  // one of ODA_
    UINT itemState = 0;   // ODS_ flags
    CDC* hDC = nullptr;
    RECT rcItem = {0, 0, 0, 0};
    DWORD_PTR itemData = 0;
};

class CListBox : public CWnd {
  public:
    int GetCount() const;
    // The place of the new entry: the last, or in a sorted list where it belongs.
    int AddString(LPCSTR text);
    // At the end for a place of -1.
    int InsertString(int place, LPCSTR text);
    // How many are left.
    int DeleteString(int place);
    void ResetContent();
    void GetText(int place, CString& text) const;
    // The first entry behind `after` (from the top again, -1: from the top) that begins with the text,
    // ignoring case.
    int FindString(int after, LPCSTR text) const;

    // 0 and LB_ERR where there is no such entry.
    DWORD_PTR GetItemData(int place) const;
    int SetItemData(int place, DWORD_PTR data);
    void* GetItemDataPtr(int place) const { return reinterpret_cast<void*>(GetItemData(place)); }
    int SetItemDataPtr(int place, void* data) {
        return SetItemData(place, reinterpret_cast<DWORD_PTR>(data));
    }

    // Lists of one selection.
    int GetCurSel() const;
    int SetCurSel(int place);
    // Lists of several; ascending.
    int GetSelCount() const;
    int GetSelItems(int most, int* places) const;
    int GetSel(int place) const;
    int SetSel(int place, BOOL select = TRUE);

    // For owner-drawn lists.
    virtual void DrawItem(DRAWITEMSTRUCT* item);
};
