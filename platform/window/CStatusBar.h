// The status bar of a frame. Pane 0, the message pane, takes the room that the others leave; while the user
// looks through menus it shows the hint of the command under the mouse.
#pragma once

#include <span>

#include "platform/window/CWnd.h"

class QLabel;

class CStatusBar : public CWnd {
    DECLARE_DYNAMIC(CStatusBar)

  public:
    ~CStatusBar() override;

    using CWnd::Create;
    // With the message pane only.
    BOOL Create(CFrameWnd* frame);
    // Adds panes, one for each string: it names the pane to the user and its length sets the pane's width.
    void SetIndicators(std::span<const char* const> names);
    // FALSE when there is no such pane.
    BOOL SetPaneText(int pane, LPCSTR text);
    CString GetPaneText(int pane) const;

  protected:
    NativeWindow* NewNative() override;
    void OnDestroy() override;

  private:
    QLabel* Pane(int pane) const;
    void LeaveFrame();

    CFrameWnd* m_frame = nullptr;
};
