// The graph view in which the user edits the primary series: points are moved with the mouse, selected with
// an outline and deleted, rejected, moved, scaled, interpolated or smoothed by commands; spikes are found,
// and every edit is undone and redone.
//
// Each edit is: a snapshot (SaveForUndo), the operation of the data set, DataChanged. Without memory for the
// snapshot nothing is edited and the user is told. A derived view or a host gives its own data set in
// AllocDataHandler, adds to the snapshots in SaveStatus and RestoreStatus, and follows the edits in
// DataChanged, which comes after every one of them, undo and redo included.
//
// The sources: CEditorView (data set, snapshots, settings, caption), ...Modes (what the mouse does),
// ...Region (the outline), ...Commands, ...Processing, ...Pages (where the user sets its parameters).
#pragma once

#include "editing/CBigRegion.h"
#include "editing/CSampleInfoSet.h"
#include "editing/CXYEditData.h"
#include "platform/gdi/CBrush.h"
#include "settings/ProcessingProperties.h"
#include "views/CXYGraphView.h"
#include "views/RegionOutline.h"

class CEditorView : public CXYGraphView {
    DECLARE_DYNCREATE(CEditorView)

  public:
    enum EditMode {
        PointDragging = 3,
        OutlineDrawing = 4,
        RegionDragging = 6,
    };
    // More pages of the sheet of settings, in the order in which they stand there.
    enum EditPage {
        PageTranslate = 0x100,
        PageScale = 0x200,
        PageSmooth = 0x400,
        PageFindSpikes = 0x800,
        PageMedian = 0x1000,
    };

    CEditorView();
    ~CEditorView() override;

    void OnInitialUpdate() override;
    bool OnCmdMsg(UINT id, CCmdUI* update) override;
    // The sheet of the view's settings with the pages of the processing commands behind those of `pages`,
    // which keeps them until it ends. 0 when no sheet was shown.
    using CXYGraphView::EditViewSettings;
    int EditViewSettings() override;
    int EditViewSettings(std::list<CPropertyPage*>& pages, CString title);
    // With the place of the current point behind it.
    CString& FormatCaptionStr(CString& text) override;
    // The parameters of the processing commands come first.
    bool LoadStdProperties() override;
    bool SaveStdProperties() override;
    void AllocDataHandler(IPointSource* source) override;
    // Removes the region first.
    void PrimaryDataChanged(IPointSource* source) override;
    void UpdateColors() override;

    // Another point is the current one: tells the other views of the document.
    virtual void OnSelectionChanged();
    // The selection stays.
    virtual void RemoveRegion();
    // Closes the outline at a point of the client area and selects what is inside; false, and no outline,
    // when that fails, which the user is told.
    virtual bool EndCreateRegion(unsigned int flags, CPoint point);
    // The view's part of a snapshot: the outline. Restoring it selects the points inside; without one nothing
    // is selected.
    virtual std::istream& RestoreStatus(std::istream& stream);
    virtual std::ostream& SaveStatus(std::ostream& stream);
    // Has the primary series take a snapshot, before an edit.
    virtual void SaveForUndo();
    virtual void DrawRegion(CDC* dc);
    // The menu that the host shows for a right click inside the region.
    virtual int GetRegionPopupID();
    // A command of one of the three families of rejections, with the code that the points get.
    virtual void OnEditReject(unsigned int id, int code);
    // After each edit: marks series and document as modified when something changed; returns `changed`.
    virtual int DataChanged(int changed);

    // For a host that routes it here.
    void OnClearRejection(unsigned int id);
    // The processing commands (CmdTranslate ... CmdSmoothOutside, CmdFindSpikes ..., CmdFindSpikesByMedian)
    // for a host that asks for the parameters in its own way. Preparing fills in what a question begins with:
    // the units, and the level of the point that a translation is about; running takes the parameters from
    // the sets. Finding spikes takes no snapshot.
    void PrepareProcessing(unsigned int id);
    void RunProcessing(unsigned int id);
    // The data set, working on the primary series; null when a derived view made one that cannot edit.
    CXYEditData* GetDataHandler();

  protected:
    // The menu is the view's context menu and the region's.
    CEditorView(CString keyName, bool deviceIndependent, int menuId, unsigned long backgroundColor,
                IPointSource* source);

    int DrawAfterBitmap(CDC* dc) override;
    void OnLButtonDblClk(UINT flags, CPoint point) override;

    void OnEditDelete(UINT id);
    void OnEditReject(UINT id);
    void OnEditCreateRegion();
    void OnEditRemoveRegion();
    void OnEditRemoveSpikeMarkings();
    void OnEditAutoMoveSpikes() {}
    void OnEditInterpolate();
    void OnEditProcessing(UINT id);
    void OnEditUndo();
    void OnEditRedo();
    void OnModeEscape();
    void OnUpdateCreateRegion(CCmdUI* state);
    void OnUpdateRemoveRegion(CCmdUI* state);
    void OnUpdateAutoMoveSpikes(CCmdUI* state);
    void OnUpdateUndo(CCmdUI* state);
    void OnUpdateRedo(CCmdUI* state);

    RegionOutline outline;
    CBigRegion region;  // of the outline, once that is closed
    CSampleInfoSet sample;
    CBrush hatchBrush;
    CPen regionPen;
    CScaleProperties scaleProperties;
    CTranslateProperties translateProperties;
    CSmoothProperties smoothProperties;
    CSpikeDetectProperties spikeProperties;
    CMedianFilterProperties medianProperties;
    int hitTolerance = 10;  // pixels

  private:
    static const CommandRow<CEditorView> kCommands[];
    class EditGesture;
    class PointMode;
    class PointDrag;
    class OutlinePen;
    class RegionDrag;
    struct Marking;
    struct Processing;
    struct Pages;
    enum class Scope;
    struct Level {
        float shown;  // real
        LONG stored;
    };

    void Init();
    // Ends a gesture without its edit; an open outline goes.
    void EndGesture();
    // False when there is no memory for a snapshot, which the user has been told.
    bool TakeSnapshot();
    // Runs edit(data set), which returns whether something changed, between snapshot and DataChanged. Returns
    // the result, 0 also without a series or a snapshot.
    template <class Edit>
    int RunEdit(Edit edit) {
        EndGesture();
        CXYEditData* const data = PrimarySource() ? GetDataHandler() : nullptr;
        return data && TakeSnapshot() ? DataChanged(edit(*data)) : 0;
    }
    int Mark(CXYEditData& data, const Marking& marking, int code);
    void RunMarking(UINT id, int code);
    void Step(bool back);
    static const Processing* FindProcessing(unsigned int id);
    static EditPage PageOf(unsigned int id);
    int Translate(CXYEditData& data, Scope scope);
    int MoveBy(CXYEditData& data, Scope scope, int distance);
    int SetLevel(CXYEditData& data, Scope scope, long level);
    int Scale(CXYEditData& data, Scope scope);
    int Smooth(CXYEditData& data, Scope scope);
    int FindSpikes(CXYEditData& data, Scope scope);
    int FindSpikesByMedian(CXYEditData& data, Scope scope);
    void ShowEdit();
    bool BuildRegion();
    void MoveRegion(CPoint distance);
    bool IsPageOfPrimary() const { return !tiled || page == 0; }

    int regionPopupId;
    std::optional<Level> prefilledLevel;
    bool snapshotFailed = false;
    std::shared_ptr<PointDrag> pointDrag;
    std::shared_ptr<OutlinePen> outlinePen;
    std::shared_ptr<RegionDrag> regionDrag;
};
