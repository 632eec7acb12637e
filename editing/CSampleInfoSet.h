// A copy of drawn points of a data set in runs of consecutive points: what moves with the mouse while points
// are dragged. Copies of this object are deep; without memory for one, it is empty.
#pragma once

#include <memory>

#include "editing/CXYEditData.h"

class CSampleInfoSet {
  public:
    CSampleInfoSet() = default;
    CSampleInfoSet(const CSampleInfoSet& other);
    CSampleInfoSet& operator=(const CSampleInfoSet& other);
    virtual ~CSampleInfoSet();

    // Where the points are copied from; not owned, may be null.
    void SetDataSet(CXYEditData* from) { dataSet = from; }
    // Take all points that are not deleted, or the selected ones.
    void GetSample();
    void GetSampleInsideRegion();
    // The same after dropping the sample and its flags.
    void ReGetSample();
    // Moves the copy by `d` from where it was taken.
    void TranslateSample(CPoint d);
    // Keeps of each run, in every column of the context's pixels, only the first, lowest, highest and last
    // point: while the sample moves up and down its lines cover the same pixels. Runs that lie in one column
    // become one stroke. Call it before the sample moves.
    void Simplify(const CDC& dc);
    // One line per run with the selected pen. Returns 1.
    int DrawSample(CDC* dc);
    // Drops the copy and clears the flags.
    void DeleteSample();

    int GetPointCount() const { return pointCount; }
    const CPoint* GetPoints() const { return points.get(); }

  private:
    void TakeOver(CPoint* copied, int* boundaries);

    CXYEditData* dataSet = nullptr;
    int segmentCount = 0;
    std::unique_ptr<int[]> segments;  // where each run starts, and at last pointCount
    int pointCount = 0;
    std::unique_ptr<CPoint[]> points;
    std::unique_ptr<CPoint[]> originalPoints;

  public:
    // The state of a drag; the owner of the sample gives the flags their meaning.
    bool dragFlags[3] = {false, false, false};
};
