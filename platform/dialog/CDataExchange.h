// Moves values between the controls of a dialog and members, and holds numbers within their ranges. The first
// value that is refused ends an exchange: its control gets the keyboard, and what follows is left alone.
#pragma once

#include "platform/core/CString.h"
#include "platform/core/Types.h"

class CWnd;

class CDataExchange {
  public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate)
        : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

    // The control that the next refusal is about.
    void PrepareCtrl(UINT id) { m_control = id; }
    // Tells the user why and leads him to the control.
    void Refuse(const char* why);
    bool HasFailed() const { return m_failed; }

    const BOOL m_bSaveAndValidate;
    CWnd* const m_pDlgWnd;

  private:
    UINT m_control = 0;
    bool m_failed = false;
};

// Lets the object stand for the control, from the first exchange on.
void DDX_Control(CDataExchange* exchange, UINT id, CWnd& control);
// Numbers are written with a point, whatever the user's language, and in as few digits as read back as the
// same number. A text that says the value as it was shown leaves the value alone, to the last digit.
void DDX_Text(CDataExchange* exchange, UINT id, CString& value);
void DDX_Text(CDataExchange* exchange, UINT id, int& value);
void DDX_Text(CDataExchange* exchange, UINT id, float& value);
void DDX_Text(CDataExchange* exchange, UINT id, double& value);
void DDX_Check(CDataExchange* exchange, UINT id, int& value);
// The place of the button pressed in the group of radio buttons that begins with `first`, -1: none.
void DDX_Radio(CDataExchange* exchange, UINT first, int& value);
// The place of the entry chosen, -1: none.
void DDX_CBIndex(CDataExchange* exchange, UINT id, int& value);
// The number kept with the entry chosen. A value that no entry has selects none, and then stays as it is.
void DDX_CBItemData(CDataExchange* exchange, UINT id, int& value);
// After the value's DDX_Text.
void DDV_MinMaxInt(CDataExchange* exchange, int value, int least, int most);
void DDV_MinMaxDouble(CDataExchange* exchange, double value, double least, double most);
