// A toolbar of a frame: one button for each command of its resource, with the command's icon, or its text
// where it has none, and its hint as tool tip. The frame must outlive it, or end it.
#pragma once

#include "platform/window/CWnd.h"

class CToolBar : public CWnd {
    DECLARE_DYNAMIC(CToolBar)

  public:
    using CWnd::Create;
    // An empty bar at the top of the frame. The name is what the user reads where bars are switched on and
    // off.
    BOOL Create(CFrameWnd* frame, LPCSTR name);
    // Fills the bar; FALSE when there is no such resource.
    BOOL LoadToolBar(UINT resourceId);

  protected:
    NativeWindow* NewNative() override;
};
