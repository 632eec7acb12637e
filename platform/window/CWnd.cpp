#include "platform/window/CWnd.h"

#include <QGuiApplication>
#include <QWidget>
#include <cmath>
#include <deque>
#include <string>

#include "platform/window/CClientDC.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/Cursor.h"
#include "platform/window/NativeWindow.h"

namespace {

struct WindowClass {
    std::string name;
    UINT style;
    HCURSOR cursor;
    COLORREF background;
};

// A deque, because the names handed out must stay where they are.
std::deque<WindowClass>& WindowClasses() {
    static std::deque<WindowClass> classes;
    return classes;
}

CPoint OriginOnScreen(NativeWindow& native) {
    const QPoint origin = native.Client()->mapToGlobal(QPoint(0, 0));
    return {RoundHalfAway(origin.x() * native.Scale()), RoundHalfAway(origin.y() * native.Scale())};
}

}  // namespace

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

const char* AfxRegisterWndClass(UINT classStyle, HCURSOR cursor, COLORREF background) {
    for (const WindowClass& known : WindowClasses())
        if (known.style == classStyle && known.cursor == cursor && known.background == background)
            return known.name.c_str();
    const std::string name = "Afx:" + std::to_string(WindowClasses().size());
    WindowClasses().push_back({name, classStyle, cursor, background});
    return WindowClasses().back().name.c_str();
}

CWnd::~CWnd() {
    // The virtual handlers of derived classes are gone by now: they see their window's end only when it ends
    // first.
    if (m_hWnd) GetNative()->LoseOwner();
}

NativeWindow* CWnd::GetNative() const { return NativeWindow::Of(m_hWnd); }

NativeWindow* CWnd::NewNative() { return NewViewWidget(this); }

BOOL CWnd::Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  CCreateContext* context) {
    CREATESTRUCT create;
    create.lpszName = windowName;
    create.style = style;
    create.x = rect.left;
    create.y = rect.top;
    create.cx = SubtractSaturated(rect.right, rect.left);
    create.cy = SubtractSaturated(rect.bottom, rect.top);
    create.lpCreateParams = context;
    return CreateNative(className, create, parent, id);
}

BOOL CWnd::CreateNative(const char* className, CREATESTRUCT& create, CWnd* parent, UINT id) {
    create.lpszClass = className;
    if (m_hWnd) return FALSE;
    const HandlingScope scope;
    if (!PreCreateWindow(create)) {
        // Views and frames count on deleting themselves.
        PostNcDestroy();
        return FALSE;
    }
    for (const WindowClass& known : WindowClasses()) {
        if (!create.lpszClass || known.name != create.lpszClass) continue;
        m_classStyle = known.style;
        m_classCursor = known.cursor;
        m_background = known.background;
    }
    m_style = create.style;
    NativeWindow* native = NewNative();
    m_hWnd = native->Widget();
    if (parent && parent->m_hWnd) parent->GetNative()->Adopt(m_hWnd, id);
    native->ApplyStyle(m_style);
    if (create.lpszName) SetWindowText(create.lpszName);
    if (create.cx > 0 && create.cy > 0) MoveWindow(create.x, create.y, create.cx, create.cy);
    if (OnCreate(&create) == -1) DestroyWindow();
    if (m_style & WS_VISIBLE) ShowWindow(SW_SHOW);
    // Handlers may have ended it.
    return m_hWnd != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT&) { return TRUE; }

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    GetNative()->Destroy();
    return TRUE;
}

CWnd* CWnd::GetParent() const {
    for (QWidget* widget = m_hWnd ? m_hWnd->parentWidget() : nullptr; widget; widget = widget->parentWidget())
        if (NativeWindow* native = NativeWindow::Of(widget); native && native->Owner())
            return native->Owner();
    return nullptr;
}

CFrameWnd* CWnd::GetParentFrame() const {
    for (CWnd* window = GetParent(); window; window = window->GetParent())
        if (window->IsKindOf(RUNTIME_CLASS(CFrameWnd))) return static_cast<CFrameWnd*>(window);
    return nullptr;
}

void CWnd::GetClientRect(LPRECT rect) const {
    *rect = {0, 0, 0, 0};
    if (!m_hWnd) return;
    NativeWindow* native = GetNative();
    const double scale = native->Scale();
    rect->right = RoundHalfAway(native->Client()->width() * scale);
    rect->bottom = RoundHalfAway(native->Client()->height() * scale);
}

void CWnd::GetWindowRect(LPRECT rect) const {
    *rect = {0, 0, 0, 0};
    if (!m_hWnd) return;
    const double scale = GetNative()->Scale();
    const QPoint corner = m_hWnd->mapToGlobal(QPoint(0, 0));
    rect->left = RoundHalfAway(corner.x() * scale);
    rect->top = RoundHalfAway(corner.y() * scale);
    rect->right = AddSaturated(rect->left, RoundHalfAway(m_hWnd->width() * scale));
    rect->bottom = AddSaturated(rect->top, RoundHalfAway(m_hWnd->height() * scale));
}

void CWnd::ScreenToClient(LPPOINT point) const {
    if (!m_hWnd) return;
    const CPoint origin = OriginOnScreen(*GetNative());
    *point = CPoint(*point) - origin;
}

void CWnd::ClientToScreen(LPPOINT point) const {
    if (!m_hWnd) return;
    const CPoint origin = OriginOnScreen(*GetNative());
    *point = CPoint(*point) + origin;
}

BOOL CWnd::ShowWindow(int how) {
    if (!m_hWnd) return FALSE;
    const BOOL before = IsWindowVisible();
    GetNative()->Show(how);
    return before;
}

BOOL CWnd::IsWindowVisible() const { return m_hWnd && m_hWnd->isVisible(); }

void CWnd::SetFocus() {
    if (m_hWnd) m_hWnd->setFocus(Qt::OtherFocusReason);
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT) {
    const DWORD style = (m_style & ~remove) | add;
    if (style == m_style) return FALSE;
    m_style = style;
    if (m_hWnd) GetNative()->ApplyStyle(style);
    return TRUE;
}

void CWnd::SetWindowText(LPCSTR text) {
    m_text = text;
    if (m_hWnd) GetNative()->SetText(QString::fromUtf8(m_text.GetString()));
}

void CWnd::GetWindowText(CString& text) const {
    text = m_text;
    if (m_hWnd) GetNative()->GetText(text);
}

void CWnd::UpdateWindow() {
    if (m_hWnd) GetNative()->PaintNow();
}

void CWnd::Invalidate(BOOL erase) {
    if (m_hWnd) GetNative()->Invalidate(erase != FALSE);
}

CDC* CWnd::GetDC() { return m_hWnd ? new CClientDC(this) : nullptr; }

int CWnd::ReleaseDC(CDC* dc) {
    delete dc;
    return dc != nullptr;
}

int CWnd::OnCreate(CREATESTRUCT*) { return 0; }
void CWnd::OnDestroy() {}
void CWnd::OnClose() { DestroyWindow(); }
void CWnd::OnSize(UINT, int, int) {}
void CWnd::OnPaint() {}
void CWnd::OnSetFocus(CWnd*) {}
void CWnd::OnKillFocus(CWnd*) {}
void CWnd::OnLButtonDown(UINT, CPoint) {}
void CWnd::OnLButtonUp(UINT, CPoint) {}
void CWnd::OnLButtonDblClk(UINT, CPoint) {}
void CWnd::OnMButtonDblClk(UINT, CPoint) {}
void CWnd::OnMouseMove(UINT, CPoint) {}
void CWnd::OnRButtonDown(UINT, CPoint) {}
void CWnd::OnRButtonUp(UINT, CPoint) {}
BOOL CWnd::OnMouseHWheel(UINT, short, CPoint) { return FALSE; }
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) { return FALSE; }
void CWnd::OnMouseLeave() {}
void CWnd::OnKeyDown(UINT, UINT, UINT) {}
void CWnd::OnKeyUp(UINT, UINT, UINT) {}
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) {
    ::SetCursor(m_classCursor);
    return TRUE;
}
void CWnd::OnHScroll(UINT, UINT, CScrollBar*) {}
void CWnd::OnVScroll(UINT, UINT, CScrollBar*) {}
void CWnd::OnContextMenu(CWnd*, CPoint) {}
void CWnd::OnTimer(UINT) {}
void CWnd::PostNcDestroy() {}
