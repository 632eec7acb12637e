// A push button, check box or radio button: attached to its control, or made anew.
#pragma once

#include "platform/window/CWnd.h"

class CButton : public CWnd {
  public:
    using CWnd::Create;
    // A push button in the window, in its client coordinates.
    BOOL Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetCheck() const;
    void SetCheck(int check);
    // An icon resource instead of the text, whose mnemonic stays. `hint` is shown under the pointer and read
    // to those who hear it. FALSE: no such icon.
    BOOL SetIcon(LPCSTR name, LPCSTR hint);
};

// A picture or a text: attached to its control.
class CStatic : public CWnd {
  public:
    // The picture resource that a control of kind Picture shows from now on; 0: none.
    void SetBitmap(UINT id);
};
