// The in-memory series: growable arrays of samples and status words, a scale and an offset per axis, and the
// extent of the real values on request. It keeps no rejection codes.
//
// All series of this class share one recursive lock. Appends, inserts and UpdateStats() take it, so a host
// may append from another thread while a view that holds Lock() reads; clear(), SetStatus(), SetOffset() and
// SetKey() do not.
#pragma once

#include "sources/IPointSource.h"

class KPointSource : public IPointSource {
    DECLARE_DYNAMIC(KPointSource)

  public:
    // Scales are stored counts per real unit. Memory for (initialSize / growBy + 1) * growBy samples is
    // reserved and grows by `growBy` samples (at least 1) each time it is full.
    KPointSource(CString name, double xScale, double yScale, CString unitX, CString unitY, int initialSize,
                 int growBy);
    ~KPointSource() override;

    int Lock() override;
    int UnLock() override;
    CPoint* GetData() override { return data; }
    using IPointSource::GetData;
    CPoint* GetDrawPoints() override { return data; }
    unsigned short* GetStatus() override { return status; }
    int* GetRejection() override { return rejection; }
    long GetCount() override { return count; }
    double GetXScale() override { return xScale; }
    double GetYScale() override { return yScale; }
    CPoint GetOffset() override { return offset; }
    double GetMaxX() override { return maxX; }
    // A y range of 1 or less reads as one unit more at either end.
    double GetMinY() override;
    double GetMaxY() override;
    double GetMinX() override { return minX; }
    CString GetName() override { return name; }
    // The key set, or the name when it is empty.
    CString GetKey() override;
    // The extent over the points that are not deleted, over all when every one is; false when the series is
    // empty, whose extent is (-1, -1) to (1, 1).
    bool UpdateStats() override;

    // No bounds test.
    CPoint& operator[](int i) { return data[i]; }
    // Appends a sample with status 0. Without memory the series stays as it is.
    void push_back(const CPoint& point);
    // Inserts a sample with status 0 before `position`, an iterator over this series' data. Without memory
    // the series stays as it is, here and below.
    void insert(iterator position, const CPoint& point);
    // Inserts the samples from `first` up to `last`, iterators over a series' data, before `position`. They
    // may come from this series itself.
    void insert(iterator position, iterator first, iterator last);
    // Empties the series; its memory stays reserved.
    void clear() {
        count = 0;
        NoteChange();
    }
    void SetKey(CString newKey) { key = newKey; }
    void SetOffset(long x, long y);
    // Uses the caller's array of status words from now on. It must have room for every later append: the
    // series never grows or frees it.
    void SetStatus(unsigned short* newStatus);
    // Diagnostic walk over the samples; changes nothing.
    void TraceKPointSource();

  private:
    bool Grow(long needed);
    // Where an iterator points, also one from before the array grew; the end for any end iterator.
    long IndexOf(const iterator& position) const;
    // Opens a gap of `added` samples at index `at`; false without memory.
    bool MakeRoom(long at, long added);

    int growBy;
    CPoint* data;
    unsigned short* status;
    int* rejection;  // always null
    long count;
    long capacity;
    CString name;
    CString key;
    double xScale;
    double yScale;
    double minX;
    double minY;
    double maxX;
    double maxY;
    CPoint offset;
    bool ownsStatus;
};
