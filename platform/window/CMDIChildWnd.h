// A child frame in the client area of a CMDIFrameWnd. Its normal rectangle is in that area's coordinates.
#pragma once

#include "platform/window/CFrameWnd.h"

class CMDIFrameWnd;

class CMDIChildWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIChildWnd)

  public:
    // Null for a child frame that stands by itself.
    CMDIFrameWnd* GetMDIFrame() const;
    void MDIActivate() { ActivateFrame(); }
    void ActivateFrame(int how = -1) override;

  protected:
    NativeWindow* NewNative() override;
};
