// A window. The object and the window on the screen live apart: Create makes the window, DestroyWindow ends
// it, and the object stays until its owner deletes it; a window object that is destroyed first takes its
// window with it. Views and frames made with new go by themselves (PostNcDestroy): a window may end in any
// handler, and the object stays until no event is being handled, without a window (GetSafeHwnd is null).
//
// Everything is in physical pixels; client coordinates start at the top left corner of the client area.
//
// The client area of a view is a picture that the window keeps. Invalidate asks for OnPaint at the next
// opportunity; a client context (CClientDC) draws on the picture at any time, and what it drew stays until
// the next OnPaint.
#pragma once

#include <memory>

#include "platform/window/CCmdTarget.h"
#include "platform/window/WindowTypes.h"

class CDC;
class CFrameWnd;
class CScrollBar;
class NativeWindow;
struct CCreateContext;
struct WindowEvents;

// Registers a kind of window for CWnd::Create: its class style, the cursor shown while OnSetCursor does not
// choose one (0: the arrow), and the colour that the client area has until it is painted. The name lives as
// long as the program. A colour, not a brush: brushes may die before the windows.
const char* AfxRegisterWndClass(UINT classStyle, HCURSOR cursor, COLORREF background);

class CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)

  public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    // Makes the window. A class name of null means a plain class with double clicks; a parent of null makes a
    // window of its own; in a frame, number AFX_IDW_PANE_FIRST fills the frame and `rect` does not count.
    // FALSE, and nothing made, when PreCreateWindow or OnCreate refuse.
    virtual BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, CCreateContext* context = nullptr);
    // May change what is about to be created; FALSE prevents it.
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    // FALSE when there is no window. The object may be gone afterwards.
    virtual BOOL DestroyWindow();

    HWND GetSafeHwnd() const { return m_hWnd; }
    // The control with this number in the window, or null. One that no object stands for yet gets an object
    // that lives as long as the control.
    CWnd* GetDlgItem(int id) const;
    int GetDlgCtrlID() const;
    // Lets this object stand for a window that is there already: a control, or a widget of the host's. The
    // object may go before it. FALSE when either has a partner.
    BOOL Attach(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    // The window stays, without this object.
    HWND Detach();
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;

    // The window this one stands in, or null.
    CWnd* GetParent() const;
    // The innermost frame around this window, or null.
    CFrameWnd* GetParentFrame() const;

    void GetClientRect(LPRECT rect) const;
    // In screen coordinates.
    void GetWindowRect(LPRECT rect) const;
    void ScreenToClient(LPPOINT point) const;
    void ClientToScreen(LPPOINT point) const;
    void MoveWindow(int x, int y, int width, int height);

    BOOL ShowWindow(int how);
    BOOL IsWindowVisible() const;
    BOOL IsIconic() const;
    BOOL IsZoomed() const;
    void SetFocus();
    BOOL GetWindowPlacement(WINDOWPLACEMENT* placement) const;
    // A window whose title bar would be out of sight, or that is larger than its screen, is brought into it;
    // a child frame into its area.
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* placement);
    DWORD GetStyle() const { return m_style; }
    // FALSE when nothing changed. Caption, system menu and scroll bars follow at once.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);

    void SetWindowText(LPCSTR text);
    void GetWindowText(CString& text) const;

    bool OnControlMsg(UINT id, UINT code) override;

    // Asks for OnPaint, after filling the client area with the background colour when `erase` is set.
    void Invalidate(BOOL erase = TRUE);
    // Does now what Invalidate asked for.
    void UpdateWindow();
    // A client context, to be given back with ReleaseDC. Null without a window.
    CDC* GetDC();
    int ReleaseDC(CDC* dc);

    // Scroll bars SB_HORZ and SB_VERT, as far as the style asks for them. Positions stay within the range;
    // setting one sends no message.
    void SetScrollRange(int bar, int min, int max, BOOL redraw = TRUE);
    // How much of range and page together is in view: the length of the thumb. A new range resets it.
    void SetScrollPage(int bar, int page);
    void GetScrollRange(int bar, int* min, int* max) const;
    // Returns the previous position.
    int SetScrollPos(int bar, int position, BOOL redraw = TRUE);
    int GetScrollPos(int bar) const;
    BOOL GetScrollInfo(int bar, SCROLLINFO* info, UINT mask = SIF_ALL) const;

    // OnTimer runs every `milliseconds` until KillTimer or the window's end. Setting a number again restarts
    // it.
    UINT SetTimer(UINT id, UINT milliseconds);
    BOOL KillTimer(UINT id);

  protected:
    // Messages. The defaults do nothing unless said otherwise. `flags` of the mouse are MK_ values; points
    // are in client coordinates, except where screen coordinates are said.

    // After the window is made; -1 ends it again.
    virtual int OnCreate(CREATESTRUCT* create);
    // Before the window ends, its children's too.
    virtual void OnDestroy();
    // Asks the window to close: destroys it.
    virtual void OnClose();
    // The client area has its new size.
    virtual void OnSize(UINT type, int cx, int cy);
    virtual void OnPaint();
    virtual void OnSetFocus(CWnd* oldWindow);
    virtual void OnKillFocus(CWnd* newWindow);
    virtual void OnLButtonDown(UINT flags, CPoint point);
    virtual void OnLButtonUp(UINT flags, CPoint point);
    // The second press of a double click; a class without CS_DBLCLKS gets OnLButtonDown instead.
    virtual void OnLButtonDblClk(UINT flags, CPoint point);
    virtual void OnMButtonDblClk(UINT flags, CPoint point);
    // OnContextMenu follows where the window has one.
    virtual void OnRButtonDown(UINT flags, CPoint point);
    virtual void OnRButtonUp(UINT flags, CPoint point);
    virtual void OnMouseMove(UINT flags, CPoint point);
    // Once for each notch, WHEEL_DELTA away from the user or -WHEEL_DELTA towards him. Screen coordinates.
    virtual BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    // To the right for positive values: notches of WHEEL_DELTA, or smaller steps of a touch pad as they come.
    virtual BOOL OnMouseHWheel(UINT flags, short delta, CPoint point);
    // The mouse is no longer over the client area.
    virtual void OnMouseLeave();
    // Again and again while the key is held. Arrow and page keys move the scroll bars afterwards.
    virtual void OnKeyDown(UINT key, UINT repeat, UINT flags);
    // Once when the key is let go or the window loses the keyboard.
    virtual void OnKeyUp(UINT key, UINT repeat, UINT flags);
    // Before each mouse move: TRUE when it called ::SetCursor. Default: the class's cursor.
    virtual BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    // `code` is an SB_ value. The bar stays where it is unless the handler moves it; `position` counts for
    // the two thumb codes and, cast to int, may be negative. `scrollBar` is null.
    virtual void OnHScroll(UINT code, UINT position, CScrollBar* scrollBar);
    virtual void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar);
    // Screen coordinates; asked for by the keyboard, the middle of the client area.
    virtual void OnContextMenu(CWnd* window, CPoint point);
    virtual void OnTimer(UINT id);
    // The last that the object hears of its window.
    virtual void PostNcDestroy();

    // The toolkit's window for this kind of object, owned by its parent or, in the end, by DestroyWindow.
    virtual NativeWindow* NewNative();
    BOOL CreateNative(const char* className, CREATESTRUCT& create, CWnd* parent, UINT id);
    NativeWindow* GetNative() const;

  private:
    friend struct WindowEvents;

    HWND m_hWnd = nullptr;
    DWORD m_style = 0;
    UINT m_classStyle = CS_DBLCLKS;
    HCURSOR m_classCursor = 0;
    COLORREF m_background = RGB(255, 255, 255);
    CString m_text;
};
