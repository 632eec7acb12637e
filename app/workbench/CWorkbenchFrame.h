// The workbench's main window: menus, toolbar, status bar, and a child frame for each open file.
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "app/workbench/ReadingJob.h"

namespace app {

enum StatusPane { kMessagePane = 0, kPositionPane = 1, kZoomPane = 2 };

class CGraphFrame;
class CLiveFrame;
struct LiveWishes;
class CSeriesView;

class CWorkbenchFrame : public CMDIFrameWnd {
  public:
    // Makes the window with its bars, not yet shown. False: it could not be made.
    bool CreateWorkbench();
    // As large and where it was last.
    void ShowAsBefore();

    // Opens files, each in a window of its own or by bringing forward the window that has it. Reading goes on
    // beside the user interface; files that cannot be read are reported in one message. Several windows are
    // laid out together. Without files there is the start page.
    void OpenFiles(const std::vector<std::string>& paths);
    // A window of what arrives from there.
    CLiveFrame* OpenLive(const LiveWishes& wishes);
    // The windows of files, in the order of their opening.
    std::vector<CGraphFrame*> Documents() const;

    // How long a file may take to be read before its window shows the reading.
    void SetPatience(std::chrono::milliseconds patience) { patience_ = patience; }

    void ShowStatus(int pane, const CString& text) { statusBar_.SetPaneText(pane, text); }
    CString StatusText(int pane) const { return statusBar_.GetPaneText(pane); }
    CSeriesView* ActiveSeriesView() const;

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    void OnDropFiles(const std::vector<CString>& paths) override;
    void OnDestroy() override;
    void OnTimer(UINT id) override;

  private:
    static const CommandRow<CWorkbenchFrame> kCommands[];
    static const CommandRow<CWorkbenchFrame> kLiveCommands[];

    void OnFileOpen();
    void OnLiveOpen();
    void OnNoLiveWindow() {}
    void OnUpdateNoLiveWindow(CCmdUI* state) { state->Enable(FALSE); }
    void OnReadAgain();
    void OnUpdateNeedsView(CCmdUI* state);
    void OnRecent(UINT id);
    void OnUpdateRecent(CCmdUI* state);
    void OnCloseAll();
    void OnPageSetup() { AskPrintPage(*this); }
    void OnAbout();
    void OnShortcuts();

    void OnReload();
    void OnUpdateNeedsSeries(CCmdUI* state);
    void OnOpenSample();
    void OnUpdateOpenSample(CCmdUI* state);

    void OpenFile(const ReadOptions& options);
    CGraphFrame* AddWindow(const ReadOptions& options, std::unique_ptr<ReadingJob> job);
    // The window is gone afterwards when its first reading has failed.
    void EndReading(CGraphFrame& frame);
    // The active window, when it shows series.
    CGraphFrame* ActiveDocument() const;
    void ReadAnew(CGraphFrame& frame, const ReadOptions& options);
    void NoteFailure(const ReadOptions& options, const Failure& failure);
    void ReportFailures();
    void ShowStartPage();
    void CloseStartPage();
    void SavePlacement();
    bool ActivateOpen(const std::string& path);

    CToolBar toolBar_;
    CStatusBar statusBar_;
    std::chrono::milliseconds patience_{150};
    std::vector<std::string> failures_;  // not yet reported
};

}  // namespace app
