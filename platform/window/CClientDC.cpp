#include "platform/window/CClientDC.h"

#include <QPointer>
#include <QWidget>

#include "platform/gdi/CBitmapEx.h"
#include "platform/window/NativeWindow.h"

namespace {

// Stands in for the picture of a window that has none.
CBitmapEx& NoPicture() {
    static CBitmapEx picture(4, 32, 256);
    return picture;
}

CBitmapEx& PictureOf(CWnd* window) {
    NativeWindow* native = window ? NativeWindow::Of(window->GetSafeHwnd()) : nullptr;
    CBitmapEx* picture = native ? native->Picture() : nullptr;
    return picture ? *picture : NoPicture();
}

}  // namespace

struct CClientDC::Target {
    QPointer<QWidget> window;
    unsigned changesBefore = 0;
};

CClientDC::CClientDC(CWnd* window) : CDC(PictureOf(window)), m_target(std::make_unique<Target>()) {
    if (window) m_target->window = window->GetSafeHwnd();
    m_target->changesBefore = PictureOf(window).GetChanges();
}

CClientDC::~CClientDC() {
    NativeWindow* native = NativeWindow::Of(m_target->window);
    // Contexts that only convert points, at every move of the mouse, must not make the window paint.
    if (native && native->Picture() && native->Picture()->GetChanges() != m_target->changesBefore)
        native->Client()->update();
}

CPaintDC::CPaintDC(CWnd* window) : CDC(PictureOf(window)) {}
