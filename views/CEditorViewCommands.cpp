// The commands of the editor view.
#include <istream>
#include <ostream>

#include "platform/core/MessageBox.h"
#include "platform/undo/KUndoManager.h"
#include "platform/window/CDocument.h"
#include "platform/window/CommandIds.h"
#include "views/CEditorView.h"

const CommandRow<CEditorView> CEditorView::kCommands[] = {
    {CmdTranslate, CmdSmoothOutside, &CEditorView::OnEditProcessing},
    {CmdFindSpikes, CmdFindSpikesOutside, &CEditorView::OnEditProcessing},
    {CmdFindSpikesByMedian, CmdFindSpikesByMedian, &CEditorView::OnEditProcessing},
    {CmdDelete, CmdDeleteOutside, &CEditorView::OnEditDelete},
    {CmdCreateRegion, CmdCreateRegion, &CEditorView::OnEditCreateRegion, &CEditorView::OnUpdateCreateRegion},
    {CmdRemoveRegion, CmdRemoveRegion, &CEditorView::OnEditRemoveRegion, &CEditorView::OnUpdateRemoveRegion},
    {CmdModeEscape, CmdModeEscape, &CEditorView::OnModeEscape},
    {CmdMoveSpikes, CmdMoveSpikes, &CEditorView::OnEditAutoMoveSpikes, &CEditorView::OnUpdateAutoMoveSpikes},
    {CmdRemoveSpikeMarkings, CmdRemoveSpikeMarkings, &CEditorView::OnEditRemoveSpikeMarkings},
    {CmdInterpolate, CmdInterpolate, &CEditorView::OnEditInterpolate},
    {CmdReject, CmdRejectSpikes, &CEditorView::OnEditReject},
    // The second family is for hosts, which route it to OnEditReject with their code.
    {CmdRejectThird, CmdRejectThirdOutside, &CEditorView::OnEditReject},
    {ID_EDIT_UNDO, ID_EDIT_UNDO, &CEditorView::OnEditUndo, &CEditorView::OnUpdateUndo},
    {ID_EDIT_REDO, ID_EDIT_REDO, &CEditorView::OnEditRedo, &CEditorView::OnUpdateRedo},
};

bool CEditorView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CXYGraphView::OnCmdMsg(id, update);
}

// What deleting and rejecting apply to. Marked: the first there is of spikes, region and current point.
struct CEditorView::Marking {
    enum Points { Marked, Spikes, Inside, Outside };
    UINT command;
    Points points;
    bool reject;
};

int CEditorView::Mark(CXYEditData& data, const Marking& marking, int code) {
    Marking::Points points = marking.points;
    if (points == Marking::Marked && data.HasSpikes()) points = Marking::Spikes;
    if (points == Marking::Marked && !outline.IsEmpty()) points = Marking::Inside;
    int changed = 0;
    switch (points) {
        case Marking::Marked:
            return marking.reject ? data.RejectSelected(code) : data.DeleteSelected();
        case Marking::Outside:
            return marking.reject ? data.RejectSelected(false, code) : data.DeleteSelected(false);
        case Marking::Inside:
            changed = marking.reject ? data.RejectSelected(true, code) : data.DeleteSelected(true);
            if (changed) RemoveRegion();
            return changed;
        case Marking::Spikes:
            changed = marking.reject ? data.RejectSpikes() : data.DeleteSpikes();
            if (changed && marking.reject) data.RemoveSpikeMarkings();
            return changed;
    }
    return 0;
}

void CEditorView::RunMarking(UINT id, int code) {
    static constexpr Marking kMarkings[] = {
        {CmdDelete, Marking::Marked, false},
        {CmdDeleteSpikes, Marking::Spikes, false},
        {CmdDeleteInside, Marking::Inside, false},
        {CmdDeleteOutside, Marking::Outside, false},
        {CmdReject, Marking::Marked, true},
        {CmdRejectInside, Marking::Inside, true},
        {CmdRejectOutside, Marking::Outside, true},
        {CmdRejectSpikes, Marking::Spikes, true},
        {CmdRejectSecond, Marking::Marked, true},
        {CmdRejectSecondInside, Marking::Inside, true},
        {CmdRejectSecondOutside, Marking::Outside, true},
        {CmdRejectThird, Marking::Marked, true},
        {CmdRejectThirdInside, Marking::Inside, true},
        {CmdRejectThirdOutside, Marking::Outside, true},
    };
    for (const Marking& marking : kMarkings) {
        if (marking.command != id) continue;
        if (RunEdit([&](CXYEditData& data) { return Mark(data, marking, code); })) ShowEdit();
        return;
    }
}

void CEditorView::OnEditDelete(UINT id) { RunMarking(id, 0); }

void CEditorView::OnEditReject(UINT id) { OnEditReject(id, 0); }

void CEditorView::OnEditReject(unsigned int id, int code) { RunMarking(id, code); }

// The data set takes the snapshot.
void CEditorView::OnClearRejection(unsigned int) {
    EndGesture();
    CXYEditData* const data = PrimarySource() ? GetDataHandler() : nullptr;
    if (data && DataChanged(data->ClearAllRejection())) ShowEdit();
}

void CEditorView::OnEditInterpolate() {
    RunEdit([](CXYEditData& data) { return data.InterpolateSelected(); });
    Redraw();
}

// Every view of the document, this one included.
void CEditorView::ShowEdit() {
    Redraw();
    if (CDocument* const document = GetDocument()) document->UpdateAllViews(nullptr);
}

void CEditorView::OnEditRemoveRegion() { RemoveRegion(); }

void CEditorView::OnEditRemoveSpikeMarkings() {
    EndGesture();
    CXYEditData* const data = PrimarySource() ? GetDataHandler() : nullptr;
    if (!data) return;
    const CWaitCursor waiting;
    data->RemoveSpikeMarkings();
    ShowEdit();
}

void CEditorView::OnEditUndo() { Step(true); }

void CEditorView::OnEditRedo() { Step(false); }

void CEditorView::Step(bool back) {
    IPointSource* const series = PrimarySource();
    if (!series || !(back ? series->CanUndo() : series->CanRedo())) return;
    EndGesture();
    std::istream& stream = back ? series->UndoEdit() : series->RedoEdit();
    if (!stream.good()) {
        AfxMessageBox(back ? "Not enough memory to undo: nothing was changed."
                           : "Not enough memory to redo: nothing was changed.");
        return;
    }
    // The region that is left comes back on the way back.
    SaveStatus(series->LeftSnapshot());
    RestoreStatus(stream);
    if (const kelvo::KUndoManager* const manager = kelvo::GetUndoManager())
        back ? manager->Undo(series, 1) : manager->Redo(series, 1);
    Redraw(TRUE);
    DataChanged(1);
}

void CEditorView::OnUpdateCreateRegion(CCmdUI* state) { state->SetCheck(mouseMode == OutlineDrawing); }

void CEditorView::OnUpdateRemoveRegion(CCmdUI* state) { state->Enable(!outline.IsEmpty()); }

void CEditorView::OnUpdateAutoMoveSpikes(CCmdUI* state) {
    CXYEditData* const data = GetDataHandler();
    state->Enable(data && data->HasSpikes());
}

void CEditorView::OnUpdateUndo(CCmdUI* state) {
    IPointSource* const series = PrimarySource();
    state->Enable(series && series->CanUndo());
}

void CEditorView::OnUpdateRedo(CCmdUI* state) {
    IPointSource* const series = PrimarySource();
    state->Enable(series && series->CanRedo());
}
