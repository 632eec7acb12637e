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
    QPointer<QWidget> client;
};

CClientDC::CClientDC(CWnd* window) : CDC(PictureOf(window)), m_target(std::make_unique<Target>()) {
    if (window && window->GetSafeHwnd()) m_target->client = NativeWindow::Of(window->GetSafeHwnd())->Client();
}

CClientDC::~CClientDC() {
    if (m_target->client) m_target->client->update();
}

CPaintDC::CPaintDC(CWnd* window) : CDC(PictureOf(window)) {}
