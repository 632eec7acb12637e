// The editable data set: one series with a current point, a selection of points, the results of spike
// detection and the operations that edit the series.
//
// Selection, hit testing and drawing work on the series' draw points, edits on its stored data. Every edit
// writes straight into the series' arrays, sets status flags, and hands a command to the undo manager, if
// there is one. It takes no snapshot: the caller does before the edit (ClearAllRejection takes its own).
//
// Edits return non-zero when something changed. Without a series, a status array, or a current point where
// one is needed, an operation does nothing and returns its "nothing" value: 0, false, -1, null or (0, 0). The
// series may be exchanged or shrink at any time: indices that no longer fit are passed over. A series of more
// than 2^31 - 1 points is neither edited nor drawn.
//
// Only the user-interface thread calls these operations. Only the plain data set's DrawLine locks the series.
#pragma once

#include <iosfwd>
#include <memory>

#include "editing/CXYData.h"

class CBigRegion;
struct Covered;
struct SeriesArrays;

class CXYEditData : public CXYData {
  public:
    CXYEditData();

    // Pixels where dotSize < 1, else squares; edited points in `editedColor` on top, deleted ones not at all.
    void DrawDots(CDC* dc, unsigned long color, int dotSize, unsigned long editedColor) override;
    // One line that bridges the deleted points, moved by the draw offset. The rectangle is not used.
    void DrawLine(CDC* dc, unsigned long color, int penStyle, CRect rect) override;
    ~CXYEditData() override;

    // Whether point i may be selected: not when it is deleted. True without a status array.
    virtual bool ValidateSelection(int i, unsigned short* status);
    virtual bool HasSpikes();
    // Clears the spike marks and forgets the band. Non-zero when a point was marked.
    virtual int RemoveSpikeMarkings();
    // Mark the points farther than `window` (real y) from the smoothed curve. Wave lengths are real x and are
    // multiplied by the wave-length scale. `showWindow` keeps the band around the curve for DrawSpikeWindow.
    virtual int SpikeDetectAll(double waveLength, double window, bool showWindow);
    virtual int SpikeDetectSelected(double waveLength, double window, bool inside, bool showWindow);
    // Marks the points farther than `rejectDistance` (real y) from the median of `filterLength` samples.
    virtual int SpikeDetectMedianFilter(double filterLength, double rejectDistance, bool showWindow);
    // Delete or reject the marked points while the last detection found some.
    virtual int DeleteSpikes();
    virtual int RejectSpikes();
    // In XOR: drawing it twice restores the picture. Only for the series that the band was built for.
    virtual void DrawSpikeWindow(CDC* dc);
    virtual void DrawSpikeMarkings(CDC* dc);
    // The draw point i. Outside the series (0, 0), and the current point is dropped.
    virtual CPoint GetPoint(long i);
    virtual void DeSelectPoint();
    // Hooks of the snapshot stream; they read and write nothing.
    virtual std::istream& RestoreStatus(std::istream& stream);
    virtual std::ostream& SaveStatus(std::ostream& stream);
    // The first selected point; without a selection the first point; -1 when there is none.
    virtual long GetFirstSelectedIndex();
    // A cross at the current point, `size` mm wide and high.
    virtual void DrawSelection(CDC* dc, unsigned long color, int size);
    // Scaling (methods: editing/PointRoutines.h); `origin` is in stored units. Methods other than 0 cannot be
    // had outside the selection; the user is told. Nothing happens with an empty selection.
    virtual int ScaleSelected(int method, double factor, double origin, bool inside);
    virtual int ScaleSelected(double factor, double origin);  // the current point
    virtual int ScaleAll(int method, double factor, double origin);
    // Translation by (dx, dy) stored units, or `absolute` to that place: the current point.
    virtual int TranslateSelected(long dx, long dy, bool absolute);
    // The selection or, not `inside`, all other points, by (dx, dy) or to the level y = dy. Nothing happens
    // with an empty selection, save that all points lie outside it when a level is set.
    virtual int TranslateSelected(long dx, long dy, bool setLevel, bool inside);
    virtual int TranslateAll(long dx, long dy, bool setLevel);
    // Smoothing. The fit uses all points that are not deleted, whichever are written back.
    virtual int SmoothSelected(double waveLength, bool inside);
    virtual int SmoothAll(double waveLength);
    // The current point; the next one that is not deleted becomes current.
    virtual int DeleteSelected();
    // Every selected point, which empties the selection, or every other one.
    virtual int DeleteSelected(bool inside);
    // The current point. Without rejection codes the user is told so.
    virtual int RejectSelected(int code);
    virtual int RejectSelected(bool inside, int code);
    // Sets every rejection code to 0. Takes the snapshot itself; without memory for it nothing changes.
    virtual int ClearAllRejection();
    // Copies `n` ascending indices; false when there are none, or without memory.
    virtual bool SetSelected(const long* indices, int n);
    // Selects the points inside the region, or outside it, that may be selected. False only without memory,
    // the selection then empty.
    virtual bool SetSelected(CBigRegion& region, bool inside);
    virtual void ClearSelection();
    // The current point, -1: none.
    virtual long GetSelectedIndex();
    // The selection as it was set. The array is valid until the selection changes.
    virtual long GetSelectedCount();
    virtual const long* GetSelected();
    // The point nearest to `point` (draw coordinates) within `tolerance` pixels and 0.35 mm times `tolerance`
    // on the x axis, or -1; of two as near, the one found first scanning down, then up from the nearest x.
    // Replaces `point` by it. The draw points ascend in x.
    virtual long HitTest(CDC* dc, CPoint& point, int tolerance);
    // Makes point i current (deleted ones too) and returns its draw point.
    virtual CPoint SelectPoint(int i);
    // Make the first or last point that is not deleted current.
    virtual CPoint SelectFirstPoint();
    virtual CPoint SelectLastPoint();
    // Copies of the draw points: of the selected ones in selection order, or of all that are not deleted.
    // `*segments` becomes where each run of consecutive points starts, beginning with 0, and last their
    // number. The caller deletes both arrays (delete[]). Nothing to copy: null and counts of 0.
    virtual CPoint* GetCopyInsideRegion(int& pointCount, int& segmentCount, int** segments);
    virtual CPoint* GetCopy(int& pointCount, int& segmentCount, int** segments);
    // The current point dragged to p: the lines to its neighbours and a circle, with the selected pen and
    // brush.
    virtual void DrawRubberBand(CDC* dc, CPoint& p);

    // Replaces the y of the selected points, or of the current one, by interpolation.
    int InterpolateSelected();
    // DrawLine moves the line by this, in draw coordinates.
    void SetDrawOffset(CPoint offset) { drawOffset = offset; }
    bool GetSpikesFound() const { return spikesFound; }
    void SetSpikesFound(bool found) { spikesFound = found; }
    double GetWaveLengthScale() const { return waveLengthScale; }
    void SetWaveLengthScale(double scale) { waveLengthScale = scale; }

  protected:
    // Gives the selected points, or all others, the flags and the code. An empty selection has nothing inside
    // and everything outside.
    virtual int MarkSelected(bool inside, int flags, int code);

    bool spikeDetectionRun = false;  // since the marks were last removed
    bool spikesFound = false;        // by the last detection
    CPen selectionPen;
    CBrush editedBrush;
    CPen editedPen;
    long currentIndex = -1;
    long selectedCount = 0;
    long selectedCapacity = 0;
    CPoint drawOffset;
    double waveLengthScale = 1.0;
    IPointSource* spikeWindowSource = nullptr;  // only compared, never used
    std::unique_ptr<long[]> selected;
    std::unique_ptr<CPoint[]> spikeWindow;
    int spikeWindowCount = 0;

  private:
    void DrawDotsWhere(CDC& dc, const SeriesArrays& series, int dotSize, const StatusFilter& which,
                       unsigned long color);
    bool BeginSpikeDetection(const SeriesArrays& series, bool showWindow);
    int DetectSpikes(const SeriesArrays& series, const Covered& tested, double waveLength, double window);
    int DeleteMarkedSpikes(unsigned short flag);
};
