// Where CWnd stands, in physical pixels.
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "platform/window/NativeWindow.h"

namespace {

bool IsMinimized(int how) {
    return how == SW_SHOWMINIMIZED || how == SW_MINIMIZE || how == SW_SHOWMINNOACTIVE;
}

// How much of a title bar must be in sight for the user to take hold of it, in the toolkit's units.
constexpr QSize kHold{60, 16};

// A rectangle that fits one of the areas and has its title bar in sight; `rect` itself wherever possible.
CRect InSight(NativeWindow& native, const CRect& rect, const QList<QRect>& areas) {
    QRect wanted = native.UnitsOf(rect);
    const QRect title(wanted.topLeft(), QSize(wanted.width(), kHold.height()));
    for (const QRect& area : areas) {
        const QRect seen = area & title;
        const bool holds =
            seen.width() >= std::min(kHold.width(), title.width()) && seen.height() >= kHold.height();
        if (holds && wanted.width() <= area.width() && wanted.height() <= area.height()) return rect;
    }
    // The area that shows most of it, else the first.
    const QRect* home = &areas.front();
    const auto shown = [&wanted](const QRect& area) {
        const QRect part = area & wanted;
        return std::int64_t{part.width()} * part.height();
    };
    for (const QRect& area : areas)
        if (shown(area) > shown(*home)) home = &area;
    wanted.setSize(wanted.size().boundedTo(home->size()));
    wanted.moveLeft(std::clamp(wanted.left(), home->left(), home->right() + 1 - wanted.width()));
    wanted.moveTop(std::clamp(wanted.top(), home->top(), home->bottom() + 1 - wanted.height()));
    return native.PixelsOf(wanted);
}

// Where a window may stand: on a screen, a child frame in its area. Empty for an area without a size yet.
QList<QRect> AreasFor(const CWnd& window) {
    if (window.GetParent()) {
        const QWidget* const area = window.GetSafeHwnd()->parentWidget();
        return area->isVisible() ? QList<QRect>{area->rect()} : QList<QRect>();
    }
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens << screen->availableGeometry();
    return screens;
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
    const QList<QRect> areas = AreasFor(*this);
    native->SetNormalRect(areas.isEmpty() ? wanted : InSight(*native, wanted, areas));
    if (!m_hWnd) return FALSE;
    const int how = static_cast<int>(placement->showCmd);
    if (IsMinimized(how) || how == SW_SHOWMAXIMIZED || how == SW_HIDE) {
        native->Show(how);
    } else {
        native->Show(SW_SHOWNORMAL);
    }
    return TRUE;
}
