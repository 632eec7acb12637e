#include "platform/window/Cursor.h"

#include <QApplication>
#include <QCursor>
#include <QWidget>

#include "platform/window/NativeWindow.h"

namespace {

struct Shape {
    HCURSOR cursor;
    Qt::CursorShape shape;
};

constexpr Shape kShapes[] = {{IDC_ARROW, Qt::ArrowCursor},
                             {IDC_WAIT, Qt::WaitCursor},
                             {IDC_CROSS, Qt::CrossCursor},
                             {IDC_SIZENS, Qt::SizeVerCursor}};

// The window that the mouse message being handled belongs to. A widget under the mouse is part of some
// window.
NativeWindow* WindowUnderMouse() {
    for (QWidget* widget = QApplication::widgetAt(QCursor::pos()); widget; widget = widget->parentWidget())
        if (NativeWindow* native = NativeWindow::Of(widget)) return native;
    return nullptr;
}

// A program without windows draws with a toolkit that has no widgets, or with none.
bool HasCursor() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

}  // namespace

HCURSOR LoadStandardCursor(HCURSOR standard) {
    for (const Shape& known : kShapes)
        if (known.cursor == standard) return standard;
    return 0;
}

HCURSOR SetCursor(HCURSOR cursor) {
    NativeWindow* native = WindowEvents::CursorWindow() ? WindowEvents::CursorWindow() : WindowUnderMouse();
    if (!native) return 0;
    QWidget* client = native->Client();
    const Qt::CursorShape before = client->cursor().shape();
    HCURSOR previous = 0;
    Qt::CursorShape wanted = Qt::ArrowCursor;
    for (const Shape& known : kShapes) {
        if (known.shape == before) previous = known.cursor;
        if (known.cursor == cursor) wanted = known.shape;
    }
    if (wanted != before) client->setCursor(wanted);
    return previous;
}

CWaitCursor::CWaitCursor() {
    if (HasCursor()) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

CWaitCursor::~CWaitCursor() {
    if (HasCursor()) QGuiApplication::restoreOverrideCursor();
}
