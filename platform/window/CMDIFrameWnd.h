// The main frame of a program with several documents: child frames stand in its client area.
#pragma once

#include "platform/window/CFrameWnd.h"

class CMDIChildWnd;

enum class MdiTile { Horizontal, Vertical };  // below each other, side by side

class CMDIFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIFrameWnd)

  public:
    // The child frame that commands go to, or null.
    CMDIChildWnd* MDIGetActive() const;
    void MDIActivate(CMDIChildWnd* child);
    // In the order of their creation.
    std::vector<CMDIChildWnd*> GetChildren() const;
    void MDINext(bool backwards = false);
    // Minimised frames stay as they are. A cascade has windows of two thirds of the area, the active one on
    // top.
    void MDICascade();
    // From four frames on a grid, which fills up line by line.
    void MDITile(MdiTile direction);

    CFrameWnd* GetActiveFrame() override;
    CDocument* GetActiveDocument() override;
    // To the active child frame first.
    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    // Every document answers before the first frame closes.
    bool MayClose() override;
    NativeWindow* NewNative() override;

  private:
    std::vector<CMDIChildWnd*> Arrangeable() const;
    void OnWindowCommand(UINT id);
    void OnUpdateWindowCommand(CCmdUI* state);

    static const CommandRow<CMDIFrameWnd> kCommands[2];
};
