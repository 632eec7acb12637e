// CWnd's timers.
#include <QTimer>
#include <QWidget>

#include "platform/window/NativeWindow.h"

namespace {

QString NameOf(UINT id) { return QStringLiteral("timer%1").arg(id); }

QTimer* FindTimer(HWND window, UINT id) {
    return window ? window->findChild<QTimer*>(NameOf(id), Qt::FindDirectChildrenOnly) : nullptr;
}

}  // namespace

UINT CWnd::SetTimer(UINT id, UINT milliseconds) {
    if (!m_hWnd) return 0;
    QTimer* timer = FindTimer(m_hWnd, id);
    if (!timer) {
        timer = new QTimer(m_hWnd);
        timer->setObjectName(NameOf(id));
        QObject::connect(timer, &QTimer::timeout, m_hWnd, [native = GetNative(), id] {
            native->Tell([id](CWnd* w) { WindowEvents::Timer(w, id); });
        });
    }
    timer->start(SaturateToInt32(static_cast<std::int64_t>(milliseconds)));
    return id;
}

BOOL CWnd::KillTimer(UINT id) {
    QTimer* timer = FindTimer(m_hWnd, id);
    if (!timer) return FALSE;
    timer->stop();
    return TRUE;
}
