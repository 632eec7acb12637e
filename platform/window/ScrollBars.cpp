// CWnd's scroll bars: those of the scroll area that stands for the window.
#include <QAbstractScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "platform/window/CWnd.h"

namespace {

QScrollBar* BarOf(HWND window, DWORD style, int bar) {
    const auto* area = qobject_cast<QAbstractScrollArea*>(window);
    if (!area || (bar != SB_HORZ && bar != SB_VERT)) return nullptr;
    if (!(style & (bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL))) return nullptr;
    return bar == SB_HORZ ? area->horizontalScrollBar() : area->verticalScrollBar();
}

// The part of the range that one step moves, for the wheel over the bar and for the size of the thumb.
int StepOf(int min, int max, int parts) {
    const auto range = static_cast<std::int64_t>(max) - min;
    return SaturateToInt32(std::max<std::int64_t>(1, range / parts));
}

}  // namespace

void CWnd::SetScrollRange(int bar, int min, int max, BOOL) {
    QScrollBar* native = BarOf(m_hWnd, m_style, bar);
    if (!native) return;
    native->setRange(min, std::max(min, max));
    native->setSingleStep(StepOf(min, max, 60));
    native->setPageStep(StepOf(min, max, 10));
}

void CWnd::SetScrollPage(int bar, int page) {
    if (QScrollBar* native = BarOf(m_hWnd, m_style, bar)) native->setPageStep(std::max(1, page));
}

void CWnd::GetScrollRange(int bar, int* min, int* max) const {
    const QScrollBar* native = BarOf(m_hWnd, m_style, bar);
    *min = native ? native->minimum() : 0;
    *max = native ? native->maximum() : 0;
}

int CWnd::SetScrollPos(int bar, int position, BOOL) {
    QScrollBar* native = BarOf(m_hWnd, m_style, bar);
    if (!native) return 0;
    const int before = native->value();
    native->setValue(position);
    return before;
}

int CWnd::GetScrollPos(int bar) const {
    const QScrollBar* native = BarOf(m_hWnd, m_style, bar);
    return native ? native->value() : 0;
}

BOOL CWnd::GetScrollInfo(int bar, SCROLLINFO* info, UINT mask) const {
    const QScrollBar* native = BarOf(m_hWnd, m_style, bar);
    if (!native || !info) return FALSE;
    info->fMask = mask;
    if (mask & SIF_RANGE) {
        info->nMin = native->minimum();
        info->nMax = native->maximum();
    }
    if (mask & SIF_PAGE) info->nPage = static_cast<UINT>(native->pageStep());
    if (mask & SIF_POS) info->nPos = native->value();
    if (mask & SIF_TRACKPOS) info->nTrackPos = native->sliderPosition();
    return TRUE;
}
