// A dialog made from its template. It is a question: where a handler answers instead of the user, nothing is
// shown and the handler changes the members of the class that it knows.
//
// A handler may end the dialog, or the window around it, at any time.
#pragma once

#include "platform/core/MessageBox.h"
#include "platform/core/ModalSeam.h"
#include "platform/window/CWnd.h"

class CBrush;
class CDataExchange;
class CDC;
struct DialogResource;

// What kind of control asks for its colours.
constexpr UINT CTLCOLOR_STATIC = 6;

class CDialog : public CWnd, public ModalQuestion {
    DECLARE_DYNAMIC(CDialog)

  public:
    explicit CDialog(UINT templateId, CWnd* parent = nullptr) : m_template(templateId), m_parent(parent) {}
    explicit CDialog(LPCSTR templateName, CWnd* parent = nullptr)
        : m_templateName(templateName), m_parent(parent) {}

    // Shows the dialog until EndDialog; the button that ended it. IDCANCEL without a template, without a
    // windowed program, when it is open already, or when the window around it ends.
    virtual int DoModal();
    // From the controls to the members (TRUE) or back. FALSE: a value was refused, which the user has been
    // told; its control has the keyboard.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);
    void EndDialog(int result);

    // IDOK and IDCANCEL are answered here, by OnOK and OnCancel.
    bool OnControlMsg(UINT id, UINT code) override;
    // A text is about to be painted and may get another ground: background mode OPAQUE and the colour. The
    // brush returned is the platform's (null: what the toolkit paints behind it).
    virtual const CBrush* OnCtlColor(CDC* dc, CWnd* control, UINT kind);

  protected:
    // Before it is shown. Default: shows the members. FALSE: the keyboard is given already.
    virtual BOOL OnInitDialog();
    // Default: ends with IDOK unless a value is refused.
    virtual void OnOK();
    virtual void OnCancel();
    // A derived class moves its members here, with the functions of CDataExchange.h.
    virtual void DoDataExchange(CDataExchange* exchange);

    // Gives the keyboard to the first control.
    virtual void GiveFocus();
    // Has the key Tab go from one control to the other.
    static void SetTabOrder(const CWnd& before, const CWnd& after);
    // Null without one.
    const DialogResource* Template() const;
    virtual CString Caption() const;

    // Builds what is in the dialog, lets OnInitDialog fill it and gives every control room for its text.
    int OnCreate(CREATESTRUCT* create) override;
    // Closing the window is cancelling.
    void OnClose() override { OnCancel(); }
    void OnDestroy() override;
    NativeWindow* NewNative() override;

  private:
    UINT m_template = 0;
    CString m_templateName;
    CWnd* m_parent;
    int m_result = IDCANCEL;
    bool m_ended = false;
    BOOL m_firstControl = TRUE;  // gets the keyboard
};
