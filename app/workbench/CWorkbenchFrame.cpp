#include "app/workbench/CWorkbenchFrame.h"

#include <filesystem>

#include "app/table/InputFile.h"
#include "app/workbench/CGraphFrame.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/ImportDialog.h"
#include "app/workbench/RecentFiles.h"
#include "app/workbench/ShortcutsDialog.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr const char* kSection = "Workbench";
constexpr const char* kFileFilter = "Tables (*.csv *.tsv *.txt *.dat)|*.csv;*.tsv;*.txt;*.dat|All files|*||";
// Their lengths are the panes' widths.
constexpr const char* kPanes[] = {"2024-03-01 00:00:00,  1234.567 mm", "Zoom 100 x 100 "};

// Failures tell the way out of a command line; here it is in the menu.
std::string MessageForWindow(const Failure& failure) {
    if (failure.advice.empty()) return failure.message;
    return failure.message +
           ".\nFile > Open lets you say how the file is to be read: its delimiter, decimal sign and columns.";
}

}  // namespace

const CommandRow<CWorkbenchFrame> CWorkbenchFrame::kCommands[] = {
    {ID_FILE_OPEN, ID_FILE_OPEN, &CWorkbenchFrame::OnFileOpen},
    {kReadAgain, kReadAgain, &CWorkbenchFrame::OnReadAgain, &CWorkbenchFrame::OnUpdateNeedsView},
    {kRecentFirst, kRecentLast, &CWorkbenchFrame::OnRecent, &CWorkbenchFrame::OnUpdateRecent},
    {kCloseAll, kCloseAll, &CWorkbenchFrame::OnCloseAll, &CWorkbenchFrame::OnUpdateNeedsView},
    {kAbout, kAbout, &CWorkbenchFrame::OnAbout},
    {kShortcuts, kShortcuts, &CWorkbenchFrame::OnShortcuts},
};

bool CWorkbenchFrame::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CMDIFrameWnd::OnCmdMsg(id, update);
}

bool CWorkbenchFrame::CreateWorkbench() {
    if (!LoadFrame(kMainFrame)) return false;
    statusBar_.Create(this);
    statusBar_.SetIndicators(kPanes);
    toolBar_.Create(this, "Toolbar");
    toolBar_.LoadToolBar(kMainFrame);
    DragAcceptFiles();
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

bool CWorkbenchFrame::OpenFile(const ReadOptions& options) {
    auto file = ReadSeriesFile(options);
    if (!file) {
        ForgetRecentFile(options.path);
        AfxMessageBox(MessageForWindow(file.Error()).c_str(), MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    AddDocument(std::move(*file));
    AddRecentFile(options.path);
    return true;
}

void CWorkbenchFrame::AddDocument(SeriesFile file) {
    const bool first = GetChildren().empty();
    const std::string summary = file.title + ": " + file.summary;
    auto* const document = new CSeriesDocument(std::move(file));
    auto* const frame = new CGraphFrame(*document);
    CCreateContext context{nullptr, document};
    if (!frame->LoadFrame(0, WS_OVERLAPPEDWINDOW, this, &context)) return;
    frame->InitialUpdateFrame(document, TRUE);
    frame->View()->SetPosition();
    // Alone it has the whole area; where it stood among others counts again beside them.
    if (first) frame->ShowWindow(SW_SHOWMAXIMIZED);
    SetMessageText(summary.c_str());
}

void CWorkbenchFrame::OpenFiles(const std::vector<std::string>& paths) {
    std::size_t opened = 0;
    for (const auto& path : paths) opened += ActivateOpen(path) || OpenFile({path});
    if (opened > 1) MDITile(MdiTile::Horizontal);
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
    if (const auto options = AskHowToRead({path}, this)) OpenFile(*options);
}

void CWorkbenchFrame::OnReadAgain() {
    auto* const document = static_cast<CSeriesDocument*>(GetActiveDocument());
    const auto options = document ? AskHowToRead(document->File().options, this) : std::nullopt;
    if (!options) return;
    CMDIChildWnd* const before = MDIGetActive();
    if (OpenFile(*options)) RunCommand(*before, ID_FILE_CLOSE);
}

void CWorkbenchFrame::OnUpdateNeedsView(CCmdUI* state) { state->Enable(!GetChildren().empty()); }

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
    for (CMDIChildWnd* const child : GetChildren()) RunCommand(*child, ID_FILE_CLOSE);
}

void CWorkbenchFrame::OnAbout() {
    AfxMessageBox("Tavin " TAVIN_VERSION "\n\nShows and cleans two-dimensional data series.");
}

void CWorkbenchFrame::OnShortcuts() { ShortcutsDialog(this).DoModal(); }

}  // namespace app
