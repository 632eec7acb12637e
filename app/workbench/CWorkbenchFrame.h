// The workbench's main window: menus, toolbar, status bar, and a child frame for each open file.
#pragma once

#include <vector>

#include "app/workbench/CSeriesDocument.h"

namespace app {

enum StatusPane { kMessagePane = 0, kPositionPane = 1, kZoomPane = 2 };

class CSeriesView;

class CWorkbenchFrame : public CMDIFrameWnd {
  public:
    // Makes the window with its bars, not yet shown. False: it could not be made.
    bool CreateWorkbench();
    // As large and where it was last.
    void ShowAsBefore();

    // Opens a file in a window of its own, or brings forward the window that has it. A file that cannot be
    // read is reported in one message; false then.
    bool OpenFile(const ReadOptions& options);
    // Lays windows out beside each other when several files were opened at once.
    void OpenFiles(const std::vector<std::string>& paths);

    void ShowStatus(int pane, const CString& text) { statusBar_.SetPaneText(pane, text); }
    CString StatusText(int pane) const { return statusBar_.GetPaneText(pane); }
    CSeriesView* ActiveSeriesView() const;

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    void OnDropFiles(const std::vector<CString>& paths) override;
    void OnDestroy() override;

  private:
    static const CommandRow<CWorkbenchFrame> kCommands[];

    void OnFileOpen();
    void OnReadAgain();
    void OnUpdateNeedsView(CCmdUI* state);
    void OnRecent(UINT id);
    void OnUpdateRecent(CCmdUI* state);
    void OnCloseAll();
    void OnAbout();
    void OnShortcuts();

    void AddDocument(SeriesFile file);
    void SavePlacement();
    bool ActivateOpen(const std::string& path);

    CToolBar toolBar_;
    CStatusBar statusBar_;
};

}  // namespace app
