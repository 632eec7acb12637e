// What the toolkit's widgets and the framework's windows know of each other; not for programs.
#pragma once

#include <exception>
#include <new>
#include <utility>
#include <vector>

#include "platform/core/MessageBox.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/Graveyard.h"

class CBitmapEx;
class QMainWindow;
class QMdiArea;
class QRect;
class QString;

// The base of every widget that stands for a CWnd. The owner is null once the window has ended; the widget
// itself rests in the graveyard then, because the toolkit must not lose a widget whose event is being
// handled.
class NativeWindow {
  public:
    explicit NativeWindow(CWnd* owner) : owner_(owner) {}
    virtual ~NativeWindow() = default;
    // Null for null and for widgets that are no window of the framework.
    static NativeWindow* Of(QWidget* widget);

    CWnd* Owner() const { return owner_; }
    virtual QWidget* Widget() = 0;
    // The widget whose pixels are the client area.
    virtual QWidget* Client() { return Widget(); }
    // The main window that holds view, toolbars and status bar of a frame; null for other windows.
    virtual QMainWindow* Body() { return nullptr; }
    virtual QMdiArea* MdiArea() { return nullptr; }
    // The client area's picture; null where client contexts do not draw.
    virtual CBitmapEx* Picture() { return nullptr; }

    virtual void Adopt(QWidget* child, UINT id);
    // The widget goes for good, at once or soon.
    virtual void Retire() {}
    virtual void ApplyStyle(DWORD style) = 0;
    // The user did something with a control in the window, which its owner is about to be told.
    virtual void ControlUsed(QWidget& control, UINT code) { (void)control, (void)code; }
    virtual void SetText(const QString& text);
    // Where the user may have changed it.
    virtual void GetText(CString& text) { (void)text; }
    // The object goes; true when the widget stays without it.
    virtual bool LetOwnerGo() { return false; }
    virtual void Show(int how);
    virtual void Invalidate(bool erase) { (void)erase; }
    virtual void PaintNow() {}
    // The normal rectangle, also while minimised or maximised. Parent's coordinates, physical pixels.
    virtual CRect NormalRect();
    virtual void SetNormalRect(const CRect& rect);

    // Physical pixels per unit of the toolkit.
    double Scale();
    QRect UnitsOf(const CRect& pixels);
    CRect PixelsOf(const QRect& units);

    // Ends the window for its owner and those in it: OnDestroy, the children, PostNcDestroy. Does nothing
    // for a window that is ending already.
    void Sever();
    // Severs, then buries the widget.
    void Destroy();
    // The owner is being destroyed and will not hear any more.
    void LoseOwner();

    // Runs a handler of the owner unless the window has ended. Nothing is thrown on into the toolkit.
    template <class Handler>
    void Tell(Handler handler) {
        if (!owner_) return;
        const HandlingScope scope;
        Guarded([&] { handler(owner_); });
    }

    template <class Action>
    static void Guarded(Action action) {
        try {
            action();
        } catch (const std::bad_alloc&) {
            AfxMessageBox("There is not enough memory for this operation.", MB_OK | MB_ICONSTOP);
        } catch (const std::exception& failure) {
            AfxMessageBox(failure.what(), MB_OK | MB_ICONSTOP);
        }
    }

  protected:
    CWnd* ReleaseOwner() { return std::exchange(owner_, nullptr); }

  private:
    CWnd* owner_;
    bool ending_ = false;
};

NativeWindow* NewViewWidget(CWnd* owner);
NativeWindow* NewFrameWidget(CWnd* owner);
NativeWindow* NewMdiFrameWidget(CWnd* owner);
NativeWindow* NewChildFrameWidget(CWnd* owner);
NativeWindow* NewToolBarWidget(CWnd* owner);
NativeWindow* NewStatusBarWidget(CWnd* owner);

// The widgets' way to the handlers.
struct WindowEvents {
    // The window whose OnSetCursor is running, or null.
    static NativeWindow*& CursorWindow() {
        static NativeWindow* window = nullptr;
        return window;
    }
    static int Create(CWnd* w, CREATESTRUCT* create) { return w->OnCreate(create); }
    static void Close(CWnd* w) { w->OnClose(); }
    static void Size(CWnd* w, UINT type, int cx, int cy) { w->OnSize(type, cx, cy); }
    static void Paint(CWnd* w) { w->OnPaint(); }
    static void Focus(CWnd* w) { w->OnSetFocus(nullptr); }
    static void FocusLost(CWnd* w) { w->OnKillFocus(nullptr); }
    static void RightDown(CWnd* w, UINT flags, CPoint p) { w->OnRButtonDown(flags, p); }
    static void RightUp(CWnd* w, UINT flags, CPoint p) { w->OnRButtonUp(flags, p); }
    static void LeftDown(CWnd* w, UINT flags, CPoint p) { w->OnLButtonDown(flags, p); }
    static void LeftUp(CWnd* w, UINT flags, CPoint p) { w->OnLButtonUp(flags, p); }
    static void LeftDouble(CWnd* w, UINT flags, CPoint p) {
        w->m_classStyle& CS_DBLCLKS ? w->OnLButtonDblClk(flags, p) : w->OnLButtonDown(flags, p);
    }
    static void MiddleDouble(CWnd* w, UINT flags, CPoint p) {
        if (w->m_classStyle & CS_DBLCLKS) w->OnMButtonDblClk(flags, p);
    }
    static void Cursor(CWnd* w) {
        NativeWindow* const before = std::exchange(CursorWindow(), w->GetNative());
        w->OnSetCursor(w, HTCLIENT, WM_MOUSEMOVE);
        CursorWindow() = before;
    }
    static void Move(CWnd* w, UINT flags, CPoint p) { w->OnMouseMove(flags, p); }
    static void Wheel(CWnd* w, UINT flags, short delta, CPoint p) { w->OnMouseWheel(flags, delta, p); }
    static void HWheel(CWnd* w, UINT flags, short delta, CPoint p) { w->OnMouseHWheel(flags, delta, p); }
    static void Leave(CWnd* w) { w->OnMouseLeave(); }
    static void KeyDown(CWnd* w, UINT key) { w->OnKeyDown(key, 1, 0); }
    static void KeyUp(CWnd* w, UINT key) { w->OnKeyUp(key, 1, 0); }
    static void Scroll(CWnd* w, int bar, UINT code, int position) {
        const auto bits = static_cast<UINT>(position);
        bar == SB_HORZ ? w->OnHScroll(code, bits, nullptr) : w->OnVScroll(code, bits, nullptr);
    }
    static void ContextMenu(CWnd* w, CPoint screen) { w->OnContextMenu(w, screen); }
    // The frame gets or loses the user.
    static void FrameActivated(CWnd* w, bool active) {
        if (w->IsKindOf(RUNTIME_CLASS(CFrameWnd))) static_cast<CFrameWnd*>(w)->FrameActivated(active);
    }
    static void DropFiles(CWnd* w, const std::vector<CString>& paths) {
        if (w->IsKindOf(RUNTIME_CLASS(CFrameWnd))) static_cast<CFrameWnd*>(w)->FilesDropped(paths);
    }
    static void Timer(CWnd* w, UINT id) { w->OnTimer(id); }
    static void Destroy(CWnd* w) { w->OnDestroy(); }
    static void Gone(CWnd* w) {
        w->m_hWnd = nullptr;
        w->PostNcDestroy();
    }
    static COLORREF Background(const CWnd* w) { return w->m_background; }
    static HCURSOR ClassCursor(const CWnd* w) { return w->m_classCursor; }
};
