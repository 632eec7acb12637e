#include "app/workbench/CLiveFrame.h"

#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/LiveDialogs.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr UINT kRowsTimer = 10;
constexpr UINT kRowsPeriod = 16;  // ms: no more pictures than a screen shows
constexpr int kStatusEvery = 15;  // of these
constexpr int kTextMargin = 24;   // pixels

// What stands there before any row has come.
class CWaitingView : public CView {
  public:
    explicit CWaitingView(std::shared_ptr<LiveSession> session) : session_(std::move(session)) {}

  protected:
    void OnDraw(CDC* dc) override {
        CRect area;
        GetClientRect(&area);
        dc->FillSolidRect(area, GetSysColor(COLOR_WINDOW));
        dc->SetBkMode(TRANSPARENT);
        dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
        dc->TextOut(kTextMargin, kTextMargin,
                    CString("Waiting for the first rows of " + session_->File().title));
    }

  private:
    std::shared_ptr<LiveSession> session_;
};

// A live view that keeps its session: it may outlast the frame for a moment.
class CKeepingLiveView : public CLiveView {
  public:
    CKeepingLiveView(std::shared_ptr<LiveSession> session, const CString& key, double window)
        : CLiveView(*session, key, window), session_(std::move(session)) {}

  private:
    std::shared_ptr<LiveSession> session_;
};

}  // namespace

const CommandRow<CLiveFrame> CLiveFrame::kCommands[] = {
    {kLiveRecord, kLiveRecord, &CLiveFrame::OnRecord, &CLiveFrame::OnUpdateRecord},
    {kLiveDerived, kLiveDerived, &CLiveFrame::OnDerived, &CLiveFrame::OnUpdateNeedsChannels},
    {kLiveCorrected, kLiveCorrected, &CLiveFrame::OnCorrected, &CLiveFrame::OnUpdateNeedsChannels},
};

CLiveFrame::CLiveFrame(CSeriesDocument& document, const LiveWishes& wishes)
    : CGraphFrame(document), wishes_(wishes), session_(std::make_shared<LiveSession>(wishes)) {}

CLiveView* CLiveFrame::LiveView() const { return static_cast<CLiveView*>(View()); }

bool CLiveFrame::OnCmdMsg(UINT id, CCmdUI* update) {
    return CGraphFrame::OnCmdMsg(id, update) || RouteCommand(*this, kCommands, id, update);
}

BOOL CLiveFrame::OnCreateClient(CREATESTRUCT*, CCreateContext*) {
    CreateMessageBar();
    if (!CreateClient(new CWaitingView(session_))) return FALSE;
    SetTimer(kRowsTimer, kRowsPeriod);
    return TRUE;
}

void CLiveFrame::OnTimer(UINT id) {
    if (id == kRowsTimer)
        TakeRows();
    else
        CGraphFrame::OnTimer(id);
}

void CLiveFrame::TakeRows() {
    session_->TakeRows();
    if (!View() && !session_->File().series.empty()) {
        if (!ReplaceClient(new CKeepingLiveView(session_, Document().ViewKey(), wishes_.window))) return;
        OnUpdateFrameTitle();
    }
    if (LiveView()) LiveView()->Follow();
    if (--untilStatus_ > 0) return;
    untilStatus_ = kStatusEvery;
    TellTrouble();
    auto* const main = dynamic_cast<CWorkbenchFrame*>(AfxGetMainWnd());
    if (!main || main->MDIGetActive() != this) return;
    const bool held = LiveView() && LiveView()->IsHeld();
    main->ShowStatus(kMessagePane, CString((held ? "Held;  " : "") + session_->StatusText()));
}

void CLiveFrame::TellTrouble() {
    const std::string trouble = session_->TroubleText();
    if (trouble == trouble_) return;
    trouble_ = trouble;
    if (trouble.empty())
        HideMessage();
    else
        Tell(trouble);
}

void CLiveFrame::OnRecord() {
    if (session_->IsRecording()) {
        if (const auto failure = session_->EndRecording())
            AfxMessageBox(failure->message.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    CFileDialog dialog(CFileDialog::Kind::Save, "csv", "recording.csv", "Table (*.csv)|*.csv||", this);
    if (dialog.DoModal() != IDOK) return;
    // The dialog has asked about a file that is there.
    const auto failure = session_->Record(dialog.GetPathName().GetString(), Existing::Replace);
    if (failure) AfxMessageBox(failure->message.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void CLiveFrame::OnUpdateRecord(CCmdUI* state) { state->SetCheck(session_->IsRecording()); }

void CLiveFrame::OnUpdateNeedsChannels(CCmdUI* state) { state->Enable(View() != nullptr); }

void CLiveFrame::OnDerived() {
    if (const auto derived = AskForDerived(*session_, this)) {
        session_->AddDerived(derived->operation, derived->a, derived->b);
        TakeRows();
    }
}

void CLiveFrame::OnCorrected() {
    if (const auto corrected = AskForCorrection(*session_, this)) {
        if (!session_->AddCorrected(corrected->channel, corrected->correction))
            AfxMessageBox(
                "Channels with other decimals cannot be added or subtracted here.\n"
                "Choose channels of the same source.",
                MB_OK | MB_ICONEXCLAMATION);
        TakeRows();
    }
}

}  // namespace app
