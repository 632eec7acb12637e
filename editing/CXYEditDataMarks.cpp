// Deleting and rejecting: edits that mark points and leave their values.
#include <algorithm>
#include <ostream>

#include "editing/CXYEditData.h"
#include "editing/EditCommands.h"
#include "editing/PointMarks.h"
#include "editing/PointSelection.h"
#include "editing/RecordEdit.h"
#include "platform/core/MessageBox.h"

int CXYEditData::DeleteSelected() {
    const EditedArrays series(source);
    if (!series.status || GetSelectedIndex() < 0) return 0;
    MarkRun(series.status, nullptr, currentIndex, currentIndex + 1, PS_DELETED | PS_EDITED, 0);
    while (currentIndex < series.count && (series.status[currentIndex] & PS_DELETED)) ++currentIndex;
    if (currentIndex == series.count) currentIndex = -1;
    RecordEdit<KDeleteCmd>(source);
    return 1;
}

int CXYEditData::DeleteSelected(bool inside) { return MarkSelected(inside, PS_DELETED, 0); }

int CXYEditData::RejectSelected(int code) {
    const EditedArrays series(source);
    if (!series.status) return 0;
    if (!series.rejection) {
        AfxMessageBox("Rejection is missing", MB_OK);
        return 0;
    }
    if (GetSelectedIndex() < 0) return 0;
    MarkRun(series.status, series.rejection, currentIndex, currentIndex + 1, PS_REJECTED | PS_EDITED, code);
    RecordEdit<KRejectCmd>(source);
    return 1;
}

int CXYEditData::RejectSelected(bool inside, int code) { return MarkSelected(inside, PS_REJECTED, code); }

int CXYEditData::MarkSelected(bool inside, int flags, int code) {
    const EditedArrays series(source);
    if (!series.status) return 0;
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    if (!selection.IsKnown()) return 0;
    const int marked = MarkPoints(series.count, selection.Indices(), selection.Count(), inside, series.status,
                                  flags, series.rejection, code);
    if (inside) ClearSelection();
    if (marked) RecordEdit<KDeleteCmd>(source);
    return marked;
}

int CXYEditData::ClearAllRejection() {
    const EditedArrays series(source);
    if (!series.status || !series.rejection) return 0;
    if (!source->SaveForUndo(true).good()) return 0;
    MarkRun(series.status, nullptr, 0, series.count, PS_EDITED, 0);
    std::fill_n(series.rejection, series.count, 0);
    source->SetModified(1);
    RecordEdit<KClearRejectCmd>(source);
    return 1;
}
