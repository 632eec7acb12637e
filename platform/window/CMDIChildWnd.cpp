#include "platform/window/CMDIChildWnd.h"

#include "platform/window/CMDIFrameWnd.h"
#include "platform/window/NativeWindow.h"

IMPLEMENT_DYNCREATE(CMDIChildWnd, CFrameWnd)

NativeWindow* CMDIChildWnd::NewNative() { return NewChildFrameWidget(this); }

CMDIFrameWnd* CMDIChildWnd::GetMDIFrame() const {
    CFrameWnd* frame = GetParentFrame();
    return frame && frame->IsKindOf(RUNTIME_CLASS(CMDIFrameWnd)) ? static_cast<CMDIFrameWnd*>(frame)
                                                                 : nullptr;
}

void CMDIChildWnd::ActivateFrame(int how) {
    if (how != -1 || !IsWindowVisible()) ShowWindow(how == -1 ? SW_SHOW : how);
    if (CMDIFrameWnd* frame = GetMDIFrame()) frame->MDIActivate(this);
}
