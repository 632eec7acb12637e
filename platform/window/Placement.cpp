// Where CWnd stands, in physical pixels.
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "platform/window/NativeWindow.h"

namespace {

bool IsMinimized(int how) {
    return how == SW_SHOWMINIMIZED || how == SW_MINIMIZE || how == SW_SHOWMINNOACTIVE;
}

// A rectangle that some screen shows a part of; `rect` itself wherever possible.
CRect OnSomeScreen(NativeWindow& native, const CRect& rect) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().intersects(native.UnitsOf(rect))) return rect;
    const CRect screen = native.PixelsOf(QGuiApplication::primaryScreen()->availableGeometry());
    return {screen.left, screen.top, AddSaturated(screen.left, rect.Width()),
            AddSaturated(screen.top, rect.Height())};
}

}  // namespace

void CWnd::MoveWindow(int x, int y, int width, int height) {
    if (m_hWnd) GetNative()->SetNormalRect(CRect(x, y, AddSaturated(x, width), AddSaturated(y, height)));
}

BOOL CWnd::IsIconic() const { return m_hWnd && m_hWnd->isMinimized(); }

BOOL CWnd::IsZoomed() const { return m_hWnd && m_hWnd->isMaximized(); }

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
    if (!m_hWnd || !placement) return FALSE;
    *placement = {};
    placement->showCmd = IsIconic() ? SW_SHOWMINIMIZED : IsZoomed() ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    placement->rcNormalPosition = GetNative()->NormalRect();
    if (IsIconic()) {
        const double scale = GetNative()->Scale();
        placement->ptMinPosition = {RoundHalfAway(m_hWnd->x() * scale), RoundHalfAway(m_hWnd->y() * scale)};
    }
    return TRUE;
}

BOOL CWnd::SetWindowPlacement(const WINDOWPLACEMENT* placement) {
    if (!m_hWnd || !placement) return FALSE;
    NativeWindow* native = GetNative();
    const CRect wanted(placement->rcNormalPosition);
    native->SetNormalRect(GetParent() ? wanted : OnSomeScreen(*native, wanted));
    if (!m_hWnd) return FALSE;
    const int how = static_cast<int>(placement->showCmd);
    if (IsMinimized(how) || how == SW_SHOWMAXIMIZED || how == SW_HIDE) {
        native->Show(how);
    } else {
        native->Show(SW_SHOWNORMAL);
    }
    return TRUE;
}
