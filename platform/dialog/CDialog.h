// A dialog made from its template. It is a question: where a handler answers instead of the user, nothing is
// shown and the handler changes the members of the class that it knows.
#pragma once

#include "platform/core/MessageBox.h"
#include "platform/core/ModalSeam.h"
#include "platform/window/CWnd.h"

class CDataExchange;

class CDialog : public CWnd, public ModalQuestion {
    DECLARE_DYNAMIC(CDialog)

  public:
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);

    // Shows the dialog until EndDialog; the button that ended it. IDCANCEL without a template, without a
    // windowed program, or when the window around it ends.
    virtual int DoModal();
    // From the controls to the members (TRUE) or back. FALSE: a value was refused, which the user has been
    // told; its control has the keyboard.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);
    void EndDialog(int result);

    // IDOK and IDCANCEL are answered here, by OnOK and OnCancel.
    bool OnControlMsg(UINT id, UINT code) override;

  protected:
    // Before it is shown. Default: shows the members. FALSE: the keyboard is given already.
    virtual BOOL OnInitDialog();
    // Default: ends with IDOK unless a value is refused.
    virtual void OnOK();
    virtual void OnCancel();
    // A derived class moves its members here, with the functions of CDataExchange.h.
    virtual void DoDataExchange(CDataExchange* exchange);

    // Closing the window is cancelling.
    void OnClose() override { OnCancel(); }
    void OnDestroy() override;
    NativeWindow* NewNative() override;

  private:
    UINT m_template;
    CWnd* m_parent;
    int m_result = IDCANCEL;
};
