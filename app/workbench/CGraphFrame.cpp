#include "app/workbench/CGraphFrame.h"

#include "app/table/CellNumber.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/ValuesText.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

const CommandRow<CGraphFrame> CGraphFrame::kCommands[] = {
    {kExport, kExport, &CGraphFrame::OnExport},
    {kCopyPicture, kCopyPicture, &CGraphFrame::OnCopyPicture},
    {kCopyValues, kCopyValues, &CGraphFrame::OnCopyValues},
};

BOOL CGraphFrame::OnCreateClient(CREATESTRUCT*, CCreateContext* context) {
    view_ = new CSeriesView(document_.File(), document_.ViewKey());
    return view_->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), this, AFX_IDW_PANE_FIRST,
                         context);
}

bool CGraphFrame::OnCmdMsg(UINT id, CCmdUI* update) {
    return CMDIChildWnd::OnCmdMsg(id, update) || RouteCommand(*this, kCommands, id, update);
}

void CGraphFrame::OnExport() {
    const std::string& title = document_.File().title;
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
    const bool written = WritePicture(*view_, path, view_->PictureTitle(), view_->ShownSize());
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
    const ValuesTable table = ValuesText(document_.File(), view_->ShownSeries(), {range.x, range.y});
    if (CopyToClipboard(CString(table.text)))
        SetMessageText(
            (Counted(static_cast<std::int64_t>(table.rows), "row") + " of values on the clipboard.").c_str());
}

}  // namespace app
