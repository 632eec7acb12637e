#include "app/workbench/CGraphFrame.h"

#include <cmath>
#include <filesystem>

#include "app/table/CellNumber.h"
#include "app/workbench/CLoadingView.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/ExportDialog.h"
#include "app/workbench/ValuesText.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr UINT kMessageCommands[] = {kReload, kDismiss};

// What a view shows, in terms that hold for another reading of its file.
struct ShownPart {
    std::vector<std::string> series;
    double from;  // real x, of times in seconds since 1970
    double to;
};

double RealX(const XReading& x, double user) {
    return x.isTime ? static_cast<double>(x.Time(user)) / kSecond : x.Real(user);
}

double UserX(const XReading& x, double real) {
    return x.isTime ? x.UserOf(std::llround(real * kSecond)) : x.User(real);
}

ShownPart PartShownBy(const CSeriesView& view, const SeriesFile& file) {
    ShownPart part;
    for (const std::size_t i : view.ShownSeries())
        part.series.push_back(file.series[i].source->GetName().GetString());
    part.from = RealX(file.x, view.VisibleX().x);
    part.to = RealX(file.x, view.VisibleX().y);
    return part;
}

void ShowPart(CSeriesView& view, const SeriesFile& file, const ShownPart& part) {
    std::vector<std::size_t> series;
    for (const std::string& name : part.series)
        for (std::size_t i = 0; i < file.series.size(); ++i)
            if (name == file.series[i].source->GetName().GetString()) series.push_back(i);
    view.ShowOnly(series);
    const double from = UserX(file.x, part.from);
    const double to = UserX(file.x, part.to);
    if (from < to) view.ShowRange(from, to);
}

}  // namespace

const CommandRow<CGraphFrame> CGraphFrame::kCommands[] = {
    {kExport, kExport, &CGraphFrame::OnExport, &CGraphFrame::OnUpdateNeedsSeries},
    {kCopyPicture, kCopyPicture, &CGraphFrame::OnCopyPicture, &CGraphFrame::OnUpdateNeedsSeries},
    {kCopyValues, kCopyValues, &CGraphFrame::OnCopyValues, &CGraphFrame::OnUpdateNeedsSeries},
    {kDismiss, kDismiss, &CGraphFrame::OnDismiss},
};

CGraphFrame::CGraphFrame(CSeriesDocument& document, std::unique_ptr<ReadingJob> job)
    : document_(document), job_(std::move(job)) {}

BOOL CGraphFrame::OnCreateClient(CREATESTRUCT*, CCreateContext*) {
    CreateMessageBar();
    return CreateClient(new CLoadingView(*job_));
}

void CGraphFrame::CreateMessageBar() { messageBar_.Create(this, kMessageCommands); }

// A view that cannot be created has deleted itself.
BOOL CGraphFrame::CreateClient(CView* view) {
    CCreateContext context;
    context.m_pCurrentDoc = &document_;
    client_ = nullptr;
    if (!view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), this, AFX_IDW_PANE_FIRST, &context))
        return FALSE;
    client_ = view;
    return TRUE;
}

void CGraphFrame::ReadAnew(ReadOptions options) {
    messageBar_.Hide();
    job_ = std::make_unique<ReadingJob>(std::move(options));
    // Looked at before it is read: a change in between is noticed.
    document_.HasChangedOnDisk();
}

std::optional<Failure> CGraphFrame::FinishReading() {
    Result<SeriesFile> file = job_->Take();
    if (!file) {
        // The view of a first reading still draws from the job.
        if (view_) job_.reset();
        return file.Error();
    }
    ShowFile(std::move(*file));
    job_.reset();
    return {};
}

void CGraphFrame::ShowFile(SeriesFile file) {
    std::optional<ShownPart> before;
    if (view_) before = PartShownBy(*view_, document_.File());
    // The view of the file before goes first.
    EndClient();
    document_.SetFile(std::move(file));
    if (!ReplaceClient(new CSeriesView(document_.File(), document_.ViewKey()))) return;
    if (before) ShowPart(*view_, document_.File(), *before);
    OnUpdateFrameTitle();
}

// Between its two views the document has none.
void CGraphFrame::EndClient() {
    document_.m_bAutoDelete = FALSE;
    view_ = nullptr;
    if (client_) client_->DestroyWindow();
    client_ = nullptr;
}

bool CGraphFrame::ReplaceClient(CSeriesView* view) {
    EndClient();
    const BOOL created = CreateClient(view);
    document_.m_bAutoDelete = TRUE;
    if (!created) return false;
    view_ = view;
    SetActiveView(view);
    view->OnInitialUpdate();
    return true;
}

void CGraphFrame::Watch(Look look) {
    if (look == Look::AtReading && job_ && !view_) client_->Invalidate(FALSE);
    if (look == Look::AtDisk && !job_ && document_.HasChangedOnDisk())
        messageBar_.Tell("The file has changed on disk since it was read.");
}

bool CGraphFrame::OnCmdMsg(UINT id, CCmdUI* update) {
    return CMDIChildWnd::OnCmdMsg(id, update) || RouteCommand(*this, kCommands, id, update);
}

void CGraphFrame::OnUpdateNeedsSeries(CCmdUI* state) { state->Enable(view_ != nullptr); }

void CGraphFrame::OnExport() {
    const std::string& title = view_->File().title;
    const std::string name = title.substr(0, title.rfind('.')) + ".png";
    CFileDialog dialog(CFileDialog::Kind::Save, "png", name.c_str(),
                       "Picture (PNG)|*.png|Drawing (SVG)|*.svg|Page (PDF)|*.pdf||", this);
    if (dialog.DoModal() != IDOK) return;
    const std::string path = dialog.GetPathName().GetString();
    if (!PictureFormatOf(path)) {
        AfxMessageBox((UnknownPictureFormat(path) + ". Nothing was written.").c_str(),
                      MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    ExportDialog size(std::filesystem::path(path).filename().string(), view_->ShownSize(), this);
    if (size.DoModal() != IDOK) return;
    const bool written = WritePicture(*view_, path, view_->PictureTitle(), size.TakeChosen());
    view_->Redraw();
    if (written)
        SetMessageText(("Exported to " + path).c_str());
    else
        AfxMessageBox(("Cannot write " + path + ".\nChoose a folder that you may write to.").c_str(),
                      MB_OK | MB_ICONEXCLAMATION);
}

void CGraphFrame::OnCopyPicture() {
    const auto picture = TakePicture(*view_, view_->ShownSize());
    view_->Redraw();
    const bool copied = picture && CopyToClipboard(*picture);
    SetMessageText(copied ? "The picture is on the clipboard." : "There is not enough memory for a copy.");
}

void CGraphFrame::OnCopyValues() {
    const CPointEx range = view_->VisibleX();
    const ValuesTable table = ValuesText(view_->File(), view_->ShownSeries(), {range.x, range.y});
    if (CopyToClipboard(CString(table.text)))
        SetMessageText(
            (Counted(static_cast<std::int64_t>(table.rows), "row") + " of values on the clipboard.").c_str());
}

}  // namespace app
