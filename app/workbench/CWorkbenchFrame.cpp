#include "app/workbench/CWorkbenchFrame.h"

#include <algorithm>
#include <utility>

#include "app/table/CellNumber.h"
#include "app/table/InputFile.h"
#include "app/workbench/CGraphFrame.h"
#include "app/workbench/CLiveFrame.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/CStartView.h"
#include "app/workbench/ImportDialog.h"
#include "app/workbench/LiveDialogs.h"
#include "app/workbench/PrintedPage.h"
#include "app/workbench/RecentFiles.h"
#include "app/workbench/SampleFile.h"
#include "app/workbench/ShortcutsDialog.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr const char* kSection = "Workbench";
constexpr const char* kFileFilter = "Tables (*.csv *.tsv *.txt *.dat)|*.csv;*.tsv;*.txt;*.dat|All files|*||";
// Their lengths are the panes' widths.
constexpr const char* kPanes[] = {"2024-03-01 00:00:00,  1234.567 mm", "Zoom 100 x 100 "};

constexpr UINT kReadingTimer = 1;
constexpr UINT kDiskTimer = 2;
constexpr UINT kReadingPeriod = 40;  // ms
constexpr UINT kDiskPeriod = 1000;
constexpr std::size_t kMostFailuresListed = 8;

// Failures tell the way out of a command line; here it is in the menu.
std::string MessageForWindow(const Failure& failure) {
    if (failure.advice.empty()) return failure.message;
    return failure.message +
           ".\nFile > Open lets you say how the file is to be read: its delimiter, decimal sign and columns.";
}

}  // namespace

const CommandRow<CWorkbenchFrame> CWorkbenchFrame::kCommands[] = {
    {ID_FILE_OPEN, ID_FILE_OPEN, &CWorkbenchFrame::OnFileOpen},
    {kLiveOpen, kLiveOpen, &CWorkbenchFrame::OnLiveOpen},
    {kReadAgain, kReadAgain, &CWorkbenchFrame::OnReadAgain, &CWorkbenchFrame::OnUpdateNeedsSeries},
    {kReload, kReload, &CWorkbenchFrame::OnReload, &CWorkbenchFrame::OnUpdateNeedsSeries},
    {kOpenSample, kOpenSample, &CWorkbenchFrame::OnOpenSample, &CWorkbenchFrame::OnUpdateOpenSample},
    {kRecentFirst, kRecentLast, &CWorkbenchFrame::OnRecent, &CWorkbenchFrame::OnUpdateRecent},
    {kCloseAll, kCloseAll, &CWorkbenchFrame::OnCloseAll, &CWorkbenchFrame::OnUpdateNeedsView},
    {kPageSetup, kPageSetup, &CWorkbenchFrame::OnPageSetup},
    {kAbout, kAbout, &CWorkbenchFrame::OnAbout},
    {kShortcuts, kShortcuts, &CWorkbenchFrame::OnShortcuts},
};

// Of live windows, while another one or none is active.
const CommandRow<CWorkbenchFrame> CWorkbenchFrame::kLiveCommands[] = {
    {kLiveHold, kLiveCorrected, &CWorkbenchFrame::OnNoLiveWindow, &CWorkbenchFrame::OnUpdateNoLiveWindow},
};

bool CWorkbenchFrame::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CMDIFrameWnd::OnCmdMsg(id, update) ||
           RouteCommand(*this, kLiveCommands, id, update);
}

bool CWorkbenchFrame::CreateWorkbench() {
    if (!LoadFrame(kMainFrame)) return false;
    statusBar_.Create(this);
    statusBar_.SetIndicators(kPanes);
    toolBar_.Create(this, "Toolbar");
    toolBar_.LoadToolBar(kMainFrame);
    DragAcceptFiles();
    SetTimer(kDiskTimer, kDiskPeriod);
    LoadPrintedPage();
    SetMessageText("Open a file of measurements: File > Open, or drop it here.");
    return true;
}

void CWorkbenchFrame::ShowAsBefore() {
    WINDOWPLACEMENT placement;
    GetWindowPlacement(&placement);
    CWinApp& profile = *AfxGetApp();
    const auto number = [&](const char* name, int missing) {
        return static_cast<int>(profile.GetProfileInt(kSection, name, missing));
    };
    RECT& normal = placement.rcNormalPosition;
    const CRect screen = ScreenWorkArea();
    const CSize edge(screen.Width() / 10, screen.Height() / 10);
    const CRect area(screen.left + edge.cx, screen.top + edge.cy, screen.right - edge.cx,
                     screen.bottom - edge.cy);
    normal = CRect(number("Left", area.left), number("Top", area.top), number("Right", area.right),
                   number("Bottom", area.bottom));
    placement.showCmd = number("Maximized", 0) ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    SetWindowPlacement(&placement);
    ShowWindow(static_cast<int>(placement.showCmd));
}

void CWorkbenchFrame::SavePlacement() {
    WINDOWPLACEMENT placement;
    if (!GetWindowPlacement(&placement)) return;
    const RegistryTransaction together;
    CWinApp& profile = *AfxGetApp();
    const RECT& normal = placement.rcNormalPosition;
    profile.WriteProfileInt(kSection, "Left", normal.left);
    profile.WriteProfileInt(kSection, "Top", normal.top);
    profile.WriteProfileInt(kSection, "Right", normal.right);
    profile.WriteProfileInt(kSection, "Bottom", normal.bottom);
    profile.WriteProfileInt(kSection, "Maximized", IsZoomed());
}

void CWorkbenchFrame::OnDestroy() {
    SavePlacement();
    KeepPrintedPage();
    CMDIFrameWnd::OnDestroy();
}

CSeriesView* CWorkbenchFrame::ActiveSeriesView() const {
    auto* const child = dynamic_cast<CGraphFrame*>(MDIGetActive());
    return child ? child->View() : nullptr;
}

bool CWorkbenchFrame::ActivateOpen(const std::string& path) {
    for (CMDIChildWnd* const child : GetChildren()) {
        CDocument* const document = child->GetActiveDocument();
        if (!document || !SameFile(document->GetPathName().GetString(), path)) continue;
        MDIActivate(child);
        return true;
    }
    return false;
}

std::vector<CGraphFrame*> CWorkbenchFrame::Documents() const {
    std::vector<CGraphFrame*> documents;
    for (CMDIChildWnd* const child : GetChildren())
        if (auto* const document = dynamic_cast<CGraphFrame*>(child)) documents.push_back(document);
    return documents;
}

void CWorkbenchFrame::OpenFile(const ReadOptions& options) {
    auto job = std::make_unique<ReadingJob>(options);
    // Most files are read before anybody could see a window of their reading.
    const bool ended = job->HasEnded(patience_);
    if (ended && job->HasFailed()) return NoteFailure(options, job->Take().Error());
    CGraphFrame* const frame = AddWindow(options, std::move(job));
    if (!frame) return;
    if (ended) return EndReading(*frame);
    SetTimer(kReadingTimer, kReadingPeriod);
}

CGraphFrame* CWorkbenchFrame::AddWindow(const ReadOptions& options, std::unique_ptr<ReadingJob> job) {
    const bool first = Documents().empty();
    CloseStartPage();
    auto* const document = new CSeriesDocument(options);
    auto* const frame = new CGraphFrame(*document, std::move(job));
    CCreateContext context{nullptr, document};
    if (!frame->LoadFrame(0, WS_OVERLAPPEDWINDOW, this, &context)) return nullptr;
    frame->SetWindowText(document->GetTitle());
    if (first) frame->ShowWindow(SW_SHOWMAXIMIZED);
    frame->InitialUpdateFrame(document, TRUE);
    return frame;
}

void CWorkbenchFrame::EndReading(CGraphFrame& frame) {
    const ReadOptions options = frame.Reading()->Options();
    const bool opening = !frame.View();
    if (const auto failure = frame.FinishReading()) {
        NoteFailure(options, *failure);
        if (!frame.View()) frame.DestroyWindow();
        return;
    }
    if (opening) frame.View()->SetPosition();
    // Alone it has the whole area; where it stood among others counts again beside them.
    if (opening && Documents().size() == 1) frame.ShowWindow(SW_SHOWMAXIMIZED);
    AddRecentFile(options.path);
    const SeriesFile& file = frame.View()->File();
    SetMessageText((file.title + ": " + file.summary).c_str());
}

void CWorkbenchFrame::NoteFailure(const ReadOptions& options, const Failure& failure) {
    if (failure.exitCode == kStopped) return SetMessageText(("Stopped reading " + options.path).c_str());
    ForgetRecentFile(options.path);
    failures_.push_back(MessageForWindow(failure));
}

void CWorkbenchFrame::ReportFailures() {
    // Taken first: the clock ticks on while the message is shown.
    const std::vector<std::string> failures = std::exchange(failures_, {});
    if (failures.empty()) return;
    std::string text = failures.front();
    if (failures.size() > 1) {
        text = Counted(static_cast<std::int64_t>(failures.size()), "file") + " could not be read:";
        for (std::size_t i = 0; i < std::min(failures.size(), kMostFailuresListed); ++i)
            text += "\n\n" + failures[i];
        if (failures.size() > kMostFailuresListed)
            text += "\n\nand " + std::to_string(failures.size() - kMostFailuresListed) + " more";
    }
    AfxMessageBox(text.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void CWorkbenchFrame::OnTimer(UINT id) {
    bool reading = false;
    for (CGraphFrame* const frame : Documents()) {
        const std::vector<CGraphFrame*> left = Documents();
        if (std::find(left.begin(), left.end(), frame) == left.end()) continue;
        if (id == kReadingTimer && frame->Reading() && frame->Reading()->HasEnded())
            EndReading(*frame);
        else
            frame->Watch(id == kReadingTimer ? CGraphFrame::Look::AtReading : CGraphFrame::Look::AtDisk);
    }
    for (CGraphFrame* const frame : Documents()) reading |= frame->Reading() != nullptr;
    if (reading) {
        SetTimer(kReadingTimer, kReadingPeriod);
        return;
    }
    KillTimer(kReadingTimer);
    if (Documents().empty()) ShowStartPage();
    ReportFailures();
}

void CWorkbenchFrame::ShowStartPage() {
    if (!GetChildren().empty()) return;
    auto* const frame = new CStartFrame;
    if (!frame->LoadFrame(0, WS_OVERLAPPEDWINDOW, this)) return;
    frame->ShowWindow(SW_SHOWMAXIMIZED);
    frame->InitialUpdateFrame(nullptr, TRUE);
}

void CWorkbenchFrame::CloseStartPage() {
    for (CMDIChildWnd* const child : GetChildren())
        if (dynamic_cast<CStartFrame*>(child)) child->DestroyWindow();
}

void CWorkbenchFrame::OpenFiles(const std::vector<std::string>& paths) {
    const std::size_t before = Documents().size();
    for (const auto& path : paths)
        if (!ActivateOpen(path)) OpenFile({path});
    if (Documents().size() > std::max<std::size_t>(before, 1)) MDITile(MdiTile::Horizontal);
    if (Documents().empty()) ShowStartPage();
    ReportFailures();
}

void CWorkbenchFrame::OnDropFiles(const std::vector<CString>& paths) {
    std::vector<std::string> names;
    for (const CString& path : paths) names.emplace_back(path.GetString());
    OpenFiles(names);
}

void CWorkbenchFrame::OnFileOpen() {
    CFileDialog dialog(CFileDialog::Kind::OpenSeveral, nullptr, nullptr, kFileFilter, this);
    if (dialog.DoModal() != IDOK) return;
    if (dialog.GetPathNames().size() > 1) return OnDropFiles(dialog.GetPathNames());
    const std::string path = dialog.GetPathName().GetString();
    if (ActivateOpen(path)) return;
    const auto options = AskHowToRead({path}, this);
    if (!options) return;
    OpenFile(*options);
    ReportFailures();
}

void CWorkbenchFrame::OnLiveOpen() {
    if (const auto wishes = AskForLiveSource(this)) OpenLive(*wishes);
}

CLiveFrame* CWorkbenchFrame::OpenLive(const LiveWishes& wishes) {
    const bool first = Documents().empty();
    CloseStartPage();
    std::string title;
    for (const FeedAddress& address : wishes.addresses) title += (title.empty() ? "" : ", ") + address.shown;
    auto* const document = new CSeriesDocument(title);
    auto* const frame = new CLiveFrame(*document, wishes);
    CCreateContext context{nullptr, document};
    if (!frame->LoadFrame(0, WS_OVERLAPPEDWINDOW, this, &context)) return nullptr;
    frame->SetWindowText(document->GetTitle());
    if (first) frame->ShowWindow(SW_SHOWMAXIMIZED);
    frame->InitialUpdateFrame(document, TRUE);
    return frame;
}

CGraphFrame* CWorkbenchFrame::ActiveDocument() const {
    auto* const frame = dynamic_cast<CGraphFrame*>(MDIGetActive());
    return frame && frame->View() ? frame : nullptr;
}

void CWorkbenchFrame::OnReadAgain() {
    CGraphFrame* const frame = ActiveDocument();
    const auto options = AskHowToRead(frame->View()->File().options, this);
    if (options && frame == ActiveDocument()) ReadAnew(*frame, *options);
}

void CWorkbenchFrame::OnReload() {
    CGraphFrame* const frame = ActiveDocument();
    ReadAnew(*frame, ReadOptions(frame->View()->File().options));
}

void CWorkbenchFrame::ReadAnew(CGraphFrame& frame, const ReadOptions& options) {
    frame.ReadAnew(options);
    if (!frame.Reading()->HasEnded(patience_)) {
        SetMessageText(("Reading " + options.path + " again").c_str());
        SetTimer(kReadingTimer, kReadingPeriod);
        return;
    }
    EndReading(frame);
    ReportFailures();
}

void CWorkbenchFrame::OnUpdateNeedsSeries(CCmdUI* state) {
    const CGraphFrame* const frame = ActiveDocument();
    state->Enable(frame && frame->IsOfFile());
}

void CWorkbenchFrame::OnUpdateNeedsView(CCmdUI* state) { state->Enable(!Documents().empty()); }

void CWorkbenchFrame::OnOpenSample() { OpenFiles({SampleFile()}); }

void CWorkbenchFrame::OnUpdateOpenSample(CCmdUI* state) { state->Enable(!SampleFile().empty()); }

void CWorkbenchFrame::OnRecent(UINT id) {
    const auto files = RecentFiles();
    const std::size_t i = id - kRecentFirst;
    if (i < files.size()) OpenFiles({files[i]});
}

void CWorkbenchFrame::OnUpdateRecent(CCmdUI* state) {
    const auto files = RecentFiles();
    const std::size_t i = state->m_nID - kRecentFirst;
    if (i >= files.size()) {
        state->SetText(i == 0 ? "No recent files" : "");
        state->Enable(FALSE);
        return;
    }
    CString text;
    text.Format("%s%zu  %s", i < 9 ? "&" : "", i + 1, files[i].c_str());
    state->SetText(text);
}

void CWorkbenchFrame::OnCloseAll() {
    for (CGraphFrame* const frame : Documents()) RunCommand(*frame, ID_FILE_CLOSE);
}

void CWorkbenchFrame::OnAbout() {
    AfxMessageBox("Tavin " TAVIN_VERSION "\n\nShows and cleans two-dimensional data series.");
}

void CWorkbenchFrame::OnShortcuts() { ShortcutsDialog(this).DoModal(); }

}  // namespace app
