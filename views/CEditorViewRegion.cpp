// The editor view's region: its outline closed, moved, removed, and all that is drawn over the picture.
#include "platform/core/MessageBox.h"
#include "platform/gdi/Selected.h"
#include "platform/window/CClientDC.h"
#include "views/CEditorView.h"
#include "views/PlotClip.h"
#include "views/SourceLock.h"

namespace {

constexpr unsigned long kCurrentPoint = RGB(255, 0, 0);
constexpr int kCurrentPointSize = 3;  // mm

}  // namespace

void CEditorView::UpdateColors() {
    CXYGraphView::UpdateColors();
    hatchBrush.DeleteObject();
    hatchBrush.CreateHatchBrush(HS_BDIAGONAL, colors.region);
    SetPenColor(regionPen, PS_SOLID, colors.region);
}

bool CEditorView::BuildRegion() {
    region.SetPoints(outline.Vertices(), outline.VertexCount());
    return region.GetSize() == outline.VertexCount();
}

void CEditorView::MoveRegion(CPoint distance) {
    outline.Move(distance);
    BuildRegion();
}

bool CEditorView::EndCreateRegion(unsigned int flags, CPoint point) {
    CClientDC dc(this);
    OnPrepareDC(&dc);
    dc.DPtoLP(&point);
    CXYEditData* const data = GetDataHandler();
    const bool drawn = !outline.IsEmpty();
    if (data && drawn && outline.Close(point, (flags & MK_SHIFT) != 0) && BuildRegion() &&
        data->SetSelected(region, true)) {
        const PlotClip inPlot(dc, plotArea);
        DrawRegion(&dc);
        return true;
    }
    AfxMessageBox(drawn ? "Failed to create region: Not enough memory\nHit testing on region not possible"
                        : "Failed to create region\nHit testing on region not possible");
    outline.Clear();
    BuildRegion();
    return false;
}

void CEditorView::RemoveRegion() {
    outline.Clear();
    BuildRegion();
    sample.DeleteSample();
    EnterMode(ShowPosition);
    RedrawMoved();
}

int CEditorView::DrawAfterBitmap(CDC* dc) {
    IPointSource* const series = PrimarySource();
    if (series && dataHandler && IsPageOfPrimary()) {
        const PlotClip inPlot(*dc);
        const SourceLock lock(series);
        IPointSource* const handled = dataHandler->GetPointSource();
        if (CXYEditData* const data = GetDataHandler()) {
            data->DrawSelection(dc, kCurrentPoint, kCurrentPointSize);
            data->DrawSpikeMarkings(dc);
            data->DrawSpikeWindow(dc);
        }
        dataHandler->SelectPointSource(handled);
        // While it is drawn the outline is open.
        if (mouseMode != OutlineDrawing) DrawRegion(dc);
    }
    return CXYGraphView::DrawAfterBitmap(dc);
}

void CEditorView::DrawRegion(CDC* dc) {
    if (outline.IsEmpty()) return;
    const int saved = dc->SaveDC();
    dc->SetBkMode(TRANSPARENT);
    dc->SelectObject(&regionPen);
    dc->SelectObject(&hatchBrush);
    dc->Polygon(outline.Vertices(), outline.VertexCount());
    dc->RestoreDC(saved);
}
